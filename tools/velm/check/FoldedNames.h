#pragma once

#include "check/CheckedTable.h"

#include <QHash>
#include <QString>
#include <QVector>

/// Names of what does not exist, with the first place that has each: it is told there, and how many
/// others have it.
class FoldedNames
{
public:
    struct Missing
    {
        QString name;
        Place place;
        QString what;    // stands before it in the finding
        int others = 0;  // places that have it too
    };

    /// Keeps a name; names of one @p key are the same.
    void add(const QString& key, const QString& name, const Place& place, const QString& what);
    const QVector<Missing>& all() const { return m_missing; }

private:
    QVector<Missing> m_missing;
    QHash<QString, int> m_places;  // in it, by key
};

/// ", and so do 2 more fields"; nothing for none.
QString alsoBy(int others, const QString& namer);
