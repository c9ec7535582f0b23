#pragma once

#include <QString>
#include <QStringList>

class Arguments;
class CVelmConfigManager;
class CVelmIndex;
class CVelmWork;

/// The configuration set that a command works on, loaded by the library.
class Configuration
{
public:
    /// Opens the set that --root or VELM_ROOT names. What goes wrong is told.
    /// @return ExitFine; ExitUsage if neither names one; ExitCannotOpen
    static int open(const Arguments& arguments, Configuration& configuration);

    /// Makes the root that --root or VELM_ROOT names the library's; answers as open() does.
    static int selectRoot(const Arguments& arguments);

    /// Why the database at @p path, or one of the tables that it needs, cannot be read; empty if
    /// all can. Each of @p tables is a query without its "select".
    static QString whyUnreadable(const QString& path, const QStringList& tables);
    /// What the system configuration database needs.
    static QStringList systemTables();

    const CVelmConfigManager& manager() const { return *m_manager; }
    const CVelmIndex& index() const;
    const CVelmWork& work() const;

private:
    const CVelmConfigManager* m_manager = nullptr;  // the library's
};
