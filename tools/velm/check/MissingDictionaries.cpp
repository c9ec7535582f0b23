#include "check/MissingDictionaries.h"

#include "check/CheckedSet.h"
#include "check/EmptyTable.h"
#include "cli/Suggestions.h"

#include "data/values/DictionaryName.h"

namespace {

/// What is wrong with names that are nearly right, or what may be meant.
class Hints
{
public:
    explicit Hints(const CheckedSet& set) : m_known(set.dictionaries().values())
    {
        for (const QString& name : qAsConst(m_known))
            m_byLowerCase.insert(name.toLower(), name);
        for (const QString& name : set.systemTables())
            m_tables.insert(name.toLower());
    }

    QString hintFor(const Rule& rule, const QString& name, Problems& problems) const
    {
        const QString other = m_byLowerCase.value(name.toLower());
        if (!other.isEmpty())
            return QStringLiteral("; letter case counts") + didYouMean({other});
        if (!m_tables.contains(name.toLower()))
            return problems.suggestionAmong(rule, name, m_known);
        return QStringLiteral("; there is a table of that name, but that of a dictionary ")
               + (velm::detail::isIdentifier(name)
                      ? QStringLiteral("begins with TBL_ or TB_")
                      : QStringLiteral("has letters, digits, _ and $ only"));
    }

private:
    QStringList m_known;
    QHash<QString, QString> m_byLowerCase;
    QSet<QString> m_tables;  // in lower case
};

}  // namespace

void MissingDictionaries::check(const Place& place, const QString& name, const QString& what)
{
    if (!m_set.has({"SYS_DICTIONARY"}) || m_set.dictionaries().contains(name))
        return;
    if (m_set.table("SYS_DICTIONARY").size() == 0 && !schema::isDictionary(name))
        m_needsLists = true;
    else
        m_missing.add(name, name, place, what);
}

void MissingDictionaries::report(Problems& problems) const
{
    if (m_needsLists)
        tellIfEmpty(m_set.table("SYS_DICTIONARY"), problems);
    if (m_missing.all().isEmpty())
        return;
    const Hints hints(m_set);
    for (const FoldedNames::Missing& missing : m_missing.all())
        problems.addOnce(QStringLiteral("dictionary ") + missing.name, m_rule, missing.place,
                         missing.what + QStringLiteral("names no dictionary")
                             + alsoBy(missing.others, m_namer)
                             + hints.hintFor(m_rule, missing.name, problems));
}
