#include "set/Configuration.h"

#include "cli/Arguments.h"
#include "cli/Console.h"

#include "common/files/DatabasePath.h"
#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"
#include "CVelmIndex.h"
#include "CVelmSystemGlobal.h"
#include "CVelmWork.h"

#include <QFileInfo>

namespace {

/// Why a query cannot be read to its end; empty if it can.
QString whyFails(CVelmDatabase& database, const QString& query)
{
    QVector<QMap<QString, QVariant>> rows;
    database.executeSql(QStringLiteral("select ") + query, rows);
    return database.getLastErrorText();
}

}  // namespace

QStringList Configuration::systemTables()
{
    return {QStringLiteral("CODE, NAME, LTYPE, WIDTH, [TABLE], USECODE from indexini"),
            QStringLiteral("CODE, LAYER, ENTTYPE, PAR1, PAR2, TEXT from Workdef")};
}

QString Configuration::whyUnreadable(const QString& path, const QStringList& tables)
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
        QString problem = whyFails(database, table);
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

int Configuration::selectRoot(const Arguments& arguments)
{
    const bool named = arguments.isSet(QStringLiteral("root"));
    const QString root =
        named ? arguments.value(QStringLiteral("root")) : qEnvironmentVariable("VELM_ROOT");
    if (named && root.isEmpty())
        return arguments.usageError(QStringLiteral("--root names no folder"));
    if (root.isEmpty())
        return arguments.usageError(
            QStringLiteral("no configuration: give --root DIR or set VELM_ROOT"));
    const bool exists =
        named ? CVelmSystemGlobal::Instance()->setSystemRootRoute(root) : QFileInfo(root).isDir();
    if (!exists) {
        console::tell(
            QStringLiteral("cannot open the configuration \"%1\": there is no such folder")
                .arg(root));
        return ExitCannotOpen;
    }
    return ExitFine;
}

int Configuration::open(const Arguments& arguments, Configuration& configuration)
{
    const int selected = selectRoot(arguments);
    if (selected != ExitFine)
        return selected;
    const QString path = CVelmSystemGlobal::Instance()->getSystemConfigDb();
    const QString problem = whyUnreadable(path, systemTables());
    if (!problem.isEmpty()) {
        console::tell(QStringLiteral("cannot open \"") + path + QStringLiteral("\": ") + problem);
        return ExitCannotOpen;
    }
    configuration.m_manager = CVelmConfigManager::Instance();
    return ExitFine;
}

const CVelmIndex& Configuration::index() const
{
    return *m_manager->GetVelmIndex();
}

const CVelmWork& Configuration::work() const
{
    return *m_manager->GetVelmWork();
}
