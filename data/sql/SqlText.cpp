#include "data/sql/SqlText.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <charconv>

namespace velm::detail {

namespace {

QString quoted(const QString& text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString bracketed(const QString& name)
{
    return QLatin1Char('[') + name + QLatin1Char(']');
}

/// The shortest text that reads back as the same number.
QString shortestNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString shortestNumber(float value)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return QString::fromLatin1(text.data(), static_cast<int>(end - text.data()));
}

/// The value of a condition term; empty for types that have no text form there.
QString conditionValue(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
    case QMetaType::Int:
        return QString::number(value.toInt());
    case QMetaType::UInt:
        return QString::number(value.toUInt());
    case QMetaType::LongLong:
        return QString::number(value.toLongLong());
    case QMetaType::Double:
        return shortestNumber(value.toDouble());
    case QMetaType::Float:
        return shortestNumber(value.toFloat());
    case QMetaType::QChar:
        return value.toString();
    case QMetaType::QString:
        return quoted(value.toString());
    default:
        return QString();
    }
}

bool isSkippedInCondition(const QVariant& value)
{
    return value.isNull() && value.userType() != QMetaType::QString;
}

/// Seconds are enough unless the time has a fraction.
Qt::DateFormat isoFormat(const QTime& time)
{
    return time.msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs;
}

QString dateTimeLiteral(const QVariant& value, SqlDialect dialect)
{
    const bool access = dialect == SqlDialect::Access;
    switch (value.userType()) {
    case QMetaType::QDate:
        return access ? value.toDate().toString(QStringLiteral("'#'yyyy-MM-dd'#'"))
                      : quoted(value.toDate().toString(Qt::ISODate));
    case QMetaType::QTime:
        return access ? value.toTime().toString(QStringLiteral("'#'HH:mm:ss'#'"))
                      : quoted(value.toTime().toString(isoFormat(value.toTime())));
    default: {
        const QDateTime moment = value.toDateTime();
        return access ? moment.toString(QStringLiteral("'#'yyyy-MM-dd HH:mm:ss'#'"))
                      : quoted(moment.toString(isoFormat(moment.time())));
    }
    }
}

/// Access drivers get "?" for a name that Qt cannot turn into one: it knows ASCII letters, digits
/// and "_" only.
QString placeholder(const QString& column, SqlDialect dialect)
{
    const bool plain = std::all_of(column.cbegin(), column.cend(), [](QChar ch) {
        return ch.unicode() < 0x80 && (ch.isLetterOrNumber() || ch == QLatin1Char('_'));
    });
    return plain || dialect == SqlDialect::Sqlite ? QLatin1Char(':') + column : QStringLiteral("?");
}

QStringList bracketedNames(const QMap<QString, QVariant>& record)
{
    QStringList names;
    for (auto it = record.keyBegin(); it != record.keyEnd(); ++it)
        names.append(bracketed(*it));
    return names;
}

}  // namespace

QString columnTypeWord(Velm::FieldType type)
{
    static const std::array<QString, 4> words{QStringLiteral("TEXT"), QStringLiteral("INT"),
                                              QStringLiteral("LONG"), QStringLiteral("REAL")};
    const bool known = type >= Velm::FieldText && type <= Velm::FieldReal;
    return words[known ? static_cast<size_t>(type) : 0];
}

QString terms(const QMap<QString, QVariant>& values, const QString& separator)
{
    QStringList list;
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        if (!isSkippedInCondition(it.value()))
            list.append(bracketed(it.key()) + QLatin1Char('=') + conditionValue(it.value()));
    }
    return list.join(separator);
}

QString whereClause(const QMap<QString, QVariant>& where)
{
    if (where.isEmpty())
        return QString();
    return QStringLiteral("where ") + terms(where, QStringLiteral(" and "));
}

QString literal(const QVariant& value, SqlDialect dialect)
{
    if (value.isNull())
        return QStringLiteral("null");
    switch (value.userType()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return QString::number(value.toLongLong());
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return QString::number(value.toULongLong());
    case QMetaType::Double:
        return shortestNumber(value.toDouble());
    case QMetaType::Float:
        return shortestNumber(value.toFloat());
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return dateTimeLiteral(value, dialect);
    default:
        return quoted(value.toString());
    }
}

QString selectAll(const QString& table)
{
    return QStringLiteral("select * from ") + table;
}

QString insertStatement(const QString& table, const QMap<QString, QVariant>& record,
                        SqlDialect dialect)
{
    QStringList values;
    for (const QVariant& value : record)
        values.append(literal(value, dialect));
    const QString separator = QStringLiteral(", ");
    return QStringLiteral("insert into ") + table + QStringLiteral(" (")
           + bracketedNames(record).join(separator) + QStringLiteral(") values(")
           + values.join(separator) + QLatin1Char(')');
}

QString boundInsertStatement(const QString& table, const QMap<QString, QVariant>& record,
                             SqlDialect dialect)
{
    QStringList placeholders;
    for (auto it = record.keyBegin(); it != record.keyEnd(); ++it)
        placeholders.append(placeholder(*it, dialect));
    const QString separator = QStringLiteral(",");
    return QStringLiteral("insert into ") + table + QStringLiteral(" (")
           + bracketedNames(record).join(separator) + QStringLiteral(") values (")
           + placeholders.join(separator) + QLatin1Char(')');
}

QString orderByClause(const QList<QPair<QString, Velm::DataBaseOrderByType>>& orderBy)
{
    if (orderBy.isEmpty())
        return QString();
    QString clause = QStringLiteral(" order by ");
    for (const auto& [column, order] : orderBy) {
        clause += column;
        clause +=
            order == Velm::OrderDescending ? QStringLiteral(" desc,") : QStringLiteral(" asc,");
    }
    clause.chop(1);
    return clause;
}

QString collation(bool caseSensitive)
{
    return caseSensitive ? QString() : QStringLiteral(" COLLATE NOCASE ");
}

}  // namespace velm::detail
