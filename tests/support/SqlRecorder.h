#pragma once

#include <QStringList>

/// Takes the place of the drivers for SQLite and ODBC while it lives: keeps what they are asked for
/// and reaches no database. Every statement has one row that holds 1 in one column "N". There is
/// one at a time, and it outlives the connections opened through it.
class SqlRecorder
{
public:
    SqlRecorder();
    ~SqlRecorder();
    SqlRecorder(const SqlRecorder&) = delete;
    SqlRecorder& operator=(const SqlRecorder&) = delete;

    /// What was asked for since the last call, one a line: the texts of statements executed or
    /// prepared, "open NAME" and "close".
    QString take();

    /// What begins so fails, a statement with the text "refused".
    QStringList refused;

    /// For the drivers. False if refused.
    bool ask(const QString& request);

private:
    QStringList m_requests;
};
