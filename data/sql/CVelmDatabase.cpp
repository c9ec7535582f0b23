#include "CVelmDatabase.h"

#include "common/host/HostCalls.h"
#include "data/sql/Connection.h"
#include "data/sql/CVelmDatabasePrivate.h"
#include "data/sql/RowReading.h"
#include "data/sql/SqlText.h"
#include "data/sql/WriteTransaction.h"

#include <QSqlQuery>

#include <new>

using namespace velm::detail;

namespace {

SqlDialect dialectOf(const CVelmDatabasePrivate& connection)
{
    return connection.isOdbc() ? SqlDialect::Access : SqlDialect::Sqlite;
}

QString accessDatabaseName(const QString& fileName, const QString& connectOptions)
{
    QString name =
        QStringLiteral("DRIVER={Microsoft Access Driver (*.mdb, *.accdb)};FIL={MS Access};DBQ=")
        + fileName;
    if (!connectOptions.isEmpty())
        name += QLatin1Char(';') + connectOptions;
    return name;
}

/// Whether there is a table. A failed statement is the answer "no" of Access; SQLite is asked.
Velm::ErrorStatus findTable(const CVelmDatabasePrivate& connection, const QString& table,
                            bool& exists)
{
    if (connection.isOdbc()) {
        QSqlQuery query = forwardQuery(connection.database);
        exists = runStatement(query, selectAll(table)) == Velm::VelmOk;
        return Velm::VelmOk;
    }
    QVariant count;
    const QString sql =
        QStringLiteral("select count(*) from sqlite_master where type = 'table' and name = '")
        + table + QLatin1Char('\'');
    const Velm::ErrorStatus status = keep(readFirstValue(connection.database, sql, count));
    exists = count.toInt() > 0;
    return status;
}

/// Answers a statement that failed: whether because there is no such table.
Velm::ErrorStatus tableFailure(const CVelmDatabasePrivate& connection, const QString& table,
                               const QSqlError& error)
{
    bool exists = true;
    const bool isMissing = findTable(connection, table, exists) == Velm::VelmOk && !exists;
    const Velm::ErrorStatus status = keepResult(error);
    return isMissing ? Velm::VelmTableNotExist : status;
}

ReadOutcome countRows(const QSqlDatabase& database, const QString& table, const Record& where,
                      unsigned int& count)
{
    QVariant value;
    ReadOutcome outcome = readFirstValue(database,
                                         QStringLiteral("select count(*) from ") + table
                                             + QLatin1Char(' ') + whereClause(where),
                                         value);
    count = value.toUInt();
    return outcome;
}

QStringList tablesIn(const QString& list)
{
    return list.split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

QString deleteFrom(const QString& table)
{
    return QStringLiteral("DELETE FROM ") + table;
}

/// Replaces all rows within @p transaction. What breaks it off is @p error; rows that are refused
/// are left out.
/// @return VelmOk; VelmWriteTableFailed if the table then holds another number of rows
Velm::ErrorStatus replaceRows(const CVelmDatabasePrivate& connection, const QString& table,
                              const QVector<Record>& rows, WriteTransaction& transaction,
                              QSqlError& error)
{
    const QStringList names = tablesIn(table);
    for (const QString& name : names) {
        error = execute(connection.database, deleteFrom(name));
        if (error.isValid())
            return Velm::VelmSqlExecFailed;
    }
    QSqlError refusal;
    for (const Record& row : rows) {
        const QSqlError refused =
            execute(connection.database, insertStatement(table, row, dialectOf(connection)));
        if (refused.isValid() && (!isRefusal(refused) || transaction.isLost())) {
            error = refused;
            return Velm::VelmSqlExecFailed;
        }
        if (!refusal.isValid())
            refusal = refused;
    }
    unsigned int count = 0;
    error = countRows(connection.database, table, {}, count).error;
    keepResult(refusal);
    return count == static_cast<unsigned int>(rows.size()) ? Velm::VelmOk
                                                           : Velm::VelmWriteTableFailed;
}

QString selectField(const QString& table, const QString& field, bool distinct)
{
    return (distinct ? QStringLiteral("select distinct [") : QStringLiteral("select [")) + field
           + QStringLiteral("] from ") + table;
}

QString selectAllBracketed(const QString& table)
{
    return selectAll(QLatin1Char('[') + table + QStringLiteral("] "));
}

/// A blank and the condition, behind a text that ends without one.
QString spacedWhereClause(const QMap<QString, QVariant>& where)
{
    return where.isEmpty() ? QString() : QLatin1Char(' ') + whereClause(where);
}

}  // namespace

CVelmDatabase::CVelmDatabase() : d(std::make_shared<CVelmDatabasePrivate>()) {}

CVelmDatabase::CVelmDatabase(const CVelmDatabase& other) = default;

CVelmDatabase& CVelmDatabase::operator=(const CVelmDatabase& other) = default;

CVelmDatabase::~CVelmDatabase() = default;

Velm::ErrorStatus CVelmDatabase::initDatabase(const QString& fileName,
                                              const QString& connectOptions)
{
    closeDatabase(false, 1000);
    if (fileName.isEmpty())
        return Velm::VelmInvalidValue;
    const bool access = fileName.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive);
    const bool opened = access ? d->openAccess(accessDatabaseName(fileName, connectOptions))
                               : d->openSqlite(fileName);
    if (opened)
        return Velm::VelmOk;
    VELM_WARN(cannotOpen(fileName, d->openProblem));
    return Velm::VelmDatabaseOpenFailed;
}

Velm::ErrorStatus CVelmDatabase::closeDatabase(bool deferred, int delayMs)
{
    if (d->connectionName.isEmpty())
        return Velm::VelmOk;
    if (deferred && d->isOdbc())
        CVelmDatabasePrivate::closeLater(d, delayMs);
    else
        d->close();
    return Velm::VelmOk;
}

bool CVelmDatabase::isOpen() const
{
    return d->database.isOpen();
}

QSqlDatabase CVelmDatabase::getQSqlDatabase() const
{
    return d->database;
}

void CVelmDatabase::setConnectOptions(const QString& options) const
{
    d->database.setConnectOptions(options);
}

QString CVelmDatabase::getLastErrorText() const
{
    return lastErrorText();
}

QStringList CVelmDatabase::tableName() const
{
    return d->database.tables(QSql::Tables);
}

bool CVelmDatabase::existTable(const QString& table) const
{
    bool exists = false;
    return findTable(*d, table, exists) == Velm::VelmOk && exists;
}

Velm::ErrorStatus CVelmDatabase::startTransaction(bool begin)
{
    if (d->inTransaction) {
        if (begin)
            return Velm::VelmOk;
        endTransaction();
    }
    d->inTransaction = begin;
    if (!begin || d->database.transaction())
        return Velm::VelmOk;
    return Velm::VelmTransactionFailed;
}

Velm::ErrorStatus CVelmDatabase::endTransaction()
{
    if (!d->inTransaction)
        return Velm::VelmOk;
    d->inTransaction = false;
    if (d->database.commit())
        return Velm::VelmOk;
    return d->database.rollback() ? Velm::VelmCommitFailed : Velm::VelmRollbackFailed;
}

Velm::ErrorStatus CVelmDatabase::executeSql(const QString& sql)
{
    QSqlQuery query = forwardQuery(d->database);
    return runStatement(query, sql);
}

Velm::ErrorStatus CVelmDatabase::executeSql(const QString& sql, QVector<Record>& rows)
{
    return keep(velm::detail::readRecords(d->database, sql, rows));
}

void CVelmDatabase::clearTable(const QString& table)
{
    const QStringList names = tablesIn(table);
    for (const QString& name : names)
        executeSql(deleteFrom(name));
}

Velm::ErrorStatus CVelmDatabase::writeTable(const QString& table, const QVector<Record>& rows)
{
    // Access has a transaction of its own kind, unless the caller began one.
    const bool inAccess = d->isOdbc() && !d->inTransaction && d->database.transaction();
    WriteTransaction transaction(d->database, d->inTransaction);
    QSqlError error = transaction.error();
    Velm::ErrorStatus status = Velm::VelmSqlExecFailed;
    try {
        if (!error.isValid())
            status = replaceRows(*d, table, rows, transaction, error);
    } catch (const std::bad_alloc&) {
        error = outOfMemory();
    }
    if (!error.isValid())
        error = transaction.commit();
    if (inAccess && !error.isValid() && !d->database.commit())
        error = d->database.lastError();
    if (!error.isValid())
        return status;
    if (inAccess)
        d->database.rollback();
    return tableFailure(*d, table, error) == Velm::VelmTableNotExist && !rows.isEmpty()
               ? Velm::VelmWriteTableFailed
               : keepResult(error);
}

QVector<Record> CVelmDatabase::readTable(const QString& table) const
{
    QVector<Record> rows;
    keep(velm::detail::readRecords(d->database, selectAll(table), rows));
    return rows;
}

Velm::ErrorStatus CVelmDatabase::getInsertSql(QString& sql, const QString& table,
                                              const Record& record) const
{
    bool exists = false;
    const Velm::ErrorStatus status = findTable(*d, table, exists);
    if (status != Velm::VelmOk)
        return status;
    if (!exists)
        return Velm::VelmTableNotExist;
    sql = insertStatement(table, record, dialectOf(*d));
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmDatabase::writeRecord(const QString& table, const Record& record)
{
    QString sql;
    const Velm::ErrorStatus status = getInsertSql(sql, table, record);
    return status == Velm::VelmOk ? executeSql(sql) : status;
}

Velm::ErrorStatus CVelmDatabase::writeRecordBlob(const QString& table, const Record& record)
{
    QSqlQuery query = forwardQuery(d->database);
    return runBound(query, boundInsertStatement(table, record, dialectOf(*d)), record.values());
}

Velm::ErrorStatus CVelmDatabase::getUpdataSql(QString& sql, const QString& table,
                                              const Record& values, const Record& where)
{
    unsigned int count = 0;
    const ReadOutcome counted = countRows(d->database, table, where, count);
    if (!counted.isComplete())
        return tableFailure(*d, table, counted.error);
    if (count == 0) {
        Record record = where;
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            record.insert(it.key(), it.value());
        return writeRecord(table, record);
    }
    sql = QStringLiteral("update ") + table + QStringLiteral(" set ")
          + terms(values, QStringLiteral(", ")) + QStringLiteral(" where ")
          + terms(where, QStringLiteral(" and "));
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmDatabase::updataRecord(const QString& table, const Record& values,
                                              const Record& where)
{
    WriteTransaction transaction(d->database, d->inTransaction);
    if (transaction.error().isValid())
        return keepResult(transaction.error());
    QString sql;
    Velm::ErrorStatus status = getUpdataSql(sql, table, values, where);
    if (!sql.isEmpty())
        status = executeSql(sql);
    if (status != Velm::VelmOk)
        return status;
    const QSqlError error = transaction.commit();
    return error.isValid() ? keepResult(error) : Velm::VelmOk;
}

Velm::ErrorStatus CVelmDatabase::deleteRecord(const QString& table, const Record& where)
{
    bool exists = false;
    const Velm::ErrorStatus status = findTable(*d, table, exists);
    if (status != Velm::VelmOk || !exists)
        return status;
    return executeSql(QStringLiteral("delete from [") + table + QStringLiteral("] ")
                      + whereClause(where));
}

Record CVelmDatabase::readRecord(const QString& table, const Record& where,
                                 bool caseSensitive) const
{
    Record record;
    keep(readFirstRecord(d->database,
                         selectAllBracketed(table) + whereClause(where) + collation(caseSensitive),
                         record));
    return record;
}

QVariant CVelmDatabase::readRecord(const QString& table, const QString& field, const Record& where,
                                   bool caseSensitive) const
{
    QVariant value;
    const QString bracketedTable = QLatin1Char('[') + table + QStringLiteral("] ");
    keep(readFirstValue(d->database,
                        selectField(bracketedTable, field, false) + whereClause(where)
                            + collation(caseSensitive),
                        value));
    return value;
}

QList<QVariant> CVelmDatabase::readRecords(const QString& table, const QString& field,
                                           const Record& where, bool distinct,
                                           bool caseSensitive) const
{
    QList<QVariant> values;
    keep(readColumn(d->database,
                    selectField(table, field, distinct) + spacedWhereClause(where)
                        + collation(caseSensitive),
                    values));
    return values;
}

QVector<Record>
CVelmDatabase::readRecords(const QString& table, const Record& where,
                           const QList<QPair<QString, Velm::DataBaseOrderByType>>& orderBy,
                           bool caseSensitive) const
{
    QVector<Record> rows;
    keep(velm::detail::readRecords(d->database,
                                   selectAllBracketed(table) + whereClause(where)
                                       + collation(caseSensitive) + orderByClause(orderBy),
                                   rows));
    return rows;
}

QList<QVariant> CVelmDatabase::readFields(const QString& table, const QString& field,
                                          const Record& where) const
{
    QList<QVariant> values;
    keep(readColumn(d->database, selectField(table, field, false) + spacedWhereClause(where),
                    values));
    return values;
}

unsigned int CVelmDatabase::recordCount(const QString& table, const Record& where) const
{
    unsigned int count = 0;
    keep(countRows(d->database, table, where, count));
    return count;
}
