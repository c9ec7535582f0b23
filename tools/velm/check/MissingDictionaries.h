#pragma once

#include "check/Problems.h"

class CheckedSet;

/// Dictionaries that are named and do not exist: one finding each, at the first place that names
/// it.
class MissingDictionaries
{
public:
    /// @p namer is what names them, "field".
    MissingDictionaries(const CheckedSet& set, const Rule& rule, const QString& namer)
        : m_set(set), m_rule(rule), m_namer(namer)
    {}

    /// Keeps a name that is no dictionary's, with the place that has it. @p what stands before it
    /// in the finding if the place holds more than the name.
    void check(const Place& place, const QString& name, const QString& what = QString());
    void report(Problems& problems) const;

private:
    struct Missing
    {
        QString name;
        Place place;
        QString what;
        int others;  // places that name it
    };

    QString hintFor(const QString& name) const;

    const CheckedSet& m_set;
    const Rule& m_rule;
    QString m_namer;
    QVector<Missing> m_missing;
    QHash<QString, int> m_places;  // in it, by name
};
