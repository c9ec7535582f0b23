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

    void loadTables(CVelmDatabase& db);
    void loadFields(CVelmDatabase& db);
    void loadPipeTables(CVelmDatabase& pipe);
    void loadPipeFields(CVelmDatabase& pipe);
    bool loadConversion(CVelmDatabase& db);
};
