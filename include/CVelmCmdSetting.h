#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

class CVelmDatabase;

/// The settings of drawing commands: JSON texts from the table "VelmCmdSetting".
/// Every getter reads the database, and compares the command's name exactly; getCommandVersion()
/// answers from what was read at the start. One thread at a time. Only the configuration manager
/// makes one.
class VELMCOMMON_EXPORT CVelmCmdSetting
{
public:
    virtual ~CVelmCmdSetting();

    /// The stored text. @p text is written in any case, empty where there is none.
    /// @return VelmOk; VelmSettingNotFound, also if the database cannot be opened;
    ///         VelmSqlExecFailed if it cannot be read, then @p text stays
    Velm::ErrorStatus getCommandSettingString(const QString& cmdName, QString& text);
    /// The setting parsed from JSON; invalid for a text that does not parse.
    /// @return like getCommandSettingString()
    Velm::ErrorStatus getCommandSettingVariant(const QString& cmdName, QVariant& value);
    /// @return also VelmSettingConvertFailed if the setting is no object
    Velm::ErrorStatus getCommandSettingVariantMap(const QString& cmdName,
                                                  QMap<QString, QVariant>& map);
    /// @return also VelmSettingConvertFailed if the setting is no array
    Velm::ErrorStatus getCommandSettingVariantList(const QString& cmdName, QList<QVariant>& list);
    /// Appends the elements of an array as texts; those that are empty are left out.
    Velm::ErrorStatus getCommandSettingStringList(const QString& cmdName, QStringList& list);

    /// The answer is inverted, and hosts test it so: a command with a setting is not found, and of
    /// one that was unknown at the start the versions are none.
    /// @return VelmNotFound if the command, in any letter case, was stored at the start or was
    /// asked for before; else VelmOk, and @p versions stays
    Velm::ErrorStatus getCommandVersion(const QString& cmdName, QStringList& versions);

private:
    friend class CVelmConfigManager;

    CVelmCmdSetting();
    Q_DISABLE_COPY(CVelmCmdSetting)

    /// Fills the cache.
    void load(CVelmDatabase& database);

    QMap<QString, QVariant> m_cache;  // by upper-case command name
};
