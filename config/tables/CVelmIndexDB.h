#pragma once

#include "CVelmIndex.h"

class CVelmDatabase;

/// The code index of the system configuration database.
class CVelmIndexDB : public CVelmIndex
{
public:
    /// Adds the rows of "indexini" and the extension tables of "IndexiniExtend"; for one code the
    /// last row counts. What the index holds already stays. @p database is open and stays the
    /// caller's.
    /// @return VelmOk; VelmNoData if the index is empty afterwards
    Velm::ErrorStatus load(CVelmDatabase& database);

private:
    void loadItems(CVelmDatabase& database);
    void loadExtensions(CVelmDatabase& database);
};
