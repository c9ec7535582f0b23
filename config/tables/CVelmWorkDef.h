#pragma once

#include "CVelmWork.h"

/// The work definitions of the older configuration set, the file "work.def" on the search paths.
class CVelmWorkDef : public CVelmWork
{
public:
    /// Reads code, layer, entity type, two parameters, text and colour, separated by ",", from the
    /// file as velm::detail::readDefinitionFile() does: in effect from a file of one line only.
    /// Fields that a line lacks keep their defaults.
    /// @return VelmOk, whether or not anything was stored; VelmNotFound; VelmFileOpenFailed
    Velm::ErrorStatus initVelmWork();
};
