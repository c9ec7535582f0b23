#pragma once

#include "VelmCommonGlobal.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// @file
/// The user's settings, as CVelmSystemGlobal::initGlobalParam() loads and saveGlobalParam() stores
/// them. What a stored text does not tell has the value given here. Each member names its key in
/// the text; numbers and choices of which no more is said are kept for the host's dialogs, which
/// give them their meaning.

/// How entities are sorted before they are numbered or exported.
struct VelmSortRule
{
    int m_SortMode = 0;          ///< "SortMode"
    int m_SortType = 0;          ///< "SortType"
    int m_SortPoint = 0;         ///< "SortPoint"
    int m_SortDir1 = 0;          ///< "SortDir1"
    int m_SortDir2 = 0;          ///< "SortDir2"
    int m_DrawDirection = 0;     ///< "DrawDirection"
    bool m_bSTypePath = false;   ///< "STypePath"
    bool m_bOneSortDir = false;  ///< "OneSortDir"
    double m_xOff = 0.0;         ///< "XOff": tolerance of one row or column, drawing units
    double m_yOff = 0.0;         ///< "YOff": the same along y
};

/// Size of a map frame.
struct VelmFrameSize
{
    int m_FrameStyle = 0;   ///< "FrameStyle"
    int m_frameWidth = 0;   ///< "FrameWidth"
    int m_frameHeight = 0;  ///< "FrameHeight"
};

/// The drawing that a map frame is made from.
struct VelmFrameTemplate
{
    bool m_isMerge = false;      ///< "IsMerge"
    bool m_hasTemplate = false;  ///< "HasTemplate"
    QString m_templateFile;      ///< "TemplateFile"
};

/// Where map frames are placed and saved.
struct VelmFrameSave
{
    int m_frameSpaceX = 0;  ///< "FrameSpaceX"
    /// Stored under the key of m_frameSpaceX, as in the texts that users have stored: both are read
    /// from it, and of the two this one is stored.
    int m_frameSpaceY = 0;
    double m_frameInsertX = 0.0;  ///< "FrameInsertX"
    double m_frameInsertY = 0.0;  ///< "FrameInsertY"
    int m_LayoutType = 0;         ///< "LayoutType"
    int m_SaveStyle = 0;          ///< "SaveStyle": a Velm::FrameSaveStyle
    int m_FrameOrder = 0;         ///< "FrameOrder"
    QString m_frameSavePath;      ///< "FrameSavePath"
    QString m_frameLayoutName;    ///< "FrameLayoutName"
};

/// The settings of map frames.
struct VelmFrameData
{
    VelmFrameSize m_frameSize;          ///< "FrameSize"
    VelmFrameTemplate m_frameTemplate;  ///< "FrameTemplate"
    VelmFrameSave m_frameSave;          ///< "FrameSave"
};

/// Settings of all commands.
struct VelmCommandInfo
{
    bool m_bCmdShowPrompt = true;  ///< "CmdShowPrompt"
    int m_SaveDwgVersion = 25;     ///< "SaveDwgVersion"
};

/// One script of the host.
struct VelmScript
{
    bool m_scriptLoad = false;  ///< "ScriptLoad": loaded when the host starts
    bool m_bBuiltIn = false;    ///< "BuiltIn"
    QString m_scriptName;       ///< "ScriptName"
    QString m_scriptPath;       ///< "ScriptPath"
};

/// The scripts of the host, and what counts as one.
struct VelmScriptParam
{
    QStringList m_scriptSuffix;        ///< "ScriptSuffix"
    bool m_scriptLoadTip = false;      ///< "ScriptLoadTip"
    QVector<VelmScript> m_scriptData;  ///< "ScriptData"
};

/// How entities are drawn by hand.
struct VelmDrawModeParam
{
    int m_DrawMode = 0;                 ///< "DrawMode"
    bool m_keepPolyline = true;         ///< "KeepPolyline"
    bool m_bChooseDrawModeTip = false;  ///< "ChooseDrawModeTip"
    bool m_bShowDrawModeTip = false;    ///< "ShowDrawModeTip"
};

/// How mandatory fields are marked in forms.
struct VelmMustFieldData
{
    int m_symbolPos = 0;    ///< "SymbolPos"
    int m_textColor = 0;    ///< "TextColor": colour index
    QString m_symbolText;   ///< "SymbolText"
    int m_symbolColor = 0;  ///< "SymbolColor": colour index
};

/// A text format in which coordinates and attributes are exchanged.
struct VelmDataFormat
{
    int m_tableDirection = 0;  ///< "TableDirection"
    QString m_formatName;      ///< "FormatName": what CVelmSystemGlobal::getDataFormat() looks for
    QString m_splitSymbol;     ///< "SplitSymbol"
};

/// How names are annotated.
struct VelmAnnNameMap
{
    bool m_bDimArea = false;       ///< "DimArea"
    int m_dimLocal = 0;            ///< "DimLocal"
    double m_dimXOff = 0.0;        ///< "DimXOff"
    double m_dimYOff = 0.0;        ///< "DimYOff"
    double m_dDimHeight = 0.0;     ///< "DimHeight"
    bool m_bUniteNum = false;      ///< "UniteNum"
    bool m_isFillSkipNum = false;  ///< "IsFillSkipNum"
    QString m_nameForamt;          ///< "NameFormat": the member's spelling is part of the interface
};

/// The templates of exports.
struct VelmExportTemplate
{
    int m_TemplateMcType = 0;    ///< "TemplateMcType"
    int m_TemplatePosType = 0;   ///< "TemplatePosType"
    int m_SingleExportType = 0;  ///< "SingleExportType"
    int m_OneKeyExportType = 0;  ///< "OneKeyExportType"
    QString m_TemplateMcName;    ///< "TemplateMcName"
    QString m_TemplatePosPath;   ///< "TemplatePosPath"
};

/// What is exported.
struct VelmExportFilter
{
    bool m_exportVector = false;           ///< "ExportVector"
    bool m_filterEntitys = false;          ///< "FilterEntity"
    bool m_PolylinePolylineation = false;  ///< "PolylinePolylineation"
};

/// The settings of exports.
struct VelmExportSettingData
{
    VelmExportTemplate m_exportTemplate;  ///< "ExportTemplate"
    VelmExportFilter m_exportFilter;      ///< "ExportFilter"
};

/// How areas are rounded.
struct VelmAreaAboutSetting
{
    int m_roundOffType = 0;     ///< "RoundOffType": a Velm::RoundOffType
    int m_aboutOfAreaType = 0;  ///< "AboutOfAreaType": a Velm::UnitOfAreaType
};

/// Keeps its place in the record; it has no settings yet.
struct VelmProgressBarParam
{};

/// All of the user's settings.
struct VelmGlobalParam
{
    VelmSortRule m_sortRule;                    ///< "SortRule"
    VelmFrameData m_frameData;                  ///< "FrameData"
    VelmCommandInfo m_commandInfo;              ///< "CommandInfo"
    VelmScriptParam m_scriptParam;              ///< "ScriptParam"
    VelmDrawModeParam m_drawModeParam;          ///< "DrawModeParam"
    VelmMustFieldData m_mustFieldData;          ///< "MustFieldData"
    QVector<VelmDataFormat> m_dataFormatArray;  ///< "DataFormat"
    VelmAnnNameMap m_annNameMap;                ///< "AnnNameMap"
    VelmExportSettingData m_exportSettingData;  ///< "ExportSettingData"
    VelmAreaAboutSetting m_areaAboutSetting;    ///< "AreaAboutSetting"
    VelmProgressBarParam m_progressBarParam;    ///< "ProgressBarParam"
};

/// The settings in use. Read and written by the host's main thread only.
extern VELMCOMMON_EXPORT VelmGlobalParam g_VelmGlobalParam;
