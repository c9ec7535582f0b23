#pragma once

#include "CVelmAttribute.h"

/// The GIS tables of the text file "attribute.def".
class CVelmAttributeDef : public CVelmAttribute
{
public:
    /// Adds the tables of the first "attribute.def" on the search paths, all lines of it.
    /// @return VelmOk; VelmNotFound; VelmFileOpenFailed
    Velm::ErrorStatus initVelmAttribute();

private:
    void addTable(const QStringList& fields);
    void addField(const QStringList& fields);
};
