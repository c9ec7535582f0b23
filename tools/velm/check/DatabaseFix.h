#pragma once

#include "check/CheckedTable.h"

#include "common/files/StagingFolder.h"

#include "CVelmDatabase.h"

#include <QSqlQuery>

/// One database while it is mended: others may read it and none may write. A whole copy of it as it
/// was lies beside it before anything changes for others. Without commit() it stays as it was, and
/// there is no copy; so it is if the process is killed, but that a copy may stay.
class DatabaseFix
{
public:
    explicit DatabaseFix(const QString& path);
    ~DatabaseFix();
    Q_DISABLE_COPY(DatabaseFix)

    /// Gives a value another text, unless it is no longer what @p place tells. @return why it is
    /// left; empty if it was changed
    QString change(const Place& place, const QString& value);
    /// The same for removing the row of a value.
    QString removeRow(const Place& place);
    bool commit();

    /// What failed first, after which nothing is done; empty if nothing did.
    const QString& problem() const { return m_problem; }
    const QString& copy() const { return m_copy; }

private:
    void makeCopy();
    bool placeCopy();
    /// @return why SQLite refuses the one change; empty if it does not
    QString execute(QSqlQuery& query, const QVariantList& values);
    void run(const QString& statement, const QString& failure);
    QString changeRow(const QString& statement, const QVariantList& values);

    QString m_path;
    CVelmDatabase m_database;
    velm::detail::StagingFolder m_staging;
    QByteArray m_identity;  // of the file that was opened
    QSqlQuery m_change;     // the last one, which the next mostly equals
    QString m_copy;         // empty until it is in its place
    QString m_problem;
    bool m_committed = false;
};
