#include "CheckedSet.h"
#include "Rules.h"

#include <QHash>

namespace {

/// Reports rows whose value stands in an earlier row too: the same text, or one that differs in
/// letter case only. Either rule may be null.
void checkUnique(const CheckedTable& table, const char* columnName, const Rule* same,
                 const Rule* differsInCase, Problems& problems)
{
    const QString column = QLatin1String(columnName);
    QHash<QString, int> exact, folded;
    for (int row = 0; row < table.size(); ++row) {
        const QString text = table.text(row, column);
        if (text.isEmpty())
            continue;
        const auto first = folded.constFind(text.toLower());
        if (exact.contains(text)) {
            if (same)
                problems.add(*same, table.place(row, column),
                             QStringLiteral("stands in row %1 already").arg(exact.value(text) + 1));
        } else if (first != folded.constEnd() && differsInCase) {
            problems.add(*differsInCase, table.place(row, column),
                         QStringLiteral("is \"%1\" in row %2")
                             .arg(table.text(*first, column))
                             .arg(*first + 1));
        }
        exact.insert(text, exact.value(text, row));
        folded.insert(text.toLower(), folded.value(text.toLower(), row));
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
            problems.add(rules::kDuplicateUserCode, index.place(row, column),
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
    const CheckedTable& index = set.table("indexini");
    const CheckedTable& work = set.table("Workdef");
    for (const char* name : {"indexini", "Workdef", "QuobAreaLine", "VelmAnnotate",
                             "IndexiniExtend", "RecordConfigType"})
        checkUnique(set.table(name), "CODE", &kDuplicateCode, &kCodeDiffersInCase, problems);
    checkUserCodes(index, problems);
    checkUnique(work, "LAYER", nullptr, &kLayerDiffersInCase, problems);
    if (!index.exists() || !work.exists())
        return;
    checkCounterpart(index, work, kCodeWithoutDrawing, QStringLiteral("has no row in Workdef"),
                     problems);
    checkCounterpart(work, index, kDrawingWithoutCode, QStringLiteral("has no row in indexini"),
                     problems);
}
