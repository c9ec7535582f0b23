#pragma once

#include "VelmCommonGlobal.h"

/// Base of the private data of a CVelmBaseObject; derived classes add theirs. Copying copies
/// nothing.
class VELMCOMMON_EXPORT CVelmBaseObjectPrivate
{
public:
    CVelmBaseObjectPrivate() = default;
    /// @{
    /// Copies nothing.
    CVelmBaseObjectPrivate(const CVelmBaseObjectPrivate&) {}
    CVelmBaseObjectPrivate& operator=(const CVelmBaseObjectPrivate&) { return *this; }
    /// @}
    virtual ~CVelmBaseObjectPrivate() = default;
};
