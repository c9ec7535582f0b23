#include "check/CheckedSet.h"
#include "check/EmptyTable.h"
#include "check/LayerNames.h"
#include "check/PlainName.h"
#include "check/Rules.h"
#include "check/RuleTable.h"
#include "check/WholeNumber.h"
#include "cli/Suggestions.h"

#include "VelmTypes.h"

#include <QHash>

namespace {

constexpr const Rule& kEmptyCode = rules::named("empty-code");
constexpr const Rule& kDuplicateCode = rules::named("duplicate-code");
constexpr const Rule& kCodeDiffersInCase = rules::named("code-differs-in-case");
constexpr const Rule& kCodeWithoutDrawing = rules::named("code-without-drawing");
constexpr const Rule& kDrawingWithoutCode = rules::named("drawing-without-code");
constexpr const Rule& kUnknownCode = rules::named("unknown-code");
constexpr const Rule& kDuplicateUserCode = rules::named("duplicate-user-code");
constexpr const Rule& kUserCodeIsCode = rules::named("user-code-is-code");
constexpr const Rule& kSpecialLineType = rules::named("special-line-type");
constexpr const Rule& kLayerDiffersInCase = rules::named("layer-differs-in-case");

const QString kCode = QStringLiteral("CODE");
const QString kDefault = QStringLiteral("[Default]");

/// What a column must keep; null where anything goes.
struct Uniqueness
{
    const Rule* empty;
    const Rule* same;
    const Rule* differsInCase;
};

/// Whether the first of several rows of a key counts, as where a row is looked up anew each time.
/// Where all rows are loaded, a later one takes the place of those before.
bool firstCounts(const CheckedTable& table)
{
    static const QStringList names{QStringLiteral("VelmAnnotate"), QStringLiteral("VelmFrame"),
                                   QStringLiteral("VelmCmdSetting"),
                                   QStringLiteral("globaldefines"), QStringLiteral("SYS_GISTABLE")};
    return names.contains(table.name());
}

/// Which of several rows of a key counts, told at @p place.
QString whichCounts(const CheckedTable& table, const Place& place, const Place& first,
                    const Place& last)
{
    const bool isFirst = firstCounts(table);
    const QString which = isFirst ? QStringLiteral("the first") : QStringLiteral("the last");
    const Place& counts = isFirst ? first : last;
    if (counts.row == 0)
        return QStringLiteral("; %1 counts").arg(which);
    return QStringLiteral("; %1 counts, as %2")
        .arg(counts.row == place.row ? QStringLiteral("this row") : rowName(counts), which);
}

/// The first and the last rows of the values of a column, which are the same @p as some text.
template<class As>
QHash<QString, QPair<int, int>> rowsOf(const CheckedTable& table, const QString& column,
                                       const As& as)
{
    QHash<QString, QPair<int, int>> rows;
    for (int row = 0; row < table.size(); ++row) {
        const QString text = as(table.text(row, column));
        rows.insert(text, {rows.value(text, {row, row}).first, row});
    }
    return rows;
}

/// Reports rows without a value, and those whose value stands in an earlier row too: the same text,
/// or one that differs in letter case only.
void checkUnique(const CheckedTable& table, const QString& column, const Uniqueness& rules,
                 Problems& problems)
{
    const auto exact = rowsOf(table, column, [](const QString& text) { return text; });
    const auto folded = rowsOf(table, column, [](const QString& text) { return text.toLower(); });
    for (int row = 0; table.has(column) && row < table.size(); ++row) {
        const Place place = table.place(row, column);
        const auto [first, last] = exact.value(place.value);
        const auto [firstAlike, lastAlike] = folded.value(place.value.toLower());
        if (table.isSound(row, column) && isBlank(place.value)) {
            if (rules.empty)
                problems.add(*rules.empty, place, emptyOrBlank(place.value));
        } else if (first < row) {
            if (rules.same)
                problems.add(
                    *rules.same, place,
                    QStringLiteral("stands in %1 too").arg(rowName(table.place(first, column)))
                        + whichCounts(table, place, table.place(first, column),
                                      table.place(last, column)));
        } else if (firstAlike < row && rules.differsInCase) {
            const Place other = table.place(firstAlike, column);
            problems.add(*rules.differsInCase, place,
                         QStringLiteral("differs from \"%1\" in %2 in letter case only")
                                 .arg(other.value, rowName(other))
                             + (rules.differsInCase == rules.same ? whichCounts(
                                    table, place, other, table.place(lastAlike, column))
                                                                  : QString()));
        }
    }
}

/// Reports what is wrong with the keys of a table.
void checkKeys(const CheckedTable& table, Problems& problems)
{
    const TableSchema& schema = table.schema();
    if (schema.key.size() > 1 || schema::isDictionary(table.name()))
        return;  // fields and dictionaries have rules of their own
    Uniqueness rules{&kEmptyCode, nullptr, nullptr};
    if (schema.keyRule != KeyRule::Repeated)
        rules.same = &kDuplicateCode;
    if (schema.keyRule == KeyRule::Exact)
        rules.differsInCase = &kCodeDiffersInCase;
    if (schema.keyRule == KeyRule::IgnoringCase)
        rules.differsInCase = &kDuplicateCode;
    checkUnique(table, schema.key.first(), rules, problems);
}

/// Reports user codes of more than one feature code, and those that are a code themselves.
void checkUserCodes(const CheckedTable& index, const QHash<QString, int>& codes, Problems& problems)
{
    const QString column = QStringLiteral("USECODE");
    QHash<QString, QString> codeOfUserCode;
    for (int row = 0; row < index.size(); ++row) {
        const QString userCode = index.text(row, column);
        const QString code = index.plain(row, kCode);
        if (userCode.isEmpty())
            continue;
        const QString first = codeOfUserCode.value(userCode.toLower(), code);
        if (first != code)
            problems.add(kDuplicateUserCode, index.place(row, column),
                         QStringLiteral("belongs to the code \"%1\" too").arg(first));
        if (userCode != code && codes.contains(userCode))
            problems.add(kUserCodeIsCode, index.place(row, column),
                         QStringLiteral("is the code of \"%1\"")
                             .arg(index.text(codes.value(userCode), QStringLiteral("NAME"))));
        codeOfUserCode.insert(userCode.toLower(), first);
    }
}

/// The rows of the codes of a table, also under the name that is meant.
QHash<QString, int> codesOf(const CheckedTable& table)
{
    QHash<QString, int> codes;
    for (int row = 0; row < table.size(); ++row)
        codes.insert(table.plain(row, kCode), row);
    for (int row = 0; row < table.size(); ++row)
        codes.insert(table.text(row, kCode), row);
    return codes;
}

/// Whether a table has a row for all codes that have none of their own.
bool hasDefault(const CheckedTable& table)
{
    return table.name().startsWith(QLatin1String("RecordConfig"));
}

/// Whether a code stands for all that have no rows of their own.
bool isDefault(const CheckedTable& table, const QString& code)
{
    return hasDefault(table) && code == kDefault;
}

/// What may be meant by a code that is not known.
QString hintFor(const Rule& rule, const CheckedTable& table, const QString& code,
                const QStringList& known, Problems& problems)
{
    return hasDefault(table) && code.compare(kDefault, Qt::CaseInsensitive) == 0
               ? didYouMean({kDefault})
               : problems.suggestionAmong(rule, code, known);
}

/// Reports the codes of @p table that @p other, whose codes are @p known, does not have.
void checkKnown(const CheckedTable& table, const CheckedTable& other,
                const QHash<QString, int>& known, const Rule& rule, Problems& problems)
{
    const QStringList candidates = &rule == &kUnknownCode ? known.keys() : QStringList();
    for (int row = 0; row < table.size(); ++row) {
        const QString code = table.plain(row, kCode);
        if (code.isEmpty() || isDefault(table, code) || known.contains(code))
            continue;
        if (tellIfEmpty(other, problems))
            return;
        problems.add(rule, table.place(row, kCode),
                     QStringLiteral("has no row in ") + other.name()
                         + hintFor(rule, table, code, candidates, problems));
    }
}

void checkCodeReferences(const CheckedSet& set, const QHash<QString, int>& codes,
                         Problems& problems)
{
    for (const CheckedTable& table : set.tables()) {
        for (const ColumnSchema& column : table.schema().columns) {
            if (column.holds == Holds::CodeReference)
                checkKnown(table, set.table("indexini"), codes,
                           table.name() == QLatin1String("Workdef") ? kDrawingWithoutCode
                                                                    : kUnknownCode,
                           problems);
        }
    }
}

/// Reports special lines whose work definition says something else. It need not say anything.
void checkSpecialLines(const CheckedTable& index, const CheckedTable& work,
                       const QHash<QString, int>& codes, Problems& problems)
{
    const QString column = QStringLiteral("ENTTYPE");
    constexpr int kNotGiven = -1;
    constexpr int kSpecialLine = 5;
    for (int row = 0; work.has(column) && row < work.size(); ++row) {
        const auto indexRow = codes.constFind(work.plain(row, kCode));
        const std::optional<int> type = wholeNumber(work.value(row, column));
        const bool isType = type && *type > kNotGiven && *type <= Velm::EntityTypeLast;
        if (indexRow == codes.constEnd() || !isType || *type == kSpecialLine)
            continue;  // what is no type is told as that
        const QString lineType = index.text(*indexRow, QStringLiteral("LTYPE"));
        if (lineType.startsWith(QLatin1String("gc"), Qt::CaseInsensitive))
            problems.add(kSpecialLineType, work.place(row, column),
                         QStringLiteral("is to be 5, since the line type in indexini is \"%1\"")
                             .arg(lineType));
    }
}

/// Reports layers that are written otherwise than in most rows.
void checkLayerNames(const CheckedTable& work, Problems& problems)
{
    const QString column = QStringLiteral("LAYER");
    const QHash<QString, UsualName> usual = usualLayerNames(work);
    for (int row = 0; work.has(column) && row < work.size(); ++row) {
        const QString layer = work.text(row, column).trimmed();
        const UsualName known = usual.value(layer.toLower());
        const QString who = known.isTied ? QStringLiteral("other rows have it")
                                         : QStringLiteral("most rows have it");
        if (layer != known.name)
            problems.add(kLayerDiffersInCase, work.place(row, column),
                         QStringLiteral("differs from \"%1\", as %2, in letter case only")
                             .arg(known.name, who));
    }
}

}  // namespace

void rules::checkCodes(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables())
        checkKeys(table, problems);
    const CheckedTable& index = set.table("indexini");
    const CheckedTable& work = set.table("Workdef");
    checkLayerNames(work, problems);
    if (!index.has(kCode))
        return;
    const QHash<QString, int> codes = codesOf(index);
    checkUserCodes(index, codes, problems);
    checkCodeReferences(set, codes, problems);
    checkSpecialLines(index, work, codes, problems);
    if (work.has(kCode))
        checkKnown(index, work, codesOf(work), kCodeWithoutDrawing, problems);
}
