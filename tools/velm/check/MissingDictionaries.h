#pragma once

#include "check/FoldedNames.h"
#include "check/Problems.h"

class CheckedSet;

/// Dictionaries that are named and do not exist: one finding each in a run, at the first place that
/// names it.
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
    const CheckedSet& m_set;
    const Rule& m_rule;
    QString m_namer;
    FoldedNames m_missing;
    bool m_needsLists = false;  // a name can only be that of a row of a table which has none
};
