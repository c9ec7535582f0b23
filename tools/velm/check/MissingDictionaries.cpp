#include "check/MissingDictionaries.h"

#include "check/CheckedSet.h"
#include "cli/Suggestions.h"

#include "data/values/DictionaryName.h"

namespace {

/// ", and so do 2 more fields"; nothing for none.
QString others(int count, const QString& namer)
{
    if (count == 0)
        return QString();
    return count == 1 ? QStringLiteral(", and so does 1 more ") + namer
                      : QStringLiteral(", and so do %1 more %2s").arg(count).arg(namer);
}

}  // namespace

void MissingDictionaries::check(const Place& place, const QString& name, const QString& what)
{
    if (!m_set.has({"SYS_DICTIONARY"}) || m_set.dictionaries().contains(name))
        return;
    const auto known = m_places.constFind(name);
    if (known != m_places.constEnd()) {
        ++m_missing[*known].others;
        return;
    }
    m_places.insert(name, m_missing.size());
    m_missing.append({name, place, what, 0});
}

/// What is wrong with a name that is nearly right, or what may be meant.
QString MissingDictionaries::hintFor(const QString& name) const
{
    const QStringList known = m_set.dictionaries().values();
    for (const QString& other : known) {
        if (other.compare(name, Qt::CaseInsensitive) == 0)
            return QStringLiteral("; letter case counts") + didYouMean({other});
    }
    if (!m_set.systemTables().contains(name, Qt::CaseInsensitive))
        return suggestionAmong(name, known);
    return QStringLiteral("; there is a table of that name, but that of a dictionary ")
           + (velm::detail::isIdentifier(name)
                  ? QStringLiteral("begins with TBL_ or TB_")
                  : QStringLiteral("has letters, digits, _ and $ only"));
}

void MissingDictionaries::report(Problems& problems) const
{
    for (const Missing& missing : m_missing)
        problems.add(m_rule, missing.place,
                     missing.what + QStringLiteral("names no dictionary")
                         + others(missing.others, m_namer) + hintFor(missing.name));
}
