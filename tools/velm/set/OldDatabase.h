#pragma once

#include <QString>
#include <QStringList>

/// A SQLite database that is about to be replaced. A journal that a dead program left beside it
/// belongs to it, and would be played into the new database under the same name.
class OldDatabase
{
public:
    explicit OldDatabase(const QString& path);
    /// Lets other programs at the database again.
    ~OldDatabase();
    OldDatabase(const OldDatabase&) = delete;
    OldDatabase& operator=(const OldDatabase&) = delete;

    /// The files that SQLite may keep beside a database.
    static QStringList sideFiles(const QString& path);

    /// Lets SQLite bring the side files into the database, and keeps other programs out of it. What
    /// lies beside it then belongs to nothing. A file that is no database passes if nothing lies
    /// beside it. @return why the file must not be replaced; empty if it may
    QString settle();

private:
    QString execute(const QString& statement, bool& busy);

    QString m_path;
    QString m_connection;
};
