#pragma once

#include "CVelmAttribute.h"

class CVelmDatabase;

/// The GIS tables of the configuration databases. Only the configuration manager makes one.
class CVelmAttributeDB : public CVelmAttribute
{
public:
    /// Adds the tables of the system configuration database, then those of the pipe configuration
    /// database that are not there yet, and the field conversion. @p db is open on the first and
    /// stays the caller's.
    /// @return VelmOk; VelmNoData if there is no table afterwards
    Velm::ErrorStatus initVelmAttribute(CVelmDatabase& db);

private:
    friend class CVelmConfigManager;
    friend class AttributePeer;  // tests and benchmarks

    CVelmAttributeDB() = default;

    /// The same with the pipe configuration database; one that is not open has no tables.
    Velm::ErrorStatus load(const CVelmDatabase& db, const CVelmDatabase& pipe);
    void loadTables(const CVelmDatabase& db);
    void loadFields(const CVelmDatabase& db);
    void loadPipeTables(const CVelmDatabase& pipe);
    void loadPipeFields(const CVelmDatabase& pipe);
    bool loadConversion(const CVelmDatabase& db);
};
