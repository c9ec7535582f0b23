#pragma once

#include "VelmCommonGlobal.h"

#include <QString>
#include <QStringList>
#include <QVector>

// The user's settings, as CVelmSystemGlobal::initGlobalParam() loads and saveGlobalParam() stores
// them. What a stored text does not tell has the value given here.

/// How entities are sorted before they are numbered or exported. The settings of mode, type and
/// directions are the numbers that the sort dialogs keep.
struct VelmSortRule
{
    int m_SortMode = 0;
    int m_SortType = 0;
    int m_SortPoint = 0;
    int m_SortDir1 = 0;
    int m_SortDir2 = 0;
    int m_DrawDirection = 0;
    bool m_bSTypePath = false;
    bool m_bOneSortDir = false;
    double m_xOff = 0.0;  ///< tolerance of one row or column, drawing units
    double m_yOff = 0.0;
};

/// Size of a map frame.
struct VelmFrameSize
{
    int m_FrameStyle = 0;
    int m_frameWidth = 0;
    int m_frameHeight = 0;
};

/// The drawing that a map frame is made from.
struct VelmFrameTemplate
{
    bool m_isMerge = false;
    bool m_hasTemplate = false;
    QString m_templateFile;
};

/// Where map frames are placed and saved.
struct VelmFrameSave
{
    int m_frameSpaceX = 0;
    /// Stored under the key of m_frameSpaceX, wanted so: both are read from it, and of the two this
    /// one is stored.
    int m_frameSpaceY = 0;
    double m_frameInsertX = 0.0;
    double m_frameInsertY = 0.0;
    int m_LayoutType = 0;
    int m_SaveStyle = 0;  ///< a Velm::FrameSaveStyle
    int m_FrameOrder = 0;
    QString m_frameSavePath;
    QString m_frameLayoutName;
};

struct VelmFrameData
{
    VelmFrameSize m_frameSize;
    VelmFrameTemplate m_frameTemplate;
    VelmFrameSave m_frameSave;
};

struct VelmCommandInfo
{
    bool m_bCmdShowPrompt = true;
    int m_SaveDwgVersion = 25;
};

/// One script of the host.
struct VelmScript
{
    bool m_scriptLoad = false;  ///< loaded when the host starts
    bool m_bBuiltIn = false;
    QString m_scriptName;
    QString m_scriptPath;
};

struct VelmScriptParam
{
    QStringList m_scriptSuffix;
    bool m_scriptLoadTip = false;
    QVector<VelmScript> m_scriptData;
};

struct VelmDrawModeParam
{
    int m_DrawMode = 0;
    bool m_keepPolyline = true;
    bool m_bChooseDrawModeTip = false;
    bool m_bShowDrawModeTip = false;
};

/// How mandatory fields are marked in forms.
struct VelmMustFieldData
{
    int m_symbolPos = 0;
    int m_textColor = 0;  ///< colour index
    QString m_symbolText;
    int m_symbolColor = 0;  ///< colour index
};

/// A text format in which coordinates and attributes are exchanged.
struct VelmDataFormat
{
    int m_tableDirection = 0;
    QString m_formatName;
    QString m_splitSymbol;
};

/// How names are annotated.
struct VelmAnnNameMap
{
    bool m_bDimArea = false;
    int m_dimLocal = 0;
    double m_dimXOff = 0.0;
    double m_dimYOff = 0.0;
    double m_dDimHeight = 0.0;
    bool m_bUniteNum = false;
    bool m_isFillSkipNum = false;
    QString m_nameForamt;  ///< the format; the member's spelling is part of the interface
};

struct VelmExportTemplate
{
    int m_TemplateMcType = 0;
    int m_TemplatePosType = 0;
    int m_SingleExportType = 0;
    int m_OneKeyExportType = 0;
    QString m_TemplateMcName;
    QString m_TemplatePosPath;
};

struct VelmExportFilter
{
    bool m_exportVector = false;
    bool m_filterEntitys = false;
    bool m_PolylinePolylineation = false;
};

struct VelmExportSettingData
{
    VelmExportTemplate m_exportTemplate;
    VelmExportFilter m_exportFilter;
};

/// How areas are rounded.
struct VelmAreaAboutSetting
{
    int m_roundOffType = 0;     ///< a Velm::RoundOffType
    int m_aboutOfAreaType = 0;  ///< a Velm::UnitOfAreaType
};

/// Keeps its place in the record; it has no settings yet.
struct VelmProgressBarParam
{};

/// All of the user's settings.
struct VelmGlobalParam
{
    VelmSortRule m_sortRule;
    VelmFrameData m_frameData;
    VelmCommandInfo m_commandInfo;
    VelmScriptParam m_scriptParam;
    VelmDrawModeParam m_drawModeParam;
    VelmMustFieldData m_mustFieldData;
    QVector<VelmDataFormat> m_dataFormatArray;
    VelmAnnNameMap m_annNameMap;
    VelmExportSettingData m_exportSettingData;
    VelmAreaAboutSetting m_areaAboutSetting;
    VelmProgressBarParam m_progressBarParam;
};

/// The settings in use. Read and written by the host's main thread only.
extern VELMCOMMON_EXPORT VelmGlobalParam g_VelmGlobalParam;
