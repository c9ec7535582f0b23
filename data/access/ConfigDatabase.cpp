#include "data/access/ConfigDatabase.h"

#include "common/files/DatabasePath.h"
#include "common/host/HostCalls.h"
#include "CVelmDatabase.h"
#include "data/sql/Connection.h"
#include "data/sql/CVelmDatabasePrivate.h"
#include "data/sql/SqlText.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace velm::detail {

namespace {

/// Why the file is not to be opened; empty if it is.
QString refusalOf(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        return file.exists() ? QStringLiteral("it is no file") : QStringLiteral("no such file");
    if (file.size() > kGreatestDatabase)
        return QStringLiteral("larger than 1 GiB");
    return QString();
}

QString asLiteral(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("''"))
           + QLatin1Char('\'');
}

/// Whether columns of a table are computed, of which @p sql is the definition.
ReadOutcome isComputed(const QSqlDatabase& database, const QString& table, const QString& sql,
                       bool& computed)
{
    static const QRegularExpression as(QStringLiteral("\\bas\\b"),
                                       QRegularExpression::CaseInsensitiveOption);
    computed = false;
    if (!sql.contains(as))
        return {};
    QVariant count;
    ReadOutcome outcome =
        readFirstValue(database,
                       QStringLiteral("select count(*) from pragma_table_xinfo(") + asLiteral(table)
                           + QStringLiteral(") where hidden > 1"),
                       count);
    computed = count.toInt() > 0;
    return outcome;
}

// A virtual table is a table too, even with a page that its author has given it.
const QString kSelectEntries = QStringLiteral("select name, type = 'table', rootpage > 0 and sql "
                                              "like 'create table%', sql from sqlite_master "
                                              "where ");

/// Whether the entry of the schema is to be read, on which the query stands.
ConfigTable judge(const QSqlDatabase& database, const QSqlQuery& entry)
{
    ConfigTable table;
    table.name = entry.value(0).toString();
    table.sql = entry.value(3).toString();
    table.status = Velm::VelmTableNotExist;
    if (!entry.value(1).toBool()) {
        table.problem = QStringLiteral("a view in its place");
        return table;
    }
    if (!entry.value(2).toBool()) {
        table.problem = QStringLiteral("a virtual table in its place");
        return table;
    }
    bool computed = false;
    const QSqlError error = isComputed(database, table.name, table.sql, computed).error;
    if (error.isValid()) {
        table.status = Velm::VelmSqlExecFailed;
        table.problem = describe(error);
    } else if (computed) {
        table.problem = QStringLiteral("columns are computed");
    } else {
        table.status = Velm::VelmOk;
    }
    return table;
}

}  // namespace

Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path, QString& why)
{
    why = refusalOf(path);
    if (!why.isEmpty()) {
        VELM_WARN(cannotOpen(path, why));
        return Velm::VelmDatabaseOpenFailed;
    }
    const Velm::ErrorStatus status = database.initDatabase(path, QString());
    if (status != Velm::VelmOk)
        why = DatabaseAccess::connection(database).openProblem;
    return status;
}

Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path)
{
    QString why;
    return openConfigDatabase(database, path, why);
}

ConfigTable findConfigTable(const QSqlDatabase& database, const QString& name)
{
    QSqlQuery found = forwardQuery(database);
    QSqlError error =
        execute(found, kSelectEntries + QStringLiteral("name = ") + asLiteral(name)
                           + QStringLiteral(" collate nocase and type in ('table', 'view')"));
    if (!error.isValid() && !found.next()) {
        error = found.lastError();
        if (!error.isValid())
            return {Velm::VelmTableNotExist, name, QStringLiteral("no such table"), QString(),
                    found};
    }
    if (error.isValid())
        return {Velm::VelmSqlExecFailed, name, describe(error), QString(), found};
    ConfigTable table = judge(database, found);
    table.found = found;
    return table;
}

ReadOutcome findConfigTables(const QSqlDatabase& database, QVector<ConfigTable>& tables)
{
    QSqlQuery entry = forwardQuery(database);
    ReadOutcome outcome;
    outcome.error = execute(entry, kSelectEntries + QStringLiteral("type = 'table' order by name"));
    while (outcome.isComplete() && entry.next())
        tables.append(judge(database, entry));
    if (outcome.isComplete())
        outcome.error = entry.lastError();
    if (!outcome.isComplete())
        outcome.status = Velm::VelmSqlExecFailed;
    return outcome;
}

ReadOutcome readConfigRow(const CVelmDatabase& database, const QString& table, const Record& where,
                          Record& row)
{
    const QSqlDatabase connection = database.getQSqlDatabase();
    const ConfigTable found = findConfigTable(connection, table);
    ReadOutcome outcome{found.status, QSqlError()};
    if (found.status == Velm::VelmTableNotExist) {
        outcome.status = Velm::VelmOk;
        row.clear();
    } else if (found.status != Velm::VelmOk) {
        outcome.error = sqlFailure(found.problem);
    } else {
        outcome = readFirstRecord(connection,
                                  selectAll(QLatin1Char('[') + found.name + QStringLiteral("] "))
                                      + whereClause(withoutNullTexts(where)),
                                  row);
    }
    if (!outcome.isComplete())
        outcome.status = Velm::VelmSqlExecFailed;
    keep(outcome);
    return outcome;
}

void distrustSchema(const CVelmDatabase& database)
{
    execute(database.getQSqlDatabase(), QStringLiteral("pragma trusted_schema=off"));
}

Record withoutNullTexts(Record values)
{
    for (QVariant& value : values) {
        if (value.isNull() && value.userType() == QMetaType::QString)
            value = QStringLiteral("");
    }
    return values;
}

QString describe(const QSqlError& error)
{
    constexpr int kDamaged = 11;
    constexpr int kNotADatabase = 26;
    const int code = error.nativeErrorCode().toInt() & 0xFF;
    QString kind;
    if (isLock(error))
        kind = QStringLiteral("locked: ");
    else if (code == kDamaged)
        kind = QStringLiteral("damaged: ");
    else if (code == kNotADatabase)
        kind = QStringLiteral("not a database: ");
    // The driver's own words behind SQLite's are in the language of the program.
    return kind + (error.databaseText().isEmpty() ? error.text() : error.databaseText()).trimmed();
}

}  // namespace velm::detail
