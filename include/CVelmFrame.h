#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QVariant>

/// How a map frame, the border of a sheet, is produced. The numbers are those that the frame
/// commands store, under the given keys of the column "FRAMEMODE"; the library keeps them only.
struct VelmFrameItem
{
    QString framename;                 ///< name of the frame
    QVariant extand;                   ///< extension data, a map
    QString configname;                ///< the name of this configuration, as it was asked for
    QMap<QString, QVariant> frametag;  ///< tag name to a map
    Velm::TrimMode trimmode = Velm::TrimModeDefault;               ///< "TrimMode"
    QMap<QString, QVariant> entdeploy;                             ///< how entities are deployed
    Velm::FrameSelMode selmode = Velm::FrameSelModeDefault;        ///< "SelMode"
    int framestyle = 0;                                            ///< "FrameStyle"
    Velm::FrameSaveStyle framesave = Velm::FrameSaveStyleDefault;  ///< "FrameSave"
    int framescaletype = 0;                                        ///< "FrameScaleType"
    int framesizetype = 0;  ///< "FrameSizeType"; 128 if the configuration does not tell
};

/// The map-frame configurations, from the table "VelmFrame".
/// Nothing is kept in memory: every query opens the database and reads one row. One thread at a
/// time. Only the configuration manager makes one.
class VELMCOMMON_EXPORT CVelmFrame
{
public:
    virtual ~CVelmFrame();

    /// A column that holds no JSON object gives an empty map and zero modes.
    /// @return VelmOk; VelmNoData for an unknown configuration; VelmDatabaseOpenFailed
    Velm::ErrorStatus getFrameItem(const QString& configName, VelmFrameItem& item);

    /// @{
    /// One field of the item, written on success only. Answer like getFrameItem().
    Velm::ErrorStatus getFrameName(const QString& configName, QString& name);
    Velm::ErrorStatus getFrameTrimMode(const QString& configName, Velm::TrimMode& mode);
    Velm::ErrorStatus getFrameSelMode(const QString& configName, Velm::FrameSelMode& mode);
    Velm::ErrorStatus getFrameSaveStyle(const QString& configName, Velm::FrameSaveStyle& style);
    /// @}

    /// The map of one tag, or of all tags for an empty @p tagName. For an unknown tag @p tags stays
    /// as it is.
    /// @return VelmOk; VelmNoData if @p tags is empty afterwards; else like getFrameItem()
    Velm::ErrorStatus getFrameTag(QMap<QString, QVariant>& tags, const QString& configName,
                                  const QString& tagName);

private:
    friend class CVelmConfigManager;

    CVelmFrame();
    Q_DISABLE_COPY(CVelmFrame)
};
