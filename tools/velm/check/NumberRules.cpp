#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"
#include "check/WholeNumber.h"

#include "config/tables/AnnotationRanges.h"
#include "config/tables/RecordColumns.h"
#include "VelmTypes.h"

#include <cmath>
#include <limits>

namespace {

constexpr const Rule& kNotANumber = rules::named("not-a-number");
constexpr const Rule& kNotFinite = rules::named("not-finite");
constexpr const Rule& kFraction = rules::named("fraction");

constexpr double kNoBound = std::numeric_limits<double>::infinity();

/// The numbers that a column may hold.
struct Range
{
    const char* table;
    const char* column;
    const Rule& rule;
    double least;
    double greatest;
    const char* wanted;  // in the message
};

constexpr double kAboveZero = std::numeric_limits<double>::min();
constexpr char kEntityTypes[] = "is not one of 0 to 8: 1 general, 3 text, 5 special line";
constexpr char kColours[] = "is not one of 0 to 256: 0 by block, 256 by layer";
constexpr char kTableTypes[] = "is not one of 0 point, 1 line, 2 area, 3 annotation, 4 pipe point, "
                               "5 pipe line";

constexpr Range kRanges[] = {
    {"Workdef", "ENTTYPE", rules::named("entity-type-range"), -1, Velm::EntityTypeLast,
     "is not one of -1 to 8: -1 not given, 1 general, 3 text, 5 special line"},
    {"QuobAreaLine", "ENTTYPE", rules::named("entity-type-range"), 0, Velm::EntityTypeLast,
     kEntityTypes},
    {"VelmAnnotate", "ENTTYPE", rules::named("entity-type-range"), 0, Velm::EntityTypeLast,
     kEntityTypes},
    {"VelmAnnotate", "ANNTYPE", rules::named("annotation-type-range"), 0,
     velm::detail::kLastAnnotationType, "is not one of 0 to 5"},
    {"VelmAnnotate", "INPUT", rules::named("input-type-range"), 0, velm::detail::kLastInputType,
     "is not one of 0 to 2"},
    {"Workdef", "COLOR", rules::named("colour-range"), -1, 256,
     "is not one of -1 to 256: -1 not given, 0 by block, 256 by layer"},
    {"QuobAreaLine", "HATCHCOLOR", rules::named("colour-range"), 0, 256, kColours},
    {"QuobAreaLine", "HATCHBKCOLOR", rules::named("colour-range"), 0, 256, kColours},
    {"QuobAreaLine", "LINEWIDTH", rules::named("negative-width"), 0, kNoBound, "is below 0"},
    {"QuobAreaLine", "LINETYPESCALE", rules::named("not-positive"), kAboveZero, kNoBound,
     "is not above 0"},
    {"VelmAnnotate", "HEIGHT", rules::named("not-positive"), kAboveZero, kNoBound,
     "is not above 0"},
    {"VelmAnnotate", "FACTOR", rules::named("not-positive"), kAboveZero, kNoBound,
     "is not above 0"},
    {"Attributetable", "TYPE", rules::named("table-type-range"), 0, 5, kTableTypes},
    {"SYS_GISTABLE", "LAYERTYPE", rules::named("table-type-range"), 0, 5, kTableTypes},
};

const Range* rangeOf(const CheckedTable& table, const QString& column)
{
    for (const Range& range : kRanges) {
        if (table.name() == QLatin1String(range.table) && column == QLatin1String(range.column))
            return &range;
    }
    return nullptr;
}

/// Why a column of whole numbers takes no such number, which is finite; null if it does.
const Rule* whyNotWhole(const QVariant& value, double number, QString& message)
{
    if (number != std::floor(number)) {
        message = QStringLiteral("is to be a whole number, and counts as %1")
                      .arg(velm::detail::integerOf(value));
        return &kFraction;
    }
    message =
        QStringLiteral("is to be a whole number from -2147483647 to 2147483647, and counts as %1")
            .arg(velm::detail::integerOf(value));
    return wholeNumber(value) ? nullptr : &kNotANumber;
}

/// Reports one thing at most: a number out of its range need not be told to be too large.
void checkNumber(const CheckedTable& table, int row, const ColumnSchema& column, const Range* range,
                 Problems& problems)
{
    const QVariant value = table.value(row, column.name);
    const bool isEmpty = value.toString().isEmpty();  // 0 on purpose
    bool converts = false;
    const double number = value.toDouble(&converts);
    const Place place = table.place(row, column.name);
    if (!converts && !isEmpty)
        return problems.add(kNotANumber, place, QStringLiteral("is no number, and counts as 0"));
    if (!std::isfinite(number))
        return problems.add(kNotFinite, place, QStringLiteral("is no finite number"));
    if (range && (number < range->least || number > range->greatest))
        return problems.add(range->rule, place,
                            isEmpty ? QStringLiteral("is empty") : QLatin1String(range->wanted));
    QString message;
    const Rule* notWhole = column.type == ColumnType::Integer && !isEmpty
                               ? whyNotWhole(value, number, message)
                               : nullptr;
    if (notWhole)
        problems.add(*notWhole, place, message);
}

/// Reports a text that is to be a number of a range, or nothing.
void checkNumberText(const CheckedTable& table, int row, const QString& column, const Range& range,
                     Problems& problems)
{
    const std::optional<int> number = wholeNumber(table.plain(row, column));
    if (!number || *number < range.least || *number > range.greatest)
        problems.add(range.rule, table.place(row, column), QLatin1String(range.wanted));
}

void checkColumn(const CheckedTable& table, const ColumnSchema& column, Problems& problems)
{
    const Range* range = rangeOf(table, column.name);
    const bool isNumber = column.type == ColumnType::Integer || column.type == ColumnType::Real;
    for (int row = 0; table.has(column.name) && row < table.size(); ++row) {
        if (isNumber)
            checkNumber(table, row, column, range, problems);
        else if (range && table.isSound(row, column.name))
            checkNumberText(table, row, column.name, *range, problems);
    }
}

}  // namespace

void rules::checkNumbers(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables())
        checkNumbers(table, problems);
}

void rules::checkNumbers(const CheckedTable& table, Problems& problems)
{
    for (const ColumnSchema& column : table.schema().columns)
        checkColumn(table, column, problems);
}
