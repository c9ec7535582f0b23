#include "set/Configuration.h"

#include "cli/Console.h"
#include "cli/Root.h"
#include "set/Readable.h"

#include "CVelmConfigManager.h"
#include "CVelmIndex.h"
#include "CVelmString.h"
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
    if (QFileInfo(path).fileName() != schema::kSystemFile)
        return problems;
    QStringList names;
    add(QStringLiteral("sqlite_master"), database.findNames(names));
    for (const QString& name : qAsConst(names)) {
        if (schema::isDictionary(name))
            add(name, database.problemOf(schema::dictionary(name)));
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

/// A problem that the library tells, with the path of the file with whose name it begins.
QString withPath(const QString& problem)
{
    CVelmSystemGlobal& system = *CVelmSystemGlobal::Instance();
    for (const QString& path : {system.getSystemConfigDb(), system.getPipeConfigDb()}) {
        const QString file = QFileInfo(path).fileName();
        if (problem.startsWith(file))
            return QLatin1Char('"') + path + QLatin1Char('"') + problem.mid(file.size());
    }
    return problem;
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
    const QString why = problem.isEmpty() ? whyNoFile(path) : problem;
    return tellAll({named(path, table) + QStringLiteral(": ")
                    + (why.isEmpty() ? QStringLiteral("it cannot be opened") : why)});
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
        for (const QString& problem : m_manager->loadProblems())
            problems.append(withPath(problem));
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

int Configuration::tablesWith(const QSet<QString>& codes, QHash<QString, QStringList>& tables) const
{
    for (const char* name :
         {"IndexiniExtend", "QuobAreaLine", "VelmAnnotate", "RecordConfigType", "RecordConfig"}) {
        const QString table = QLatin1String(name);
        QSet<QString> found;
        const QString problem = m_system->findCodes(table, codes, found);
        if (!problem.isEmpty())
            return cannotReadTable(table, problem);
        for (const QString& code : qAsConst(found))
            tables[code].append(table);
    }
    return ExitFine;
}

int Configuration::codesWithBrokenData(QSet<QString>& codes) const
{
    const QString table = QStringLiteral("VelmAnnotate");
    QSqlQuery row = m_system->query();
    QString problem =
        HeldDatabase::run(row, QStringLiteral("select [CODE], [EXTDATA] from [%1]").arg(table));
    QSet<QString> seen;  // of several rows of a code the first one counts
    for (; row.isValid(); row.next()) {
        const QString code = row.value(0).toString();
        const QString data = row.value(1).toString();
        if (!seen.contains(code) && !data.isEmpty()
            && CVelmString().Json2Variant(data).type() != QVariant::Map)
            codes.insert(code);
        seen.insert(code);
    }
    if (problem.isEmpty())
        problem = HeldDatabase::textOf(row.lastError());
    return problem.isEmpty() ? ExitFine : cannotReadTable(table, problem);
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
