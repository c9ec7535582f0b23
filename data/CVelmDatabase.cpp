#include "CVelmDatabase.h"

#include "data/Connection.h"
#include "data/SqlText.h"
#include "data/Statement.h"

#include <QSqlError>
#include <QSqlQuery>

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

/// The first column of every row of a query.
QList<QVariant> firstColumn(const QSqlDatabase& database, const QString& sql)
{
    QList<QVariant> values;
    QSqlQuery query = forwardQuery(database);
    if (runStatement(query, sql) != Velm::VelmOk)
        return values;
    while (query.next())
        values.append(query.value(0));
    keepReadError(query);
    return values;
}

/// The first column of the first row; invalid if there is none.
QVariant firstValue(const QSqlDatabase& database, const QString& sql)
{
    QSqlQuery query = forwardQuery(database);
    const bool found = runStatement(query, sql) == Velm::VelmOk && query.next();
    return found ? query.value(0) : QVariant();
}

Velm::ErrorStatus appendRecords(const QSqlDatabase& database, const QString& sql,
                                QVector<Record>& rows)
{
    QSqlQuery query = forwardQuery(database);
    const Velm::ErrorStatus status = runStatement(query, sql);
    if (status != Velm::VelmOk)
        return status;
    const RecordReader reader(query);
    while (query.next())
        rows.append(reader.record(query));
    keepReadError(query);
    return Velm::VelmOk;
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
    const bool opened =
        access ? d->open(QStringLiteral("QODBC"), accessDatabaseName(fileName, connectOptions))
               : d->open(QStringLiteral("QSQLITE"), fileName);
    return opened ? Velm::VelmOk : Velm::VelmDatabaseOpenFailed;
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
    if (d->isOdbc()) {
        QSqlQuery query = forwardQuery(d->database);
        return runStatement(query, selectAll(table)) == Velm::VelmOk;
    }
    return firstValue(d->database,
                      QStringLiteral(
                          "select count(*) from sqlite_master where type = 'table' and name = '")
                          + table + QLatin1Char('\''))
               .toInt()
           > 0;
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
    return appendRecords(d->database, sql, rows);
}

void CVelmDatabase::clearTable(const QString& table)
{
    QSqlQuery query = forwardQuery(d->database);
    const QStringList names = table.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (const QString& name : names)
        runStatement(query, QStringLiteral("DELETE FROM ") + name);
}

Velm::ErrorStatus CVelmDatabase::writeTable(const QString& table, const QVector<Record>& rows)
{
    // One transaction unless there is one: it costs one flush to disk instead of one a row, and an
    // interrupted process leaves the old rows.
    const bool ownTransaction = !d->inTransaction && d->database.transaction();
    clearTable(table);
    // A locked database takes seconds to refuse a statement: one refusal is enough.
    for (auto row = rows.cbegin(); row != rows.cend() && !lastErrorIsLock(); ++row)
        writeRecord(table, *row);
    if (ownTransaction && !d->database.commit()) {
        d->database.rollback();
        return Velm::VelmWriteTableFailed;
    }
    const bool complete = recordCount(table, {}) == static_cast<unsigned int>(rows.size());
    return complete ? Velm::VelmOk : Velm::VelmWriteTableFailed;
}

QVector<Record> CVelmDatabase::readTable(const QString& table) const
{
    QVector<Record> rows;
    appendRecords(d->database, selectAll(table), rows);
    return rows;
}

Velm::ErrorStatus CVelmDatabase::getInsertSql(QString& sql, const QString& table,
                                              const Record& record) const
{
    if (!existTable(table))
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
    if (recordCount(table, where) == 0) {
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
    QString sql;
    const Velm::ErrorStatus status = getUpdataSql(sql, table, values, where);
    return sql.isEmpty() ? status : executeSql(sql);
}

Velm::ErrorStatus CVelmDatabase::deleteRecord(const QString& table, const Record& where)
{
    if (!existTable(table))
        return Velm::VelmOk;
    return executeSql(QStringLiteral("delete from [") + table + QStringLiteral("] ")
                      + whereClause(where));
}

Record CVelmDatabase::readRecord(const QString& table, const Record& where,
                                 bool caseSensitive) const
{
    QSqlQuery query = forwardQuery(d->database);
    const QString sql = selectAllBracketed(table) + whereClause(where) + collation(caseSensitive);
    if (runStatement(query, sql) != Velm::VelmOk || !query.next())
        return Record();
    return RecordReader(query).record(query);
}

QVariant CVelmDatabase::readRecord(const QString& table, const QString& field, const Record& where,
                                   bool caseSensitive) const
{
    const QString bracketedTable = QLatin1Char('[') + table + QStringLiteral("] ");
    return firstValue(d->database, selectField(bracketedTable, field, false) + whereClause(where)
                                       + collation(caseSensitive));
}

QList<QVariant> CVelmDatabase::readRecords(const QString& table, const QString& field,
                                           const Record& where, bool distinct,
                                           bool caseSensitive) const
{
    return firstColumn(d->database, selectField(table, field, distinct) + spacedWhereClause(where)
                                        + collation(caseSensitive));
}

QVector<Record>
CVelmDatabase::readRecords(const QString& table, const Record& where,
                           const QList<QPair<QString, Velm::DataBaseOrderByType>>& orderBy,
                           bool caseSensitive) const
{
    QVector<Record> rows;
    appendRecords(d->database,
                  selectAllBracketed(table) + whereClause(where) + collation(caseSensitive)
                      + orderByClause(orderBy),
                  rows);
    return rows;
}

QList<QVariant> CVelmDatabase::readFields(const QString& table, const QString& field,
                                          const Record& where) const
{
    return firstColumn(d->database, selectField(table, field, false) + spacedWhereClause(where));
}

unsigned int CVelmDatabase::recordCount(const QString& table, const Record& where) const
{
    return firstValue(d->database, QStringLiteral("select count(*) from ") + table
                                       + QLatin1Char(' ') + whereClause(where))
        .toUInt();
}
