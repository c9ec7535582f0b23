#pragma once

#include "CVelmIndex.h"

/// The code index of the older configuration set, the file "index.ini" on the search paths.
class CVelmIndexIni : public CVelmIndex
{
public:
    /// Reads code, line type, width, name, user code and table, separated by ",", from the file as
    /// velm::detail::readDefinitionFile() does: in effect from a file of one line only.
    /// @return VelmOk; VelmNoData if the index is empty afterwards; VelmNotFound;
    /// VelmFileOpenFailed
    Velm::ErrorStatus load();
};
