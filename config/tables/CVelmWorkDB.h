#pragma once

#include "CVelmWork.h"

class CVelmDatabase;

/// The work definitions of the system configuration database.
class CVelmWorkDB : public CVelmWork
{
public:
    /// Adds the rows of "workdef"; for one code the last row counts. What is held already stays. @p
    /// db is open and stays the caller's.
    /// @return VelmOk; VelmNoData if nothing is held afterwards
    Velm::ErrorStatus initVelmWork(CVelmDatabase& db);
};
