#pragma once

#include "VelmCommonGlobal.h"

#include <QtGlobal>

class CVelmObject;

/// The registry of object classes, for hosts that register theirs. It keeps nothing: registering
/// always succeeds and has no effect. May be used from any thread.
class VELMCOMMON_EXPORT CVelmObjectManager
{
public:
    static CVelmObjectManager* Instance();  ///< made by the first call, never null
    virtual ~CVelmObjectManager();

    /// @return true, for null too
    bool RegisterClassW(const CVelmObject* prototype);

private:
    CVelmObjectManager();
    Q_DISABLE_COPY(CVelmObjectManager)
};
