#include "Configuration.h"

#include "Arguments.h"
#include "Console.h"

#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"
#include "CVelmIndex.h"
#include "CVelmSystemGlobal.h"
#include "CVelmWork.h"

#include <QFile>
#include <QFileInfo>

namespace {

/// Why the table "indexini" cannot be read; empty if it can.
QString whyUnreadable(const QString& path)
{
    if (!QFileInfo::exists(path))
        return QStringLiteral("there is no such file (\"velm init DIR\" makes a sample set)");
    CVelmDatabase database;
    if (database.initDatabase(path, QString()) != Velm::VelmOk)
        return QStringLiteral("it cannot be opened as a database");
    const Velm::ErrorStatus status =
        database.executeSql(QStringLiteral("select count(*) from indexini"));
    return status == Velm::VelmOk ? QString() : database.getLastErrorText();
}

}  // namespace

int Configuration::open(const Arguments& arguments, Configuration& configuration)
{
    QString root = arguments.value(QStringLiteral("root"));
    if (root.isEmpty())
        root = qEnvironmentVariable("VELM_ROOT");
    if (root.isEmpty())
        return arguments.usageError(
            QStringLiteral("no configuration: give --root DIR or set VELM_ROOT"));
    if (!QFileInfo(root).isDir()) {
        console::tell(
            QStringLiteral("cannot open the configuration \"%1\": there is no such folder")
                .arg(root));
        return ExitCannotOpen;
    }
    qputenv("VELM_ROOT", QFile::encodeName(root));

    const QString path = CVelmSystemGlobal::Instance()->getSystemConfigDb();
    const QString problem = whyUnreadable(path);
    if (!problem.isEmpty()) {
        console::tell(QStringLiteral("cannot open \"") + path + QStringLiteral("\": ") + problem);
        return ExitCannotOpen;
    }
    const CVelmConfigManager* manager = CVelmConfigManager::Instance();
    configuration.m_index = manager->GetVelmIndex();
    configuration.m_work = manager->GetVelmWork();
    return ExitFine;
}
