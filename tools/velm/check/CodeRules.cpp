#include "check/CheckedSet.h"
#include "check/Rules.h"

#include <QHash>

namespace {

constexpr const Rule& kCodeWithoutDrawing = rules::named("code-without-drawing");
constexpr const Rule& kDrawingWithoutCode = rules::named("drawing-without-code");
constexpr const Rule& kEmptyCode = rules::named("empty-code");
constexpr const Rule& kDuplicateCode = rules::named("duplicate-code");
constexpr const Rule& kCodeDiffersInCase = rules::named("code-differs-in-case");
constexpr const Rule& kDuplicateUserCode = rules::named("duplicate-user-code");
constexpr const Rule& kLayerDiffersInCase = rules::named("layer-differs-in-case");

/// What a column of names must keep; null where anything goes.
struct Uniqueness
{
    const Rule* empty;
    const Rule* same;
    const Rule* differsInCase;
};

/// Reports rows without a value, and those whose value stands in an earlier row too: the same text,
/// or one that differs in letter case only.
void checkUnique(const CheckedTable& table, const char* columnName, const Uniqueness& rules,
                 Problems& problems)
{
    const QString column = QLatin1String(columnName);
    QHash<QString, int> exact, folded;
    for (int row = 0; row < table.size(); ++row) {
        const QString text = table.text(row, column);
        if (text.isEmpty()) {
            if (rules.empty && table.has(column))
                problems.add(*rules.empty, table.place(row, column), QStringLiteral("is empty"));
            continue;
        }
        const auto first = folded.constFind(text.toLower());
        if (exact.contains(text)) {
            if (rules.same)
                problems.add(*rules.same, table.place(row, column),
                             QStringLiteral("stands in row %1 already").arg(exact.value(text) + 1));
        } else if (first != folded.constEnd() && rules.differsInCase) {
            problems.add(*rules.differsInCase, table.place(row, column),
                         QStringLiteral("is \"%1\" in row %2")
                             .arg(table.text(*first, column))
                             .arg(*first + 1));
        }
        exact.insert(text, exact.value(text, row));
        folded.insert(text.toLower(), folded.value(text.toLower(), row));
    }
}

/// Reports names that a table has more than one field of, letter case ignored.
void checkFieldNames(const CheckedTable& fields, const char* tableColumn, const char* nameColumn,
                     Problems& problems)
{
    const QString column = QLatin1String(nameColumn);
    QHash<QString, int> known;
    for (int row = 0; row < fields.size(); ++row) {
        const QString table = fields.text(row, QLatin1String(tableColumn));
        const QString field = (table + QLatin1Char('\n') + fields.text(row, column)).toUpper();
        if (known.contains(field))
            problems.add(kDuplicateCode, fields.place(row, column),
                         QStringLiteral("is a field of \"%1\" in row %2 already")
                             .arg(table)
                             .arg(known.value(field) + 1));
        else
            known.insert(field, row);
    }
}

/// Reports user codes of more than one feature code.
void checkUserCodes(const CheckedTable& index, Problems& problems)
{
    const QString column = QStringLiteral("USECODE");
    QHash<QString, QString> codeOfUserCode;
    for (int row = 0; row < index.size(); ++row) {
        const QString userCode = index.text(row, column).toLower();
        const QString code = index.text(row, QStringLiteral("CODE"));
        if (userCode.isEmpty())
            continue;
        const QString first = codeOfUserCode.value(userCode, code);
        if (first != code)
            problems.add(kDuplicateUserCode, index.place(row, column),
                         QStringLiteral("belongs to the code \"%1\" too").arg(first));
        codeOfUserCode.insert(userCode, first);
    }
}

QHash<QString, int> codesOf(const CheckedTable& table)
{
    QHash<QString, int> codes;
    for (int row = 0; row < table.size(); ++row)
        codes.insert(table.text(row, QStringLiteral("CODE")), row);
    return codes;
}

/// Reports the codes of @p table that @p other has not.
void checkCounterpart(const CheckedTable& table, const CheckedTable& other, const Rule& rule,
                      const QString& message, Problems& problems)
{
    const QHash<QString, int> known = codesOf(other);
    for (int row = 0; row < table.size(); ++row) {
        if (!known.contains(table.text(row, QStringLiteral("CODE"))))
            problems.add(rule, table.place(row, QStringLiteral("CODE")), message);
    }
}

}  // namespace

void rules::checkCodes(const CheckedSet& set, Problems& problems)
{
    const Uniqueness codes{&kEmptyCode, &kDuplicateCode, &kCodeDiffersInCase};
    const Uniqueness tables{&kEmptyCode, &kDuplicateCode, &kDuplicateCode};  // case is ignored
    const Uniqueness layers{nullptr, nullptr, &kLayerDiffersInCase};
    const CheckedTable& index = set.table("indexini");
    const CheckedTable& work = set.table("Workdef");
    for (const char* name : {"indexini", "Workdef", "QuobAreaLine", "VelmAnnotate",
                             "IndexiniExtend", "RecordConfigType"})
        checkUnique(set.table(name), "CODE", codes, problems);
    checkUnique(set.table("globaldefines"), "KEY", codes, problems);
    checkUnique(set.table("VelmFrame"), "CONFIGNAME", codes, problems);
    checkUnique(set.table("VelmCmdSetting"), "CMDNAME", codes, problems);
    checkUnique(set.table("Attributetable"), "TABLE", tables, problems);
    checkUnique(set.table("SYS_GISTABLE"), "LAYERNAME", tables, problems);
    checkUnique(set.table("SYS_DICTIONARY"), "NAME", codes, problems);
    checkUnique(set.table("PIP_SysConfig"), "FIELDTYPE", codes, problems);
    checkFieldNames(set.table("Attributefield"), "TABLE", "NAME", problems);
    checkFieldNames(set.table("SYS_ATTRIBUTEDEF"), "TABLENAME", "FIELDNAME", problems);
    checkUserCodes(index, problems);
    checkUnique(work, "LAYER", layers, problems);
    if (!index.exists() || !work.exists())
        return;
    checkCounterpart(index, work, kCodeWithoutDrawing, QStringLiteral("has no row in Workdef"),
                     problems);
    checkCounterpart(work, index, kDrawingWithoutCode, QStringLiteral("has no row in indexini"),
                     problems);
}
