#pragma once

#include "check/FixPlan.h"

class CheckedSet;
class DatabaseFix;

/// What of the findings has one safe answer: blanks at an end, rows without a code, layers that
/// differ in letter case.
class Fix
{
public:
    /// Mends those of @p problems that it can, in one transaction a database, of which a copy is
    /// left beside it. A database with triggers is not touched. Tells what was changed, what was
    /// left and why, where the copies are, and how many of each; and why a database could not be
    /// mended, and is as it was.
    Fix(const CheckedSet& set, const QVector<Problem>& problems);

    bool hasFailed() const { return m_hasFailed; }
    bool hasChanged() const { return m_done > 0; }

private:
    void apply(const QVector<Change>& changes, const CheckedSet& set, const QString& database,
               const QString& path);
    void commit(DatabaseFix& fix, const QVector<Change>& changes, const QString& database);
    void tellAll(const QVector<Change>& changes);
    void fail(const QString& problem);
    void tellTotals() const;

    bool m_hasFailed = false;
    int m_done = 0;
    int m_left = 0;
};
