#pragma once

#include <QString>
#include <QStringList>

/// Takes the place of the drivers for SQLite and ODBC while it lives: keeps what it is asked for,
/// reaches no database, answers every statement with one row that holds one column "N" with the
/// number 1. Outlives the connections opened through it.
class SqlRecorder
{
public:
    SqlRecorder();
    ~SqlRecorder();
    SqlRecorder(const SqlRecorder&) = delete;
    SqlRecorder& operator=(const SqlRecorder&) = delete;

    /// What it was asked for since the last call, one a line: the texts of statements executed or
    /// prepared, "DRIVER open NAME", "close", "begin", "commit" and "rollback".
    QString take();

    /// What begins so fails, a statement with the text "refused".
    QStringList refused;

    /// For the drivers. False if refused.
    bool ask(const QString& request);

private:
    QStringList m_requests;
};
