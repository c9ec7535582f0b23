#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace velm::detail {

/// Small values of the user in a SQLite file, each under two keys, a type and a name. Keys and
/// values go into statements as they are. A file that could not be opened is tried again at the
/// next call. One thread at a time.
class UserStore
{
public:
    /// Does not open the file yet.
    explicit UserStore(const QString& file);
    ~UserStore();
    Q_DISABLE_COPY(UserStore)

    /// @{
    /// The two tables of values.
    static QString inputs();
    static QString paths();
    /// @}

    const QString& file() const { return m_file; }
    /// The connection; not valid while the file is not open.
    const QSqlDatabase& database() const { return m_database; }

    /// Opens the file, which is made if it is missing, unless it is open. The first failure is
    /// shown.
    bool isReady();

    /// False if the value cannot be read; @p value stays if there is none. Shows nothing.
    bool read(const QString& table, const QString& type, const QString& name, QString& value);
    /// Stores a value within a transaction of the caller. Shows nothing.
    bool put(const QString& table, const QString& type, const QString& name, const QString& value);

    /// The value; empty if there is none. A failure is shown.
    QString value(const QString& table, const QString& type, const QString& name);
    /// Stores a value in place of an older one. False if that fails; that there is no file is
    /// shown.
    bool setValue(const QString& table, const QString& type, const QString& name,
                  const QString& value);

private:
    QSqlError open();
    QSqlError makeTables();
    void forget();

    const QString m_file;
    QSqlDatabase m_database;  // not valid while the file is not open
    bool m_isFailureShown = false;
};

}  // namespace velm::detail
