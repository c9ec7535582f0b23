#include "data/ConfigDatabase.h"

#include "common/HostCalls.h"
#include "CVelmDatabase.h"
#include "data/Connection.h"
#include "data/SqlText.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace velm::detail {

namespace {

constexpr qint64 kGreatestFile = 1024 * 1024 * 1024;  // bytes; no value is larger than its file

/// Why the file is not to be opened; empty if it is.
QString refusalOf(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("no such file");
    if (!file.isFile())
        return QStringLiteral("it is no file");
    if (file.size() > kGreatestFile)
        return QStringLiteral("larger than 1 GiB");
    return QString();
}

void distrustSchema(const QSqlDatabase& database)
{
    execute(database, QStringLiteral("pragma trusted_schema=off"));
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
    const ReadOutcome outcome =
        readFirstValue(database,
                       QStringLiteral("select count(*) from pragma_table_xinfo(") + asLiteral(table)
                           + QStringLiteral(") where hidden > 1"),
                       count);
    computed = count.toInt() > 0;
    return outcome;
}

}  // namespace

Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path, QString& why)
{
    why = refusalOf(path);
    if (!why.isEmpty()) {
        VELM_WARN(cannotOpen(path, sqlFailure(why)));
        return Velm::VelmDatabaseOpenFailed;
    }
    const Velm::ErrorStatus status = database.initDatabase(path, QString());
    if (status == Velm::VelmOk)
        distrustSchema(database.getQSqlDatabase());
    else
        why = database.getQSqlDatabase().lastError().text();
    return status;
}

Velm::ErrorStatus openConfigDatabase(CVelmDatabase& database, const QString& path)
{
    QString why;
    return openConfigDatabase(database, path, why);
}

bool openConfigConnection(QSqlDatabase& connection)
{
    const QString path = connection.databaseName();
    const QString why = refusalOf(path);
    if (why.isEmpty() && (connection.isOpen() || connection.open())) {
        distrustSchema(connection);
        return true;
    }
    VELM_WARN(cannotOpen(path, why.isEmpty() ? connection.lastError() : sqlFailure(why)));
    return false;
}

ConfigTable findConfigTable(const QSqlDatabase& database, const QString& name)
{
    Record found;
    ReadOutcome outcome = readFirstRecord(
        database,
        QStringLiteral("select name, type, rootpage, sql from sqlite_master where name = ")
            + asLiteral(name) + QStringLiteral(" collate nocase and type in ('table', 'view')"),
        found);
    if (outcome.isComplete() && found.isEmpty())
        return {Velm::VelmTableNotExist, name, QStringLiteral("no such table")};
    const QString stored = found.value(QStringLiteral("NAME")).toString();
    // Views have no page of their own, nor have virtual tables.
    bool computed = false;
    const bool isStored = found.value(QStringLiteral("ROOTPAGE")).toLongLong() > 0;
    if (outcome.isComplete() && isStored)
        outcome =
            isComputed(database, stored, found.value(QStringLiteral("SQL")).toString(), computed);
    if (!outcome.isComplete())
        return {Velm::VelmSqlExecFailed, name, describe(outcome.error)};
    if (isStored && !computed)
        return {Velm::VelmOk, stored, QString()};
    return {Velm::VelmTableNotExist, stored,
            computed ? QStringLiteral("columns are computed")
                     : QStringLiteral("a view in its place")};
}

Velm::ErrorStatus readConfigRow(const CVelmDatabase& database, const QString& table,
                                const Record& where, Record& row)
{
    const QSqlDatabase connection = database.getQSqlDatabase();
    const ConfigTable found = findConfigTable(connection, table);
    if (found.status == Velm::VelmTableNotExist) {
        row.clear();
        return Velm::VelmOk;
    }
    if (found.status != Velm::VelmOk)
        return keepResult(sqlFailure(found.problem));
    const ReadOutcome outcome =
        readFirstRecord(connection,
                        selectAll(QLatin1Char('[') + found.name + QStringLiteral("] "))
                            + whereClause(withoutNullTexts(where)),
                        row);
    keep(outcome);
    return outcome.isComplete() ? Velm::VelmOk : Velm::VelmSqlExecFailed;
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
    return kind + error.text().trimmed();
}

}  // namespace velm::detail
