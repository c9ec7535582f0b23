#pragma once

#include "CVelmAttribute.h"

class CVelmDatabase;

/// The GIS tables of the configuration databases.
class CVelmAttributeDB : public CVelmAttribute
{
public:
    /// Adds the tables of the system configuration database, then those of the pipe configuration
    /// database that are not there yet, and the field conversion. A database that is not open has
    /// no tables; both stay the caller's.
    /// @return VelmOk; VelmNoData if there is no table afterwards
    Velm::ErrorStatus load(const CVelmDatabase& db, const CVelmDatabase& pipe);

private:
    void loadTables(const CVelmDatabase& db);
    void loadFields(const CVelmDatabase& db);
    void loadPipeTables(const CVelmDatabase& pipe);
    void loadPipeFields(const CVelmDatabase& pipe);
    bool loadConversion(const CVelmDatabase& db);
};
