#include "data/access/ConfigSources.h"
#include "common/files/SearchPaths.h"

#include "common/host/HostCalls.h"
#include "data/access/ConfigDatabase.h"
#include "data/access/TableReader.h"
#include "data/sql/Connection.h"
#include "data/sql/Patience.h"

#include <QFileInfo>

#include <algorithm>
#include <new>

namespace velm::detail {

namespace {

/// Begins a transaction and reads: what comes then is one state of the database.
QSqlError beginReading(const QSqlDatabase& database, qint64 patienceMs)
{
    execute(database, QStringLiteral("pragma busy_timeout=%1").arg(patienceMs));
    const QSqlError error = execute(database, QStringLiteral("begin"));
    QVariant count;
    return error.isValid()
               ? error
               : readFirstValue(database, QStringLiteral("select count(*) from sqlite_master"),
                                count)
                     .error;
}

}  // namespace

ConfigSources::ConfigSources()
{
    m_sinceBegin.start();
    m_hasSystem = open(m_system, SearchPaths::instance().systemDatabase());
    open(m_pipe, SearchPaths::instance().pipeDatabase());
}

bool ConfigSources::open(CVelmDatabase& database, const QString& path)
{
    const QString file = QFileInfo(path).fileName();
    QString why;
    if (openConfigDatabase(database, path, why) != Velm::VelmOk) {
        m_unopened.append(file + QStringLiteral(": ") + why);
        return false;
    }
    const qint64 patience = std::max<qint64>(0, kLockPatienceMs - m_sinceBegin.elapsed());
    const QSqlError error = beginReading(database.getQSqlDatabase(), patience);
    if (!error.isValid())
        return true;
    VELM_WARN(cannotOpen(path, error.text()));
    m_unopened.append(file + QStringLiteral(": ") + describe(error));
    database.closeDatabase(false, 0);
    return false;
}

QStringList ConfigSources::reportProblems()
{
    const QStringList problems = readProblems(m_system) + readProblems(m_pipe) + m_problems;
    for (const QString& problem : problems)
        VELM_WARN(QStringLiteral("configuration: ") + problem);
    return m_unopened + problems;
}

void loadAlone(const QString& what, const std::function<void(ConfigSources&)>& load,
               const std::function<void()>& clear)
{
    const HostCallsLater untilClosed;
    ConfigSources sources;
    try {
        load(sources);
    } catch (const std::bad_alloc&) {
        clear();
        sources.addProblem(what + QStringLiteral(": out of memory"));
    }
    sources.reportProblems();
}

}  // namespace velm::detail
