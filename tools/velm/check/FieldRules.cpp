#include "check/CheckedSet.h"
#include "check/DictionaryCodes.h"
#include "check/FieldTypes.h"
#include "check/PlainName.h"
#include "check/Rules.h"
#include "check/RuleTable.h"
#include "check/WholeNumber.h"

#include "VelmTypes.h"

#include <QDate>
#include <QHash>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace {

constexpr const Rule& kEmptyCode = rules::named("empty-code");
constexpr const Rule& kEmptyFieldName = rules::named("empty-field-name");
constexpr const Rule& kDuplicateCode = rules::named("duplicate-code");
constexpr const Rule& kFieldTypeRange = rules::named("field-type-range");
constexpr const Rule& kFieldLength = rules::named("field-length");
constexpr const Rule& kFieldDecimals = rules::named("field-decimals");
constexpr const Rule& kDefaultDoesNotFit = rules::named("default-does-not-fit");
constexpr const Rule& kInBothDatabases = rules::named("in-both-databases");

constexpr int kLongest = 65535;
constexpr int kMostDecimals = 15;

/// What a field takes, besides its type: nothing is known where a number is below 0, or the length
/// 0.
struct FieldSize
{
    int length;
    int decimals;
};

/// The two tables of fields tell the same under other names.
struct FieldTable
{
    const CheckedTable& rows;
    QString table, name, type, length, decimals, defaultValue;
    bool namesDictionaryByDefault;  // a default value "TBL_..." does

    /// None if it is no whole number, which is told as that.
    std::optional<int> number(int row, const QString& column) const
    {
        return wholeNumber(rows.value(row, column));
    }
    FieldSize size(int row) const
    {
        const bool hasDecimals = rows.has(decimals);
        return {number(row, length).value_or(0),
                hasDecimals ? number(row, decimals).value_or(-1) : -1};
    }
    /// As the library compares them.
    QString keyOf(int row) const
    {
        return rows.text(row, table).toUpper() + QChar::LineFeed + rows.text(row, name).toUpper();
    }
};

FieldTable systemFields(const CheckedTable& fields)
{
    return {fields,
            QStringLiteral("TABLE"),
            QStringLiteral("NAME"),
            QStringLiteral("TYPE"),
            QStringLiteral("LENGTH"),
            QStringLiteral("DECIMAL"),
            QStringLiteral("DEFAULT"),
            true};
}

FieldTable pipeFields(const CheckedSet& set)
{
    return {set.table("SYS_ATTRIBUTEDEF"),  QStringLiteral("TABLENAME"),
            QStringLiteral("FIELDNAME"),    QStringLiteral("FIELDTYPE"),
            QStringLiteral("FIELDLENGTH"),  QStringLiteral("FIELDDECIMAL"),
            QStringLiteral("DEFAULTVALUE"), false};
}

/// Reports a field without a name. @return whether it is one
bool tellIfNameless(const CheckedTable& fields, int row, const QString& column, Problems& problems)
{
    const QString name = fields.text(row, column);
    const bool isNameless = fields.isSound(row, column) && isBlank(name);
    if (isNameless)
        problems.add(kEmptyFieldName, fields.place(row, column), emptyOrBlank(name));
    return isNameless;
}

/// Reports fields without a table or a name, and those that a table has more than once.
void checkNames(const FieldTable& fields, Problems& problems)
{
    QHash<QString, int> known;
    for (int row = 0; fields.rows.hasKey() && row < fields.rows.size(); ++row) {
        const QString table = fields.rows.text(row, fields.table);
        if (fields.rows.isSound(row, fields.table) && isBlank(table))
            problems.add(kEmptyCode, fields.rows.place(row, fields.table),
                         emptyOrBlank(table)
                             + QStringLiteral(", so the field belongs to no table"));
        if (tellIfNameless(fields.rows, row, fields.name, problems))
            continue;
        const auto first = known.constFind(fields.keyOf(row));
        if (first == known.constEnd())
            known.insert(fields.keyOf(row), row);
        else
            problems.add(kDuplicateCode, fields.rows.place(row, fields.name),
                         QStringLiteral("is a field of \"%1\" in row %2 already; both are shown")
                             .arg(table)
                             .arg(fields.rows.place(*first, fields.name).row));
    }
}

/// Reports a length or decimals that no field can have. Those of integers and dates mean nothing.
void checkSize(const FieldTable& fields, int row, int type, Problems& problems)
{
    const std::optional<int> length = fields.number(row, fields.length);
    const std::optional<int> decimals = fields.number(row, fields.decimals);
    if ((type != Velm::FieldText && type != Velm::FieldReal) || !length || !decimals)
        return;
    if (fields.rows.has(fields.length) && (*length < 1 || *length > kLongest))
        problems.add(kFieldLength, fields.rows.place(row, fields.length),
                     fields.rows.text(row, fields.length).isEmpty()
                         ? QStringLiteral("is empty")
                         : QStringLiteral("is not one of 1 to 65535"));
    else if (*decimals < 0 || *decimals > kMostDecimals)
        problems.add(kFieldDecimals, fields.rows.place(row, fields.decimals),
                     QStringLiteral("is not one of 0 to 15"));
    else if (fields.rows.has(fields.length) && *decimals > *length)
        problems.add(kFieldDecimals, fields.rows.place(row, fields.decimals),
                     QStringLiteral("is more than the length, %1").arg(*length));
}

QString tooLong(int length, const char* what)
{
    return QStringLiteral("has more than %1 %2").arg(length).arg(QLatin1String(what));
}

/// Why digits are too many. Those of numbers with an exponent are not counted.
QString whyTooManyDigits(const QString& value, const FieldSize& size)
{
    static const QRegularExpression written(
        QStringLiteral("^\\s*[+-]?0*([0-9]*)(?:\\.([0-9]*?)0*)?\\s*$"));
    const QRegularExpressionMatch digits = written.match(value);
    if (size.decimals >= 0 && digits.capturedLength(2) > size.decimals)
        return tooLong(size.decimals, "digits behind the point");
    return size.length > 0 && digits.capturedLength(1) + digits.capturedLength(2) > size.length
               ? tooLong(size.length, "digits")
               : QString();
}

QString whyNoReal(const QString& value, const FieldSize& size)
{
    bool converts = false;
    const double number = value.toDouble(&converts);
    if (!converts || !std::isfinite(number))
        return QStringLiteral("is no number, which the field takes");
    return size.length < 1 || std::abs(number) < std::pow(10.0, size.length)
               ? whyTooManyDigits(value, size)
               : tooLong(size.length, "digits");
}

/// Whether a text is a date as 2026-01-31, which a time of day may follow.
bool isDate(const QString& text)
{
    static const QRegularExpression written(
        QStringLiteral("^[0-9]{4}-[0-9]{2}-[0-9]{2}(?:[T ](.+))?$"));
    const QRegularExpressionMatch parts = written.match(text);
    const QString time = parts.captured(1);
    return parts.hasMatch() && QDate::fromString(text.left(10), Qt::ISODate).isValid()
           && (time.isEmpty() || QTime::fromString(time, Qt::ISODate).isValid());
}

/// @p greatest is that of the field's type.
QString whyNoInteger(const QString& value, int length, qint64 greatest)
{
    static const QRegularExpression integer(QStringLiteral("^\\s*[+-]?0*([0-9]+)\\s*$"));
    const QRegularExpressionMatch digits = integer.match(value);
    if (!digits.hasMatch())
        return QStringLiteral("is no whole number, which the field takes");
    bool fits = false;
    const qint64 number = value.toLongLong(&fits);
    if (!fits || number > greatest || number < -greatest - 1)
        return QStringLiteral("is too large; the field takes %1 at most").arg(greatest);
    return length < 1 || digits.capturedLength(1) <= length ? QString() : tooLong(length, "digits");
}

/// Why a field cannot take a value; empty if it can.
QString whyMisfit(const QString& value, int type, const FieldSize& size)
{
    switch (type) {
    case Velm::FieldInt:
        return whyNoInteger(value, size.length, std::numeric_limits<qint32>::max());
    case Velm::FieldLong:
        return whyNoInteger(value, size.length, std::numeric_limits<qint64>::max());
    case Velm::FieldReal:
        return whyNoReal(value, size);
    case Velm::FieldDate:
        return isDate(value) ? QString() : QStringLiteral("is no date as 2026-01-31");
    default:
        return size.length < 1 || value.size() <= size.length ? QString()
                                                              : tooLong(size.length, "characters");
    }
}

/// Reports a default value that the field cannot take.
void checkDefault(const CheckedSet& set, DictionaryCodes& codes, const FieldTable& fields, int row,
                  int type, Problems& problems)
{
    const Place place = fields.rows.place(row, fields.defaultValue);
    if (place.value.isEmpty() || !fields.rows.isSound(row, fields.defaultValue))
        return;
    const bool isDictionary = place.value.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive);
    if (isDictionary && fields.namesDictionaryByDefault)
        return;
    QString misfit;
    if (isDictionary)
        misfit = QStringLiteral("is taken as a text; a dictionary is named by DICTIONARY");
    else if (schema::isDictionary(place.value) && set.dictionaries().contains(place.value))
        misfit = QStringLiteral("is taken as a text; of dictionaries, only those that begin with "
                                "TBL_ can be named here");
    else
        misfit = whyMisfit(place.value, type, fields.size(row));
    if (misfit.isEmpty())
        misfit = codes.whyNone(fields.rows.plain(row, QStringLiteral("DICTIONARY")), place.value);
    if (!misfit.isEmpty())
        problems.add(kDefaultDoesNotFit, place, misfit);
}

void checkField(const CheckedSet& set, DictionaryCodes& codes, const FieldTable& fields, int row,
                Problems& problems)
{
    const std::optional<int> type = fields.number(row, fields.type);
    if (!type)
        return;
    if (!fieldtypes::isKnown(*type))
        return problems.add(kFieldTypeRange, fields.rows.place(row, fields.type),
                            QStringLiteral("is not one of ") + fieldtypes::names());
    checkSize(fields, row, *type % fieldtypes::kHidden, problems);
    checkDefault(set, codes, fields, row, *type % fieldtypes::kHidden, problems);
}

void checkTable(const CheckedSet& set, DictionaryCodes& codes, const FieldTable& fields,
                Problems& problems)
{
    checkNames(fields, problems);
    for (int row = 0; row < fields.rows.size(); ++row)
        checkField(set, codes, fields, row, problems);
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
                         QStringLiteral("is defined in peltaconfig.db too, and that counts"));
    }
}

/// Reports what PipeConfig.db defines once more.
void checkBothDatabases(const CheckedSet& set, const FieldTable& own, const FieldTable& pipe,
                        Problems& problems)
{
    reportKnown(set.table("SYS_GISTABLE"), QStringLiteral("LAYERNAME"),
                namesIn(set.table("Attributetable"), QStringLiteral("TABLE")), problems);
    const CheckedTable& lists = set.table("SYS_DICTIONARY");
    for (int row = 0; row < lists.size(); ++row) {
        const Place place = lists.place(row, QStringLiteral("NAME"));
        if (schema::isDictionary(place.value) && set.systemTables().contains(place.value))
            problems.add(kInBothDatabases, place,
                         QStringLiteral("is a table of peltaconfig.db too; this one counts"));
    }
    QSet<QString> fields;
    for (int row = 0; row < own.rows.size(); ++row)
        fields.insert(own.keyOf(row));
    for (int row = 0; row < pipe.rows.size(); ++row) {
        if (fields.contains(pipe.keyOf(row)))
            problems.add(
                kInBothDatabases, pipe.rows.place(row, pipe.name),
                QStringLiteral("is a field of \"%1\" in peltaconfig.db too; both are shown")
                    .arg(pipe.rows.text(row, pipe.table)));
    }
}

}  // namespace

void rules::checkFields(const CheckedSet& set, Problems& problems)
{
    const FieldTable own = systemFields(set.table("Attributefield"));
    const FieldTable pipe = pipeFields(set);
    DictionaryCodes codes(set);
    for (const FieldTable* fields : {&own, &pipe})
        checkTable(set, codes, *fields, problems);
    const CheckedTable& numbered = set.table("PIP_SysConfig");
    const QString name = QStringLiteral("FIELDNAME");
    for (int row = 0; numbered.has(name) && row < numbered.size(); ++row)
        tellIfNameless(numbered, row, name, problems);
    checkBothDatabases(set, own, pipe, problems);
}

void rules::checkFields(const CheckedSet& set, const CheckedTable& fields, Problems& problems)
{
    DictionaryCodes codes(set);
    checkTable(set, codes, systemFields(fields), problems);
}
