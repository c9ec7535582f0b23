#include "set/Readable.h"

#include "set/Schema.h"

#include "common/files/DatabasePath.h"
#include "CVelmDatabase.h"
#include "CVelmSystemGlobal.h"

#include <QFileInfo>

namespace {

/// Why the columns that a table needs cannot be read to their end; empty if they can.
QString whyFails(CVelmDatabase& database, const TableSchema& table)
{
    QStringList columns;
    for (const ColumnSchema& column : table.columns) {
        if (!column.optional)
            columns.append(QLatin1Char('[') + column.name + QLatin1Char(']'));
    }
    QVector<QMap<QString, QVariant>> rows;
    database.executeSql(
        QStringLiteral("select %1 from [%2]").arg(columns.join(QStringLiteral(", ")), table.name),
        rows);
    return database.getLastErrorText();
}

}  // namespace

QString whyUnreadable(const QString& path, const QStringList& tables)
{
    const QFileInfo file(path);
    if (!file.exists())
        return QStringLiteral("there is no such file (\"velm init DIR\" makes a sample set)");
    if (!file.isFile())
        return QStringLiteral("it is no file");
    if (!file.isReadable())
        return QStringLiteral("permission denied");
    QString pathProblem = velm::detail::databasePathProblem(path);
    if (!pathProblem.isEmpty())
        return pathProblem;
    CVelmDatabase database;
    if (database.initDatabase(path, QString()) != Velm::VelmOk)
        return QStringLiteral("it cannot be opened as a database");
    for (const QString& table : tables) {
        QString problem = whyFails(database, schema::table(table));
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

QString whySystemUnreadable()
{
    return whyUnreadable(CVelmSystemGlobal::Instance()->getSystemConfigDb(),
                         {QStringLiteral("indexini"), QStringLiteral("Workdef")});
}
