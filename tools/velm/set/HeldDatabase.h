#pragma once

#include "set/Schema.h"

#include <QHash>
#include <QSet>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

/// A configuration database in one state: from hold() to release() a read transaction keeps other
/// programs from changing it. In WAL mode they can, and they can put another file in its place;
/// release() tells.
/// Nothing that stands in the file's schema is run.
class HeldDatabase
{
public:
    /// Of @p path, nothing is opened yet.
    explicit HeldDatabase(const QString& path);
    ~HeldDatabase();
    Q_DISABLE_COPY(HeldDatabase)

    /// Opens the file, for reading only, and begins the transaction; waits 5 s for the locks of
    /// others. Before, a change that a killed program has left half done is undone. @return why it
    /// cannot be read; empty if it can
    QString hold();

    /// What is stored under the name of a table.
    struct Entry
    {
        QString name;         ///< as it is stored; empty if there is none
        QString kind;         ///< "a view", say, if it stores no rows of its own; else empty
        QStringList columns;  ///< of a table
    };

    /// Looks for a table, letter case as SQLite takes it. @return what went wrong; empty if nothing
    /// did
    QString find(const QString& table, Entry& found) const;

    /// Why a table, with every column that is needed and the indexes in which single rows are
    /// looked up, cannot be read; empty if it can. A view in its place, a virtual table or one with
    /// computed columns cannot, as for the library.
    QString problemOf(const TableSchema& table) const;

    /// A query of this connection, for going forward only.
    QSqlQuery query() const;
    /// Leaves a query on its first row. @return what went wrong; empty if nothing did
    static QString run(QSqlQuery& query, const QString& sql, const QVariantList& values = {});

    /// What went wrong with a statement, as SQLite says it; empty if nothing did.
    static QString textOf(const QSqlError& error);

    /// The names of all tables and views. @return what went wrong; empty if nothing did
    QString findNames(QStringList& names) const;

    /// Which of @p codes a table has in its column "CODE". @return what went wrong; empty if
    /// nothing did
    QString findCodes(const QString& table, const QSet<QString>& codes, QSet<QString>& found) const;

    /// Ends the transaction, if there is one. @return whether others have changed the database
    /// since hold(), or it cannot be known
    bool release();

private:
    QString open(bool readOnly);
    QString whyTruncated() const;
    bool isWal() const;
    int version() const;
    QString readEntries() const;
    QString readColumns(Entry& table) const;
    QString indexProblem(const TableSchema& table) const;

    QString m_path;
    QString m_connection;   // its name
    QByteArray m_identity;  // of the file that was opened
    int m_version = 0;      // in WAL mode: of the content, as SQLite counts for this connection
    bool m_isWal = false;
    bool m_holds = false;
    bool m_isUnfinished = false;              // a change must be undone first
    mutable QHash<QString, Entry> m_entries;  // by lower-case name; none before the first question
};
