#pragma once

#include <QSqlField>
#include <QString>
#include <QStringList>
#include <QVariant>

/// Takes the place of a database driver while it lives: keeps what it is asked for, reaches no database and answers
/// as it is told here. Outlives the connections opened through it.
class SqlRecorder
{
public:
    explicit SqlRecorder(const char* driverName);
    ~SqlRecorder();
    SqlRecorder(const SqlRecorder&) = delete;
    SqlRecorder& operator=(const SqlRecorder&) = delete;

    /// What was executed or prepared since the last call, one text a line.
    QString takeStatements();
    /// What else was asked for since the last call: "open NAME", "close", "begin", "commit", "rollback".
    QStringList takeEvents();

    QSqlField column{QStringLiteral("N"), QVariant::Int};  ///< the one column of every result
    QString refusedStatement;  ///< statements that begin so fail with the text "refused"
    QString refusedEvents;     ///< events whose names stand in here fail

    // For the driver itself.

    bool run(const QString& statement);
    bool happen(const QString& event);

private:
    QString m_driverName;
    QStringList m_statements, m_events;
};
