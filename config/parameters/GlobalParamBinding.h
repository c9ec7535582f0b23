#pragma once

#include "common/json/JsonBinding.h"
#include "VelmGlobalParam.h"

// The keys of the global parameters.

VELM_JSON_RECORD(VelmSortRule, VELM_JSON(m_SortMode, "SortMode"), VELM_JSON(m_SortType, "SortType"),
                 VELM_JSON(m_SortPoint, "SortPoint"), VELM_JSON(m_SortDir1, "SortDir1"),
                 VELM_JSON(m_SortDir2, "SortDir2"), VELM_JSON(m_DrawDirection, "DrawDirection"),
                 VELM_JSON(m_bSTypePath, "STypePath"), VELM_JSON(m_bOneSortDir, "OneSortDir"),
                 VELM_JSON(m_xOff, "XOff"), VELM_JSON(m_yOff, "YOff"))

VELM_JSON_RECORD(VelmFrameSize, VELM_JSON(m_FrameStyle, "FrameStyle"),
                 VELM_JSON(m_frameWidth, "FrameWidth"), VELM_JSON(m_frameHeight, "FrameHeight"))

VELM_JSON_RECORD(VelmFrameTemplate, VELM_JSON(m_isMerge, "IsMerge"),
                 VELM_JSON(m_hasTemplate, "HasTemplate"), VELM_JSON(m_templateFile, "TemplateFile"))

VELM_JSON_RECORD(VelmFrameSave, VELM_JSON(m_frameSpaceX, "FrameSpaceX"),
                 VELM_JSON(m_frameSpaceY, "FrameSpaceX"),  // stored under the one key
                 VELM_JSON(m_frameInsertX, "FrameInsertX"),
                 VELM_JSON(m_frameInsertY, "FrameInsertY"), VELM_JSON(m_LayoutType, "LayoutType"),
                 VELM_JSON(m_SaveStyle, "SaveStyle"), VELM_JSON(m_FrameOrder, "FrameOrder"),
                 VELM_JSON(m_frameSavePath, "FrameSavePath"),
                 VELM_JSON(m_frameLayoutName, "FrameLayoutName"))

VELM_JSON_RECORD(VelmFrameData, VELM_JSON(m_frameSize, "FrameSize"),
                 VELM_JSON(m_frameTemplate, "FrameTemplate"), VELM_JSON(m_frameSave, "FrameSave"))

VELM_JSON_RECORD(VelmCommandInfo, VELM_JSON(m_bCmdShowPrompt, "CmdShowPrompt"),
                 VELM_JSON(m_SaveDwgVersion, "SaveDwgVersion"))

VELM_JSON_RECORD(VelmScript, VELM_JSON(m_scriptLoad, "ScriptLoad"),
                 VELM_JSON(m_bBuiltIn, "BuiltIn"), VELM_JSON(m_scriptName, "ScriptName"),
                 VELM_JSON(m_scriptPath, "ScriptPath"))

VELM_JSON_RECORD(VelmScriptParam, VELM_JSON(m_scriptSuffix, "ScriptSuffix"),
                 VELM_JSON(m_scriptLoadTip, "ScriptLoadTip"), VELM_JSON(m_scriptData, "ScriptData"))

VELM_JSON_RECORD(VelmDrawModeParam, VELM_JSON(m_DrawMode, "DrawMode"),
                 VELM_JSON(m_keepPolyline, "KeepPolyline"),
                 VELM_JSON(m_bChooseDrawModeTip, "ChooseDrawModeTip"),
                 VELM_JSON(m_bShowDrawModeTip, "ShowDrawModeTip"))

VELM_JSON_RECORD(VelmMustFieldData, VELM_JSON(m_symbolPos, "SymbolPos"),
                 VELM_JSON(m_textColor, "TextColor"), VELM_JSON(m_symbolText, "SymbolText"),
                 VELM_JSON(m_symbolColor, "SymbolColor"))

VELM_JSON_RECORD(VelmDataFormat, VELM_JSON(m_tableDirection, "TableDirection"),
                 VELM_JSON(m_formatName, "FormatName"), VELM_JSON(m_splitSymbol, "SplitSymbol"))

VELM_JSON_RECORD(VelmAnnNameMap, VELM_JSON(m_bDimArea, "DimArea"),
                 VELM_JSON(m_dimLocal, "DimLocal"), VELM_JSON(m_dimXOff, "DimXOff"),
                 VELM_JSON(m_dimYOff, "DimYOff"), VELM_JSON(m_dDimHeight, "DimHeight"),
                 VELM_JSON(m_bUniteNum, "UniteNum"), VELM_JSON(m_isFillSkipNum, "IsFillSkipNum"),
                 VELM_JSON(m_nameForamt, "NameFormat"))

VELM_JSON_RECORD(VelmExportTemplate, VELM_JSON(m_TemplateMcType, "TemplateMcType"),
                 VELM_JSON(m_TemplatePosType, "TemplatePosType"),
                 VELM_JSON(m_SingleExportType, "SingleExportType"),
                 VELM_JSON(m_OneKeyExportType, "OneKeyExportType"),
                 VELM_JSON(m_TemplateMcName, "TemplateMcName"),
                 VELM_JSON(m_TemplatePosPath, "TemplatePosPath"))

VELM_JSON_RECORD(VelmExportFilter, VELM_JSON(m_exportVector, "ExportVector"),
                 VELM_JSON(m_filterEntitys, "FilterEntity"),
                 VELM_JSON(m_PolylinePolylineation, "PolylinePolylineation"))

VELM_JSON_RECORD(VelmExportSettingData, VELM_JSON(m_exportTemplate, "ExportTemplate"),
                 VELM_JSON(m_exportFilter, "ExportFilter"))

VELM_JSON_RECORD(VelmAreaAboutSetting, VELM_JSON(m_roundOffType, "RoundOffType"),
                 VELM_JSON(m_aboutOfAreaType, "AboutOfAreaType"))

VELM_JSON_RECORD(VelmProgressBarParam, )

VELM_JSON_RECORD(VelmGlobalParam, VELM_JSON(m_sortRule, "SortRule"),
                 VELM_JSON(m_frameData, "FrameData"), VELM_JSON(m_commandInfo, "CommandInfo"),
                 VELM_JSON(m_scriptParam, "ScriptParam"),
                 VELM_JSON(m_drawModeParam, "DrawModeParam"),
                 VELM_JSON(m_mustFieldData, "MustFieldData"),
                 VELM_JSON(m_dataFormatArray, "DataFormat"), VELM_JSON(m_annNameMap, "AnnNameMap"),
                 VELM_JSON(m_exportSettingData, "ExportSettingData"),
                 VELM_JSON(m_areaAboutSetting, "AreaAboutSetting"),
                 VELM_JSON(m_progressBarParam, "ProgressBarParam"))
