#pragma once

#include <QString>

class Arguments;
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

    /// Why the system configuration database at @p path cannot be read; empty if it can.
    static QString whyUnreadable(const QString& path);

    const CVelmIndex& index() const { return *m_index; }
    const CVelmWork& work() const { return *m_work; }

private:
    const CVelmIndex* m_index = nullptr;  // the library's
    const CVelmWork* m_work = nullptr;
};
