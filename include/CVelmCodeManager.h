#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QString>
#include <QStringList>

/// Chooses among feature codes by the work definitions of the database, whatever the version of the
/// configuration. Instance() may be called from any thread; the rest belongs to the host's main
/// thread.
class VELMCOMMON_EXPORT CVelmCodeManager
{
public:
    static CVelmCodeManager* Instance();  ///< made by the first call, never null
    virtual ~CVelmCodeManager();

    /// Whether the work definitions hold the code, exactly as it is written.
    bool isValidCode(const QString& code);
    /// The codes that are defined, in the order given, as often as given. The name says the
    /// opposite, and is part of the interface.
    QStringList filterInValidCode(const QStringList& codes);
    /// What a command asks the user to choose from: "(0)Road/(1)River" in @p choices, "0 1" in
    /// @p numbers. Codes that are not defined take no number. Both are written in any case.
    /// @return VelmOk; VelmInvalidValue if no code is defined
    Velm::ErrorStatus GetPromptByCodes(QString& choices, QString& numbers,
                                       const QStringList& codes);

private:
    CVelmCodeManager();
    Q_DISABLE_COPY(CVelmCodeManager)
};
