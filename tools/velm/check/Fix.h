#pragma once

#include "check/Problems.h"

#include <QStringList>

class CheckedSet;

/// What of the findings has one safe answer: blanks at an end, rows without a code, layers that
/// differ in letter case.
class Fix
{
public:
    /// Mends those of @p problems that it can, in one transaction a database, of which a copy is
    /// left beside it. A row that has changed since it was read is left, and so is one whose new
    /// name another row has. A database with triggers is not touched.
    Fix(const CheckedSet& set, const QVector<Problem>& problems);

    /// What was changed, a line each, and where the copies are.
    const QStringList& report() const { return m_report; }
    /// Why a database could not be mended, and is as it was, a line each.
    const QStringList& problems() const { return m_problems; }

private:
    struct Change
    {
        Place place;
        QString value;  // the new one; null to remove the row
    };

    static QVector<Change> plan(const CheckedSet& set, const QVector<Problem>& problems,
                                const QString& database);
    void apply(const QVector<Change>& changes, const CheckedSet& set, const QString& database,
               const QString& path);

    QStringList m_report;
    QStringList m_problems;
};
