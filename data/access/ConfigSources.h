#pragma once

#include "CVelmDatabase.h"

#include <QElapsedTimer>
#include <QStringList>

#include <functional>

namespace velm::detail {

/// The two configuration databases, open for one load. Each is read in one state from first to
/// last, since a read lock is held; for the locks of others it waits 5 s in all.
class ConfigSources
{
public:
    ConfigSources();
    Q_DISABLE_COPY(ConfigSources)

    /// Whether the system configuration database can be read. A database that cannot may still be
    /// asked: it has no tables.
    bool hasSystem() const { return m_hasSystem; }
    CVelmDatabase& system() { return m_system; }
    CVelmDatabase& pipe() { return m_pipe; }

    void addProblem(const QString& problem) { m_problems.append(problem); }

    /// Writes a line to the log for each thing that could not be read. @return the lines, with
    /// those about files that could not be opened, which are in the log already
    QStringList reportProblems();

private:
    bool open(CVelmDatabase& database, const QString& path);

    QElapsedTimer m_sinceBegin;
    CVelmDatabase m_system;
    CVelmDatabase m_pipe;
    bool m_hasSystem = false;
    QStringList m_unopened;  // told already
    QStringList m_problems;  // not of one table
};

/// Opens the databases, loads from them, closes them, and tells what could not be loaded of @p
/// what. Where memory runs out, @p clear undoes the load.
void loadAlone(const QString& what, const std::function<void(ConfigSources&)>& load,
               const std::function<void()>& clear);

}  // namespace velm::detail
