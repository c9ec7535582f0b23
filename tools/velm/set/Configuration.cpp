#include "set/Configuration.h"

#include "cli/Console.h"
#include "cli/Root.h"
#include "set/Readable.h"

#include "CVelmConfigManager.h"
#include "CVelmIndex.h"
#include "CVelmSystemGlobal.h"
#include "CVelmWork.h"

#include <QFileInfo>

#include <algorithm>

namespace {

int cannotRead(const QString& what, const QString& problem)
{
    console::tell(QStringLiteral("cannot read ") + what + QStringLiteral(": ") + problem);
    return ExitCannotOpen;
}

QString named(const QString& path, const QString& table)
{
    return QStringLiteral("\"%1\", table \"%2\"").arg(path, table);
}

/// Holds a database with all tables that the schema asks of it. What is wrong is told.
int hold(const QString& path, std::unique_ptr<HeldDatabase>& database)
{
    const QString quoted = QLatin1Char('"') + path + QLatin1Char('"');
    QString problem = whyNoFile(path);
    if (!problem.isEmpty())
        return cannotRead(quoted, problem);
    database = std::make_unique<HeldDatabase>(path);
    problem = database->hold();
    if (!problem.isEmpty())
        return cannotRead(quoted, problem);
    int exitCode = ExitFine;
    for (const TableSchema& table : schema::tables()) {
        if (table.optional || table.database != QFileInfo(path).fileName())
            continue;
        problem = database->problemOf(table);
        if (!problem.isEmpty())
            exitCode = cannotRead(named(path, table.name), problem);
    }
    return exitCode;
}

}  // namespace

int cannotReadTable(const QString& table, const QString& problem)
{
    return cannotRead(named(CVelmSystemGlobal::Instance()->getSystemConfigDb(), table), problem);
}

int Configuration::open(const Arguments& arguments)
{
    const int selected = selectRoot(arguments);
    if (selected != ExitFine)
        return selected;
    CVelmSystemGlobal& system = *CVelmSystemGlobal::Instance();
    const int systemHeld = hold(system.getSystemConfigDb(), m_system);
    const int pipeHeld = hold(system.getPipeConfigDb(), m_pipe);
    return systemHeld == ExitFine && pipeHeld == ExitFine ? load() : ExitCannotOpen;
}

/// Has the library load the set.
int Configuration::load()
{
    constexpr int kMostTold = 20;
    m_manager = CVelmConfigManager::Instance();
    const QStringList problems = m_manager->loadProblems();
    for (const QString& problem : problems.mid(0, kMostTold))
        cannotRead(QStringLiteral("the configuration"), problem);
    if (problems.size() > kMostTold)
        console::tell(QStringLiteral("and %1 more").arg(problems.size() - kMostTold));
    return problems.isEmpty() ? ExitFine : ExitCannotOpen;
}

const CVelmIndex& Configuration::index() const
{
    return *manager().GetVelmIndex();
}

const CVelmWork& Configuration::work() const
{
    return *manager().GetVelmWork();
}

int Configuration::tablesWith(const QString& code, QStringList& tables) const
{
    for (const char* name :
         {"IndexiniExtend", "QuobAreaLine", "VelmAnnotate", "RecordConfigType", "RecordConfig"}) {
        const QString table = QLatin1String(name);
        bool found = false;
        const QString problem = m_system->findCode(table, code, found);
        if (!problem.isEmpty())
            return cannotReadTable(table, problem);
        if (found)
            tables.append(table);
    }
    return ExitFine;
}

int Configuration::close()
{
    const bool systemChanged = m_system->release();
    const bool pipeChanged = m_pipe->release();
    if (!systemChanged && !pipeChanged)
        return ExitFine;
    console::tell(QStringLiteral("the configuration changed while it was read: ask again"));
    return ExitCannotOpen;
}
