#include "check/CheckedSet.h"
#include "check/PlainName.h"
#include "check/Rules.h"
#include "check/RuleTable.h"

#include "data/values/DictionaryName.h"

namespace {

constexpr const Rule& kWithoutEntries = rules::named("dictionary-without-entries");
constexpr const Rule& kName = rules::named("dictionary-name");
constexpr const Rule& kEmptyEntry = rules::named("dictionary-empty-entry");
constexpr const Rule& kDuplicateEntry = rules::named("dictionary-duplicate-entry");

const QString kCode = QStringLiteral("CODE");
const QString kValue = QStringLiteral("VALUE");

/// Reports empty and repeated texts in a column of a dictionary. Of a row without both the code is
/// told.
void checkEntries(const CheckedTable& table, const QString& column, Problems& problems)
{
    QHash<QString, int> known;
    for (int row = 0; table.has(column) && row < table.size(); ++row) {
        const Place place = table.place(row, column);
        const QString& text = place.value;
        const bool isTold = column == kValue && table.has(kCode) && isBlank(table.text(row, kCode));
        if (table.isSound(row, column) && isBlank(text)) {
            if (!isTold)
                problems.add(kEmptyEntry, place, emptyOrBlank(text));
            continue;
        }
        const auto first = known.constFind(text);
        if (first == known.constEnd())
            known.insert(text, row);
        else
            problems.add(
                kDuplicateEntry, place,
                QStringLiteral("stands in %1 too").arg(rowName(table.place(*first, column))));
    }
}

/// A dictionary of PipeConfig.db is a list in one text.
void checkList(const CheckedTable& table, int row, Problems& problems)
{
    const Place place = table.place(row, QStringLiteral("LISTVALUE"));
    if (place.value.isEmpty())
        return problems.add(kWithoutEntries, place, QStringLiteral("has no entries"));
    QSet<QString> known;
    const QStringList entries = place.value.split(QLatin1Char(';'));
    for (const QString& entry : entries) {
        if (isBlank(entry))
            problems.add(kEmptyEntry, place, QStringLiteral("has an empty entry"));
        else if (known.contains(entry))
            problems.add(kDuplicateEntry, place,
                         QStringLiteral("has the entry \"%1\" more than once").arg(entry));
        known.insert(entry);
    }
}

}  // namespace

void rules::checkDictionaries(const CheckedSet& set, Problems& problems)
{
    for (const CheckedTable& table : set.tables()) {
        if (!schema::isDictionary(table.name()) || !table.exists())
            continue;
        if (!velm::detail::isIdentifier(table.name()))
            problems.addOnce(QStringLiteral("dictionary ") + table.name(), kName, table.place(),
                             QStringLiteral("\"%1\" counts as no dictionary, since its name has "
                                            "others than letters, digits, _ and $")
                                 .arg(table.name()));
        if (table.size() == 0 && table.has(kCode) && table.has(kValue))
            problems.add(kWithoutEntries, table.place(), QStringLiteral("has no entries"));
        checkEntries(table, kCode, problems);
        checkEntries(table, kValue, problems);
    }
    const CheckedTable& lists = set.table("SYS_DICTIONARY");
    for (int row = 0; lists.has(QStringLiteral("LISTVALUE")) && row < lists.size(); ++row)
        checkList(lists, row, problems);
}
