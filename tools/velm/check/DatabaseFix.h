#pragma once

#include "check/CheckedTable.h"

#include "CVelmDatabase.h"

/// One database while it is mended: others may read it and none may write. A copy of it as it was
/// lies beside it. Without commit() it stays as it was, and the copy goes.
class DatabaseFix
{
public:
    explicit DatabaseFix(const QString& path);
    ~DatabaseFix();
    Q_DISABLE_COPY(DatabaseFix)

    /// Gives a value another text, unless it is no longer what @p place tells. @return whether it
    /// was changed
    bool change(const Place& place, const QString& value);
    /// Removes the row of a value, unless that is no longer what @p place tells.
    bool removeRow(const Place& place);
    bool commit();

    /// What failed first, after which nothing is done; empty if nothing did.
    const QString& problem() const { return m_problem; }
    const QString& copy() const { return m_copy; }

private:
    bool execute(CVelmDatabase& database, const QString& statement, const QVariantList& values,
                 const QString& failure);

    CVelmDatabase m_database;
    QString m_copy;  // empty until it is this object's own
    QString m_problem;
    int m_changed = 0;  // rows, by the last statement
    bool m_committed = false;
};
