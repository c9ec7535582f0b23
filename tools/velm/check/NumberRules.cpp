#include "check/CheckedSet.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include "config/tables/AnnotationRanges.h"
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

constexpr Range kRanges[] = {
    {"Workdef", "ENTTYPE", rules::named("entity-type-range"), -1, Velm::EntityTypeLast,
     "is not one of -1 to 8"},
    {"VelmAnnotate", "ENTTYPE", rules::named("entity-type-range"), 0, Velm::EntityTypeLast,
     "is not one of 0 to 8"},
    {"VelmAnnotate", "ANNTYPE", rules::named("annotation-type-range"), 0,
     velm::detail::kLastAnnotationType, "is not one of 0 to 5"},
    {"VelmAnnotate", "INPUT", rules::named("input-type-range"), 0, velm::detail::kLastInputType,
     "is not one of 0 to 2"},
    {"Workdef", "COLOR", rules::named("colour-range"), -1, 256, "is not one of -1 to 256"},
    {"QuobAreaLine", "HATCHCOLOR", rules::named("colour-range"), 0, 256, "is not one of 0 to 256"},
    {"QuobAreaLine", "HATCHBKCOLOR", rules::named("colour-range"), 0, 256,
     "is not one of 0 to 256"},
    {"QuobAreaLine", "LINEWIDTH", rules::named("negative-width"), 0, kNoBound, "is below 0"},
    {"QuobAreaLine", "LINETYPESCALE", rules::named("not-positive"),
     std::numeric_limits<double>::min(), kNoBound, "is not above 0"},
    {"VelmAnnotate", "HEIGHT", rules::named("not-positive"), std::numeric_limits<double>::min(),
     kNoBound, "is not above 0"},
    {"VelmAnnotate", "FACTOR", rules::named("not-positive"), std::numeric_limits<double>::min(),
     kNoBound, "is not above 0"},
    {"Attributetable", "TYPE", rules::named("table-type-range"), 0, 5, "is not one of 0 to 5"},
    {"SYS_GISTABLE", "LAYERTYPE", rules::named("table-type-range"), 0, 5, "is not one of 0 to 5"},
};

void checkNumber(const CheckedTable& table, int row, const ColumnSchema& column, Problems& problems)
{
    const QVariant value = table.value(row, column.name);
    if (value.isNull() || value.toString().isEmpty())
        return;  // 0 on purpose
    bool converts = false;
    const double number = value.toDouble(&converts);
    const Place place = table.place(row, column.name);
    if (!converts)
        return problems.add(kNotANumber, place, QStringLiteral("is no number, and counts as 0"));
    if (!std::isfinite(number))
        return problems.add(kNotFinite, place, QStringLiteral("is no finite number"));
    if (column.type != ColumnType::Integer)
        return;
    if (number != std::floor(number))
        return problems.add(kFraction, place, QStringLiteral("is to be a whole number"));
    value.toInt(&converts);  // a text of an integer takes no fraction and no exponent
    if (!converts || std::abs(number) > std::numeric_limits<int>::max())
        problems.add(kNotANumber, place,
                     QStringLiteral("is too large for a whole number, 2147483647 at most"));
}

void checkRange(const CheckedTable& table, const Range& range, Problems& problems)
{
    const QString column = QLatin1String(range.column);
    for (int row = 0; table.has(column) && row < table.size(); ++row) {
        bool converts = false;
        const QVariant value = table.value(row, column);
        const double number = value.toDouble(&converts);
        const bool counts = (converts && std::isfinite(number)) || value.toString().isEmpty();
        if (counts && (number < range.least || number > range.greatest))
            problems.add(range.rule, table.place(row, column), QLatin1String(range.wanted));
    }
}

}  // namespace

void rules::checkNumbers(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables()) {
        for (const ColumnSchema& column : table.schema().columns) {
            const bool isNumber =
                column.type == ColumnType::Integer || column.type == ColumnType::Real;
            for (int row = 0; isNumber && row < table.size(); ++row)
                checkNumber(table, row, column, problems);
        }
    }
    for (const Range& range : kRanges)
        checkRange(set.table(range.table), range, problems);
}
