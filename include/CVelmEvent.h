#pragma once

#include "VelmCommonGlobal.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

/// Signals by which the library tells its host something. The library emits, the host connects.
/// Instance() may be called from any thread; the object lives in the thread of the first call.
class VELMCOMMON_EXPORT CVelmEvent : public QObject
{
    Q_OBJECT

public:
    /// Created on the first call, destroyed at the end of the process.
    static CVelmEvent* Instance();
    ~CVelmEvent() override;

Q_SIGNALS:
    // The order is part of the interface: hosts may address them by number.

    /// An error text for the user.
    void setErrorMsg(const QString& msg);
    /// The work space @p strVelmGuid has to refresh its area.
    void UpdateWorkSpaceDomainArea(const QString& strVelmGuid);
    /// Asks for the areas of entities. The answer is what a directly connected receiver returns,
    /// empty if there is none.
    QMap<QString, QVariant> UpdateEntArea(const QString& strVelmGuid, bool bForceFresh);

private:
    CVelmEvent();
    Q_DISABLE_COPY(CVelmEvent)
};
