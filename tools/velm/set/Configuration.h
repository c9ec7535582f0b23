#pragma once

#include "set/HeldDatabase.h"

#include <memory>

class Arguments;
class CVelmConfigManager;
class CVelmIndex;
class CVelmWork;

/// The configuration set that a command works on, loaded by the library. Both databases stay in one
/// state from open() to close(), and whatever cannot be read is told.
class Configuration
{
public:
    /// Opens the set that --root or VELM_ROOT names, whole or not at all.
    /// @return ExitFine; ExitUsage if neither names one; ExitCannotOpen
    int open(const Arguments& arguments);

    const CVelmConfigManager& manager() const { return *m_manager; }
    CVelmConfigManager& manager() { return *m_manager; }
    const CVelmIndex& index() const;
    const CVelmWork& work() const;

    /// For each of @p codes the tables beside the index and the work definitions that have rows of
    /// it. @return ExitFine; ExitCannotOpen
    int tablesWith(const QSet<QString>& codes, QHash<QString, QStringList>& tables) const;
    /// The codes whose annotation has data that are no JSON object.
    /// @return ExitFine; ExitCannotOpen
    int codesWithBrokenData(QSet<QString>& codes) const;

    /// Ends the reading. @return ExitFine; ExitCannotOpen if another program has changed the
    /// configuration meanwhile
    int close();

private:
    CVelmConfigManager* m_manager = nullptr;  // the library's
    std::unique_ptr<HeldDatabase> m_system;
    std::unique_ptr<HeldDatabase> m_pipe;
};

/// Tells that a table of the system configuration database cannot be read. @return ExitCannotOpen
int cannotReadTable(const QString& table, const QString& problem);
