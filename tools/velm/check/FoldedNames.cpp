#include "check/FoldedNames.h"

void FoldedNames::add(const QString& key, const QString& name, const Place& place,
                      const QString& what)
{
    const auto known = m_places.constFind(key);
    if (known != m_places.constEnd()) {
        ++m_missing[*known].others;
        return;
    }
    m_places.insert(key, m_missing.size());
    m_missing.append({name, place, what, 0});
}

QString alsoBy(int others, const QString& namer)
{
    if (others == 0)
        return QString();
    return others == 1 ? QStringLiteral(", and so does 1 more ") + namer
                       : QStringLiteral(", and so do %1 more %2s").arg(others).arg(namer);
}
