#include "check/CheckedSet.h"
#include "check/Rules.h"

#include <QJsonDocument>
#include <QTextCodec>

#include <cmath>
#include <limits>

namespace {

constexpr const Rule& kMissingTable = rules::named("missing-table");
constexpr const Rule& kMissingColumn = rules::named("missing-column");
constexpr const Rule& kEntityTypeRange = rules::named("entity-type-range");
constexpr const Rule& kAnnotationTypeRange = rules::named("annotation-type-range");
constexpr const Rule& kInputTypeRange = rules::named("input-type-range");
constexpr const Rule& kNotANumber = rules::named("not-a-number");
constexpr const Rule& kJsonSyntax = rules::named("json-syntax");
constexpr const Rule& kJsonType = rules::named("json-type");
constexpr const Rule& kSingleQuote = rules::named("single-quote");
constexpr const Rule& kNotInGbk = rules::named("not-in-gbk");
constexpr const Rule& kMissingIndex = rules::named("missing-index");

/// Whether a value converts as the library converts it; empty and missing values are 0 on purpose.
bool isNumber(const QVariant& value, ColumnType type)
{
    if (value.isNull() || value.toString().isEmpty())
        return true;
    bool converts = false;
    const double number = value.toDouble(&converts);
    if (type == ColumnType::Real)
        return converts;
    value.toInt(&converts);
    return converts && std::abs(number) <= std::numeric_limits<int>::max();
}

void checkJson(const QString& text, ColumnType type, const Place& place, Problems& problems)
{
    if (text.isEmpty())
        return;
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        problems.add(kJsonSyntax, place,
                     QStringLiteral("%1 at offset %2").arg(error.errorString()).arg(error.offset));
    else if (type == ColumnType::JsonObject && !document.isObject())
        problems.add(kJsonType, place, QStringLiteral("is to be a JSON object"));
}

bool fitsGbk(const QString& text)
{
    // Not every codec counts what it cannot encode.
    static QTextCodec* codec = QTextCodec::codecForName("GBK");
    return codec->toUnicode(codec->fromUnicode(text)) == text;
}

void checkText(const QString& text, const Place& place, Problems& problems)
{
    if (text.contains(QLatin1Char('\'')))
        problems.add(kSingleQuote, place, QStringLiteral("holds a single quote"));
    if (!fitsGbk(text))
        problems.add(kNotInGbk, place, QStringLiteral("holds characters that GBK does not have"));
}

void checkValue(const CheckedTable& table, int row, const ColumnSchema& column, Problems& problems)
{
    const Place place = table.place(row, column.name);
    switch (column.type) {
    case ColumnType::Integer:
    case ColumnType::Real:
        if (!isNumber(table.value(row, column.name), column.type))
            problems.add(kNotANumber, place, QStringLiteral("is no number"));
        return;
    case ColumnType::Json:
    case ColumnType::JsonObject:
        checkJson(place.value, column.type, place, problems);
        break;
    default:
        break;
    }
    checkText(place.value, place, problems);
}

}  // namespace

void rules::checkValues(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables()) {
        for (int row = 0; row < table.size(); ++row) {
            for (const ColumnSchema& column : table.schema().columns) {
                if (table.has(column.name))
                    checkValue(table, row, column, problems);
            }
        }
    }
}

void rules::checkRanges(const CheckedSet& set, Problems& problems)
{
    struct Range
    {
        const char* table;
        const char* column;
        const Rule* rule;
        int last;
    };
    const Range ranges[] = {{"Workdef", "ENTTYPE", &kEntityTypeRange, 8},
                            {"VelmAnnotate", "ENTTYPE", &kEntityTypeRange, 8},
                            {"VelmAnnotate", "ANNTYPE", &kAnnotationTypeRange, 5},
                            {"VelmAnnotate", "INPUT", &kInputTypeRange, 2}};
    for (const Range& range : ranges) {
        const CheckedTable& table = set.table(range.table);
        const QString column = QLatin1String(range.column);
        for (int row = 0; row < table.size(); ++row) {
            const qint64 number = table.value(row, column).toLongLong();
            if (number < 0 || number > range.last)
                problems.add(*range.rule, table.place(row, column),
                             QStringLiteral("is not within 0 to %1").arg(range.last));
        }
    }
}

void rules::checkSchema(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables()) {
        if (!table.exists()) {
            if (table.schema().optional)
                continue;
            problems.add(kMissingTable, table.place(-1, QString()),
                         QStringLiteral("there is no such table"));
            continue;
        }
        for (const ColumnSchema& column : table.schema().columns) {
            if (!column.optional && !table.has(column.name))
                problems.add(kMissingColumn, table.place(-1, column.name),
                             QStringLiteral("there is no such column"));
        }
    }
    for (const QString& key : set.withoutIndex())
        problems.add(kMissingIndex,
                     {schema::kSystemFile, key.section(QLatin1Char('.'), 0, 0), 0,
                      key.section(QLatin1Char('.'), 1), QString()},
                     QStringLiteral("has no index; \"create index\" makes queries fast"));
}
