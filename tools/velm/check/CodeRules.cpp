#include "check/CheckedSet.h"
#include "check/LayerNames.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

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

/// What a column must keep; null where anything goes.
struct Uniqueness
{
    const Rule* empty;
    const Rule* same;
    const Rule* differsInCase;
};

/// Reports rows without a value, and those whose value stands in an earlier row too: the same text,
/// or one that differs in letter case only.
void checkUnique(const CheckedTable& table, const QString& column, const Uniqueness& rules,
                 Problems& problems)
{
    QHash<QString, int> exact, folded;
    for (int row = 0; table.has(column) && row < table.size(); ++row) {
        const QString text = table.text(row, column);
        if (text.isEmpty()) {
            if (rules.empty)
                problems.add(*rules.empty, table.place(row, column), QStringLiteral("is empty"));
            continue;
        }
        const auto first = folded.constFind(text.toLower());
        if (exact.contains(text)) {
            if (rules.same)
                problems.add(*rules.same, table.place(row, column),
                             QStringLiteral("stands in row %1 too")
                                 .arg(table.place(exact.value(text), column).row));
        } else if (first != folded.constEnd() && rules.differsInCase) {
            problems.add(*rules.differsInCase, table.place(row, column),
                         QStringLiteral("differs from \"%1\" in row %2 in letter case only")
                             .arg(table.text(*first, column))
                             .arg(table.place(*first, column).row));
        }
        exact.insert(text, exact.value(text, row));
        folded.insert(text.toLower(), folded.value(text.toLower(), row));
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
        const QString code = index.text(row, kCode);
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

QHash<QString, int> codesOf(const CheckedTable& table)
{
    QHash<QString, int> codes;
    for (int row = 0; row < table.size(); ++row)
        codes.insert(table.text(row, kCode), row);
    return codes;
}

/// Whether a code stands for all that have no rows of their own.
bool isDefault(const CheckedTable& table, const QString& code)
{
    return table.name().startsWith(QLatin1String("RecordConfig"))
           && code == QLatin1String("[Default]");
}

/// Reports the codes of @p table that are not among @p known.
void checkKnown(const CheckedTable& table, const QHash<QString, int>& known, const Rule& rule,
                const QString& message, Problems& problems)
{
    for (int row = 0; row < table.size(); ++row) {
        const QString code = table.text(row, kCode);
        if (!code.isEmpty() && !isDefault(table, code) && !known.contains(code))
            problems.add(rule, table.place(row, kCode), message);
    }
}

void checkCodeReferences(const CheckedSet& set, const QHash<QString, int>& codes,
                         Problems& problems)
{
    const QString message = QStringLiteral("has no row in indexini");
    for (const CheckedTable& table : set.tables()) {
        for (const ColumnSchema& column : table.schema().columns) {
            if (column.holds == Holds::CodeReference)
                checkKnown(table, codes,
                           table.name() == QLatin1String("Workdef") ? kDrawingWithoutCode
                                                                    : kUnknownCode,
                           message, problems);
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
        const auto indexRow = codes.constFind(work.text(row, kCode));
        const int type = work.value(row, column).toInt();
        if (indexRow == codes.constEnd() || type == kNotGiven || type == kSpecialLine)
            continue;
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
    const QHash<QString, QString> usual = usualLayerNames(work);
    for (int row = 0; work.has(column) && row < work.size(); ++row) {
        const QString layer = work.text(row, column).trimmed();
        const QString name = usual.value(layer.toLower());
        if (layer != name)
            problems.add(kLayerDiffersInCase, work.place(row, column),
                         QStringLiteral("differs from \"%1\", as most rows have it, in letter case "
                                        "only")
                             .arg(name));
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
        checkKnown(index, codesOf(work), kCodeWithoutDrawing,
                   QStringLiteral("has no row in Workdef"), problems);
}
