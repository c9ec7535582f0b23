#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include "VelmTypes.h"

#include <QDate>
#include <QHash>

#include <cmath>

namespace {

constexpr const Rule& kEmptyCode = rules::named("empty-code");
constexpr const Rule& kEmptyFieldName = rules::named("empty-field-name");
constexpr const Rule& kDuplicateCode = rules::named("duplicate-code");
constexpr const Rule& kFieldTypeRange = rules::named("field-type-range");
constexpr const Rule& kFieldLength = rules::named("field-length");
constexpr const Rule& kFieldDecimals = rules::named("field-decimals");
constexpr const Rule& kDefaultDoesNotFit = rules::named("default-does-not-fit");
constexpr const Rule& kInBothDatabases = rules::named("in-both-databases");

constexpr int kHidden = 10;  // is added to the type of a field that is not shown
constexpr int kLongest = 65535;
constexpr int kMostDecimals = 15;

/// The two tables of fields tell the same under other names.
struct FieldTable
{
    const CheckedTable& rows;
    QString table, name, type, length, decimals, defaultValue;
    bool namesDictionaryByDefault;  // a default value "TBL_..." does

    int number(int row, const QString& column) const { return rows.value(row, column).toInt(); }
    /// Whether it is a number; what is none is told as that.
    bool isNumber(int row, const QString& column) const
    {
        bool converts = false;
        const QVariant value = rows.value(row, column);
        const double number = value.toDouble(&converts);
        return value.toString().isEmpty() || (converts && std::isfinite(number));
    }
    /// As the library compares them.
    QString keyOf(int row) const
    {
        return rows.text(row, table).toUpper() + QChar::LineFeed + rows.text(row, name).toUpper();
    }
};

FieldTable systemFields(const CheckedSet& set)
{
    return {set.table("Attributefield"), QStringLiteral("TABLE"),
            QStringLiteral("NAME"),      QStringLiteral("TYPE"),
            QStringLiteral("LENGTH"),    QStringLiteral("DECIMAL"),
            QStringLiteral("DEFAULT"),   true};
}

FieldTable pipeFields(const CheckedSet& set)
{
    return {set.table("SYS_ATTRIBUTEDEF"),  QStringLiteral("TABLENAME"),
            QStringLiteral("FIELDNAME"),    QStringLiteral("FIELDTYPE"),
            QStringLiteral("FIELDLENGTH"),  QStringLiteral("FIELDDECIMAL"),
            QStringLiteral("DEFAULTVALUE"), false};
}

/// Reports fields without a table or a name, and those that a table has more than once.
void checkNames(const FieldTable& fields, Problems& problems)
{
    QHash<QString, int> known;
    for (int row = 0; fields.rows.hasKey() && row < fields.rows.size(); ++row) {
        const QString table = fields.rows.text(row, fields.table);
        if (table.isEmpty())
            problems.add(kEmptyCode, fields.rows.place(row, fields.table),
                         QStringLiteral("is empty, so the field belongs to no table"));
        if (fields.rows.text(row, fields.name).isEmpty()) {
            problems.add(kEmptyFieldName, fields.rows.place(row, fields.name),
                         QStringLiteral("is empty"));
            continue;
        }
        const auto first = known.constFind(fields.keyOf(row));
        if (first == known.constEnd())
            known.insert(fields.keyOf(row), row);
        else
            problems.add(kDuplicateCode, fields.rows.place(row, fields.name),
                         QStringLiteral("is a field of \"%1\" in row %2 already")
                             .arg(table)
                             .arg(fields.rows.place(*first, fields.name).row));
    }
}

bool isKnownType(int type)
{
    return type >= 0 && type % kHidden <= Velm::FieldDate && type < 2 * kHidden;
}

/// Reports a length or decimals that no field can have. Those of integers and dates mean nothing.
void checkSize(const FieldTable& fields, int row, int type, Problems& problems)
{
    if ((type != Velm::FieldText && type != Velm::FieldReal) || !fields.isNumber(row, fields.length)
        || !fields.isNumber(row, fields.decimals))
        return;
    const int length = fields.number(row, fields.length);
    const int decimals = fields.number(row, fields.decimals);
    if (fields.rows.has(fields.length) && (length < 1 || length > kLongest))
        problems.add(kFieldLength, fields.rows.place(row, fields.length),
                     QStringLiteral("is not one of 1 to 65535"));
    else if (decimals < 0 || decimals > kMostDecimals)
        problems.add(kFieldDecimals, fields.rows.place(row, fields.decimals),
                     QStringLiteral("is not one of 0 to 15"));
    else if (fields.rows.has(fields.length) && decimals > length)
        problems.add(kFieldDecimals, fields.rows.place(row, fields.decimals),
                     QStringLiteral("is more than the length, %1").arg(length));
}

QString whyNoReal(const QString& value, int length)
{
    bool converts = false;
    const double number = value.toDouble(&converts);
    if (!converts || !std::isfinite(number))
        return QStringLiteral("is no number");
    return length < 1 || std::abs(number) < std::pow(10.0, length)
               ? QString()
               : QStringLiteral("has more than %1 digits").arg(length);
}

/// Why a field cannot take a value; empty if it can.
QString whyMisfit(const QString& value, int type, int length)
{
    bool fits = true;
    switch (type) {
    case Velm::FieldInt:
        value.toInt(&fits);
        return fits ? QString() : QStringLiteral("is no integer");
    case Velm::FieldLong:
        value.toLongLong(&fits);
        return fits ? QString() : QStringLiteral("is no integer");
    case Velm::FieldReal:
        return whyNoReal(value, length);
    case Velm::FieldDate:
        fits = QDate::fromString(value.left(10), Qt::ISODate).isValid();
        return fits ? QString() : QStringLiteral("is no date as 2026-01-31");
    default:
        return length < 1 || value.size() <= length
                   ? QString()
                   : QStringLiteral("is longer than %1 characters").arg(length);
    }
}

void checkField(const FieldTable& fields, int row, Problems& problems)
{
    const int type = fields.number(row, fields.type);
    if (!isKnownType(type))
        return problems.add(kFieldTypeRange, fields.rows.place(row, fields.type),
                            QStringLiteral("is not one of 0 to 4 or 10 to 14"));
    const int shownType = type % kHidden;
    checkSize(fields, row, shownType, problems);
    const QString value = fields.rows.text(row, fields.defaultValue);
    const bool isDictionary = value.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive);
    if (value.isEmpty() || (isDictionary && fields.namesDictionaryByDefault))
        return;
    const QString misfit =
        isDictionary ? QStringLiteral("is taken as a text; a dictionary is named by DICTIONARY")
                     : whyMisfit(value, shownType, fields.number(row, fields.length));
    if (!misfit.isEmpty())
        problems.add(kDefaultDoesNotFit, fields.rows.place(row, fields.defaultValue), misfit);
}

QSet<QString> namesIn(const CheckedTable& table, const QString& column)
{
    QSet<QString> names;
    for (int row = 0; row < table.size(); ++row)
        names.insert(table.text(row, column).toUpper());
    names.remove(QString());
    return names;
}

void reportKnown(const CheckedTable& table, const QString& column, const QSet<QString>& known,
                 Problems& problems)
{
    for (int row = 0; row < table.size(); ++row) {
        if (known.contains(table.text(row, column).toUpper()))
            problems.add(kInBothDatabases, table.place(row, column),
                         QStringLiteral("is defined in peltaconfig.db too"));
    }
}

/// Reports what PipeConfig.db defines once more.
void checkBothDatabases(const CheckedSet& set, const FieldTable& own, const FieldTable& pipe,
                        Problems& problems)
{
    reportKnown(set.table("SYS_GISTABLE"), QStringLiteral("LAYERNAME"),
                namesIn(set.table("Attributetable"), QStringLiteral("TABLE")), problems);
    QSet<QString> dictionaries;
    for (const CheckedTable& table : set.tables()) {
        if (schema::isDictionary(table.name()))
            dictionaries.insert(table.name().toUpper());
    }
    reportKnown(set.table("SYS_DICTIONARY"), QStringLiteral("NAME"), dictionaries, problems);
    QSet<QString> fields;
    for (int row = 0; row < own.rows.size(); ++row)
        fields.insert(own.keyOf(row));
    for (int row = 0; row < pipe.rows.size(); ++row) {
        if (fields.contains(pipe.keyOf(row)))
            problems.add(kInBothDatabases, pipe.rows.place(row, pipe.name),
                         QStringLiteral("is a field of \"%1\" in peltaconfig.db too")
                             .arg(pipe.rows.text(row, pipe.table)));
    }
}

}  // namespace

void rules::checkFields(const CheckedSet& set, Problems& problems)
{
    const FieldTable own = systemFields(set);
    const FieldTable pipe = pipeFields(set);
    for (const FieldTable* fields : {&own, &pipe}) {
        checkNames(*fields, problems);
        for (int row = 0; row < fields->rows.size(); ++row)
            checkField(*fields, row, problems);
    }
    checkBothDatabases(set, own, pipe, problems);
}
