#pragma once

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

    const CVelmConfigManager& manager() const { return *m_manager; }
    const CVelmIndex& index() const;
    const CVelmWork& work() const;

private:
    const CVelmConfigManager* m_manager = nullptr;  // the library's
};
