#pragma once

#include "VelmCommonGlobal.h"
#include "VelmFieldItem.h"
#include "VelmTypes.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <memory>

class CVelmDatabasePrivate;

namespace velm::detail {
struct DatabaseAccess;
}

/// One connection to a SQLite file or, for a file named "*.mdb", to Microsoft Access through ODBC.
///
/// A record is a map from column name to value, a table a vector of records, and a condition a
/// record whose pairs must all hold. What is read back has upper-case column names. SQL is
/// assembled as text: text values are not escaped, so a single quote in one breaks its statement
/// (VelmSqlExecFailed). Values go into a statement in one pass; a value that itself holds "%1"
/// stays as it is. A text with a NUL character is refused (VelmSqlExecFailed).
///
/// In a condition (and in the new values of an update) an invalid or null value is left out, except
/// a null text, which is the empty text. Values of types other than bool, int, unsigned int, 64-bit
/// signed integer, double, float, character and text have no text form there, so the statement
/// fails; use writeRecordBlob() to store them.
///
/// Copies share one connection, which closes when its last owner goes. Every opening registers a
/// connection of its own, so objects are independent of each other; one object belongs to one
/// thread.
class VELMCOMMON_EXPORT CVelmDatabase
{
public:
    CVelmDatabase();
    CVelmDatabase(const CVelmDatabase& other);             ///< shares the connection
    CVelmDatabase& operator=(const CVelmDatabase& other);  ///< likewise
    virtual ~CVelmDatabase();

    /// Opens @p fileName and closes what was open before. The ending ".mdb" (any case) selects
    /// Access, whose connection text gets @p connectOptions appended; every other name, ".accdb"
    /// too, is SQLite, which creates a missing file and ignores the options. A file that is no
    /// database is noticed by the first statement.
    /// @return VelmOk; VelmInvalidValue for an empty name; VelmDatabaseOpenFailed
    Velm::ErrorStatus initDatabase(const QString& fileName, const QString& connectOptions);

    /// Closes and deregisters the connection. With @p deferred an Access connection is closed only
    /// after @p delayMs milliseconds, by the event loop of this thread, if this object then still
    /// exists and holds the same connection; SQLite is always closed at once.
    /// @return VelmOk
    Velm::ErrorStatus closeDatabase(bool deferred, int delayMs);

    /// Whether a connection is open. A file that is no database can be open, too.
    bool isOpen() const;
    /// A copy of the connection handle; let go of it before closing.
    QSqlDatabase getQSqlDatabase() const;
    /// Forwarded to QSqlDatabase::setConnectOptions(); takes effect with the next opening of the
    /// handle.
    void setConnectOptions(const QString& options) const;

    /// The driver's text about the last statement of any object of the process: empty if it
    /// succeeded. Ask right after the call that failed.
    QString getLastErrorText() const;

    /// The user tables.
    QStringList tableName() const;
    /// Whether a table of exactly this name exists (SQLite: letter case counts; Access: whether it
    /// can be read).
    bool existTable(const QString& table) const;

    /// Begins a transaction. One that is open already goes on (there is no nesting) and VelmOk is
    /// the answer. With false an open transaction is ended and its failure, if any, not reported.
    /// @return VelmOk; VelmTransactionFailed, after which endTransaction() is still due
    Velm::ErrorStatus startTransaction(bool begin);
    /// Commits; without an open transaction does nothing.
    /// @return VelmOk; VelmCommitFailed if it was rolled back; VelmRollbackFailed if that failed
    /// too
    Velm::ErrorStatus endTransaction();

    /// Executes a statement and leaves its rows, if any, alone.
    /// @return VelmOk; VelmSqlExecFailed
    Velm::ErrorStatus executeSql(const QString& sql);
    /// Appends one record per row to @p rows. Rows that cannot be read for damage in the file end
    /// the reading: the answer is still VelmOk, and the last error text tells. If memory runs out,
    /// or the rows take more than 4 GiB of it, the statement fails and @p rows stays.
    Velm::ErrorStatus executeSql(const QString& sql, QVector<QMap<QString, QVariant>>& rows);

    /// Creates a table; one of that name is dropped first. Column types: TEXT, INT, LONG, REAL
    /// (Access: NUMERIC for reals). Lengths are not written.
    Velm::ErrorStatus createTable(const QString& table, const QList<VelmFieldItem>& fields);
    /// Drops a table with all of its rows.
    /// @return VelmOk; VelmSqlExecFailed, also for a missing table
    Velm::ErrorStatus deleteTable(const QString& table);
    /// Removes all rows of the tables named in @p table, separated by ";". The last error text
    /// tells about the last one.
    void clearTable(const QString& table);

    /// Replaces all rows in one transaction, or as a part of the one that is open. Rows that the
    /// table refuses are left out.
    /// @return VelmOk; VelmWriteTableFailed if the table then holds another number of rows;
    ///         VelmSqlExecFailed if the old rows cannot be cleared or the change cannot be kept:
    ///         they are there still
    Velm::ErrorStatus writeTable(const QString& table,
                                 const QVector<QMap<QString, QVariant>>& rows);
    /// All rows; those before the damage if the file is damaged. Empty for a missing table.
    QVector<QMap<QString, QVariant>> readTable(const QString& table) const;

    /// Builds an insert statement. Dates and times are ISO 8601 text in SQLite, #...# literals in
    /// Access.
    /// @return VelmOk; VelmTableNotExist
    Velm::ErrorStatus getInsertSql(QString& sql, const QString& table,
                                   const QMap<QString, QVariant>& record) const;
    /// Inserts by the statement of getInsertSql().
    /// @return VelmOk; VelmTableNotExist; VelmSqlExecFailed
    Velm::ErrorStatus writeRecord(const QString& table, const QMap<QString, QVariant>& record);
    /// Inserts with bound values, which may be of any type and hold anything. Column names are
    /// letters (of any script), digits and "_": each is a placeholder's name too.
    Velm::ErrorStatus writeRecordBlob(const QString& table, const QMap<QString, QVariant>& record);

    /// Builds an update statement if a row matches @p where. If none does, inserts a record of @p
    /// where and @p values instead, leaves @p sql alone and answers with that insert's status.
    /// @return VelmOk; VelmTableNotExist; VelmSqlExecFailed, also if the rows cannot be counted:
    ///         then nothing is inserted
    Velm::ErrorStatus getUpdataSql(QString& sql, const QString& table,
                                   const QMap<QString, QVariant>& values,
                                   const QMap<QString, QVariant>& where);
    /// Updates the rows that match, or inserts one record of @p where and @p values if none does.
    /// On SQLite no other program can come between: it is one transaction, or a part of the one
    /// that is open.
    /// @return as above
    Velm::ErrorStatus updataRecord(const QString& table, const QMap<QString, QVariant>& values,
                                   const QMap<QString, QVariant>& where);
    /// Deletes the rows that match; all rows for an empty condition. A missing table is nothing to
    /// delete: VelmOk.
    Velm::ErrorStatus deleteRecord(const QString& table, const QMap<QString, QVariant>& where);

    /// @name Reads
    /// Empty results when nothing matches or the statement fails. With caseSensitive false the last
    /// term of the condition ignores the case of ASCII letters (SQLite); pass true together with an
    /// empty condition.
    /// @{

    /// The first row that matches.
    QMap<QString, QVariant> readRecord(const QString& table, const QMap<QString, QVariant>& where,
                                       bool caseSensitive) const;
    /// One column of the first row that matches; invalid if there is none.
    QVariant readRecord(const QString& table, const QString& field,
                        const QMap<QString, QVariant>& where, bool caseSensitive) const;
    /// One column of all rows that match.
    QList<QVariant> readRecords(const QString& table, const QString& field,
                                const QMap<QString, QVariant>& where, bool distinct,
                                bool caseSensitive) const;
    /// All rows that match, sorted by the columns of @p orderBy, the first one leading.
    QVector<QMap<QString, QVariant>>
    readRecords(const QString& table, const QMap<QString, QVariant>& where,
                const QList<QPair<QString, Velm::DataBaseOrderByType>>& orderBy,
                bool caseSensitive) const;
    /// One column of all rows that match exactly; equal values stay.
    QList<QVariant> readFields(const QString& table, const QString& field,
                               const QMap<QString, QVariant>& where) const;
    /// The number of rows that match, all of them for an empty condition.
    unsigned int recordCount(const QString& table, const QMap<QString, QVariant>& where) const;

    /// @}

    /// @name Schema
    /// A missing table or column gives 0, an empty text or QVariant::Invalid. Letter case does not
    /// count in column names. What the driver does not know about a length or precision is -1
    /// (4294967295 where unsigned).
    /// @{

    /// The number of columns.
    int columnCount(const QString& table) const;
    /// The columns in their order, spelt as they are stored.
    QStringList allFieldName(const QString& table) const;
    /// Whether there is such a column.
    bool hasFieldName(const QString& table, const QString& field) const;
    /// The name of the column at @p index, from 0.
    QString columnName(const QString& table, int index) const;
    /// @{
    /// The type as which the driver reads the column; indexes begin at 0.
    QVariant::Type columnType(const QString& table, int index) const;
    QVariant::Type columnType(const QString& table, const QString& field) const;
    /// @}
    /// @{
    /// Greatest number of characters or digits, and digits behind the point, as the driver tells
    /// them; indexes begin at 0.
    int columnLength(const QString& table, int index) const;
    int columnPrecision(const QString& table, int index) const;
    unsigned int columnPrecision(const QString& table, const QString& field) const;
    /// @}

    /// Adds a column; @p length is not written.
    Velm::ErrorStatus addColumnField(const QString& table, const QString& field,
                                     QVariant::Type type, int length);
    /// Drops a column.
    /// @return VelmOk; VelmSqlExecFailed
    Velm::ErrorStatus delColumnField(const QString& table, const QString& field);
    /// The statement names the table in the column's place too: nothing but a column that bears its
    /// table's name can be changed. It stays so for hosts that call it in vain and go on with the
    /// column as it is. SQLite refuses it altogether.
    Velm::ErrorStatus changeColumnType(const QString& table, const QString& field,
                                       QVariant::Type type);
    /// Sets @p toField of every row to its @p fromField.
    /// @return VelmOk; VelmSqlExecFailed
    Velm::ErrorStatus copyColumnValue(const QString& table, const QString& fromField,
                                      const QString& toField);
    /// Adds the new column, copies the values, drops the old one. The first failure is the answer
    /// and ends it; a failed copy leaves the new, empty column behind. The new column has the type
    /// that the driver reports, which for a LONG of SQLite is text.
    Velm::ErrorStatus renameColumnName(const QString& table, const QString& oldName,
                                       const QString& newName);
    /// @}

private:
    friend struct velm::detail::DatabaseAccess;

    std::shared_ptr<CVelmDatabasePrivate> d;
};
