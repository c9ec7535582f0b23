#include "check/CheckedSet.h"
#include "check/Rules.h"

#include <QJsonDocument>
#include <QTextCodec>

#include <cmath>
#include <limits>

namespace {

/// Whether a value converts as the library converts it; empty and missing values are 0 on purpose.
bool isNumber(const QVariant& value, CheckedColumn::Kind kind)
{
    if (value.isNull() || value.toString().isEmpty())
        return true;
    bool converts = false;
    const double number = value.toDouble(&converts);
    if (kind == CheckedColumn::Real)
        return converts;
    value.toInt(&converts);
    return converts && std::abs(number) <= std::numeric_limits<int>::max();
}

void checkJson(const QString& text, CheckedColumn::Kind kind, const Place& place,
               Problems& problems)
{
    if (text.isEmpty())
        return;
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        problems.add(rules::kJsonSyntax, place,
                     QStringLiteral("%1 at offset %2").arg(error.errorString()).arg(error.offset));
    else if (kind == CheckedColumn::JsonObject && !document.isObject())
        problems.add(rules::kJsonType, place, QStringLiteral("is to be a JSON object"));
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
        problems.add(rules::kSingleQuote, place, QStringLiteral("holds a single quote"));
    if (!fitsGbk(text))
        problems.add(rules::kNotInGbk, place,
                     QStringLiteral("holds characters that GBK does not have"));
}

void checkValue(const CheckedTable& table, int row, const CheckedColumn& column, Problems& problems)
{
    const Place place = table.place(row, column.name);
    switch (column.kind) {
    case CheckedColumn::Integer:
    case CheckedColumn::Real:
        if (!isNumber(table.value(row, column.name), column.kind))
            problems.add(rules::kNotANumber, place, QStringLiteral("is no number"));
        return;
    case CheckedColumn::Json:
    case CheckedColumn::JsonObject:
        checkJson(place.value, column.kind, place, problems);
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
            for (const CheckedColumn& column : table.columns()) {
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
            if (table.isOptional())
                continue;
            problems.add(kMissingTable, table.place(-1, QString()),
                         QStringLiteral("there is no such table"));
            continue;
        }
        for (const CheckedColumn& column : table.columns()) {
            if (!column.optional && !table.has(column.name))
                problems.add(kMissingColumn, table.place(-1, column.name),
                             QStringLiteral("there is no such column"));
        }
    }
    for (const QString& key : set.withoutIndex())
        problems.add(kMissingIndex,
                     {QStringLiteral("peltaconfig.db"), key.section(QLatin1Char('.'), 0, 0), 0,
                      key.section(QLatin1Char('.'), 1), QString()},
                     QStringLiteral("has no index; \"create index\" makes queries fast"));
}
