#pragma once

#include "CVelmAttribute.h"

/// The GIS tables of the text file "attribute.def". Only the configuration manager makes one.
class CVelmAttributeDef : public CVelmAttribute
{
public:
    /// Adds the tables of the first "attribute.def" on the search paths, all lines of it.
    /// @return VelmOk; VelmNotFound; VelmFileOpenFailed
    Velm::ErrorStatus initVelmAttribute();

private:
    friend class CVelmConfigManager;
    friend class AttributePeer;  // tests

    CVelmAttributeDef() = default;

    void addTable(const QStringList& fields);
    void addField(const QStringList& fields);
};
