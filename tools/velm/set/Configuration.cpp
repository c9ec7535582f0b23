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

QString named(const QString& path, const QString& table)
{
    return QStringLiteral("\"%1\", table \"%2\"").arg(path, table);
}

/// What cannot be read of the tables that the schema asks of a database, a line each.
QStringList tableProblems(const HeldDatabase& database, const QString& path)
{
    QStringList problems;
    const auto add = [&](const QString& table, const QString& problem) {
        if (!problem.isEmpty())
            problems.append(named(path, table) + QStringLiteral(": ") + problem);
    };
    for (const TableSchema& table : schema::tables()) {
        if (!table.optional && table.database == QFileInfo(path).fileName())
            add(table.name, database.problemOf(table));
    }
    QStringList views;
    add(QStringLiteral("sqlite_master"), database.findViews(views));
    for (const QString& view : qAsConst(views)) {
        if (schema::isDictionary(view))
            add(view, QStringLiteral("a view in its place"));
    }
    return problems;
}

/// Holds a database. @return what is wrong with it, a line each
QStringList hold(const QString& path, std::unique_ptr<HeldDatabase>& database)
{
    const QString quoted = QLatin1Char('"') + path + QStringLiteral("\": ");
    QString problem = whyNoFile(path);
    if (!problem.isEmpty())
        return {quoted + problem};
    database = std::make_unique<HeldDatabase>(path);
    problem = database->hold();
    return problem.isEmpty() ? tableProblems(*database, path) : QStringList{quoted + problem};
}

/// @return ExitFine if there are none
int tellAll(const QStringList& problems)
{
    constexpr int kMostTold = 20;
    for (const QString& problem : problems.mid(0, kMostTold))
        console::tell(QStringLiteral("cannot read ") + problem);
    if (problems.size() > kMostTold)
        console::tell(QStringLiteral("and %1 more").arg(problems.size() - kMostTold));
    return problems.isEmpty() ? ExitFine : ExitCannotOpen;
}

}  // namespace

int cannotReadTable(const QString& table, const QString& problem)
{
    const QString path = CVelmSystemGlobal::Instance()->getSystemConfigDb();
    return tellAll({named(path, table) + QStringLiteral(": ") + problem});
}

int Configuration::open(const Arguments& arguments)
{
    const int selected = selectRoot(arguments);
    if (selected != ExitFine)
        return selected;
    CVelmSystemGlobal& system = *CVelmSystemGlobal::Instance();
    QStringList problems = hold(system.getSystemConfigDb(), m_system);
    problems += hold(system.getPipeConfigDb(), m_pipe);
    if (problems.isEmpty()) {
        m_manager = CVelmConfigManager::Instance();
        problems = m_manager->loadProblems();
    }
    return tellAll(problems);
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
