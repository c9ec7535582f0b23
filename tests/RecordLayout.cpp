// The layout of the public records on 32-bit Windows, which is the same for MinGW-w64 and
// Microsoft's compiler: the size of each and where a member lies, the last one if no other is
// named. A host reads and writes them where they are, so no number here changes without a new major
// version.

#include "CVelmAnnotate.h"
#include "CVelmAreaLine.h"
#include "CVelmAttribute.h"
#include "CVelmFrame.h"
#include "CVelmIndex.h"
#include "CVelmRecordManager.h"
#include "CVelmRTree.h"
#include "CVelmString.h"
#include "CVelmSystemGlobal.h"
#include "CVelmWork.h"
#include "VelmDocumentCheck.h"
#include "VelmGlobalParam.h"

#include <cstddef>

#define RECORD(record, size, member, offset) \
    static_assert(sizeof(record) == (size) && offsetof(record, member) == (offset), #record)

RECORD(VelmAnnItem, 80, inputtype, 72);
RECORD(VelmAnnItem, 80, linetype, 48);
RECORD(VelmAnnItem, 80, height, 16);
RECORD(VelmAreaLineItem, 48, hatchbkcolor, 44);
RECORD(VelmAreaLineItem, 48, linewidth, 8);
RECORD(VelmTableInfo, 16, _tableType, 12);
static_assert(sizeof(VelmTableItem) == 20, "its own member lies behind all of its base");
RECORD(VelmAttParam, 1, m_useConversion, 0);
RECORD(VelmFrameItem, 64, framesizetype, 56);
RECORD(VelmFrameItem, 64, configname, 24);
RECORD(VelmIndexItem, 32, exttable, 28);
RECORD(VelmRecordConfigType, 20, type, 16);
RECORD(VelmRecordConfig, 16, actualField, 12);
RECORD(VelmRecordGenusDatabase, 24, showPoint, 20);
RECORD(VelmColor, 12, b, 8);
RECORD(VelmProcessParam, 16, m_exitCode, 12);
RECORD(VelmWorkItem, 28, layer, 24);
RECORD(VelmDocumentCheck, 8, problems, 4);
RECORD(VelmUnknownKey, 12, path, 8);
RECORD(VelmFieldItem, 44, m_fieldExport, 40);
RECORD(VelmFieldItem, 44, m_fieldLength, 8);

RECORD(VelmSortRule, 48, m_yOff, 40);
RECORD(VelmSortRule, 48, m_bOneSortDir, 25);
RECORD(VelmFrameSize, 12, m_frameHeight, 8);
RECORD(VelmFrameTemplate, 8, m_templateFile, 4);
RECORD(VelmFrameSave, 48, m_frameLayoutName, 40);
RECORD(VelmFrameSave, 48, m_frameInsertX, 8);
RECORD(VelmFrameData, 72, m_frameSave, 24);
RECORD(VelmCommandInfo, 8, m_SaveDwgVersion, 4);
RECORD(VelmScript, 12, m_scriptPath, 8);
RECORD(VelmScriptParam, 12, m_scriptData, 8);
RECORD(VelmDrawModeParam, 8, m_bShowDrawModeTip, 6);
RECORD(VelmMustFieldData, 16, m_symbolColor, 12);
RECORD(VelmDataFormat, 12, m_splitSymbol, 8);
RECORD(VelmAnnNameMap, 40, m_nameForamt, 36);
RECORD(VelmAnnNameMap, 40, m_dimXOff, 8);
RECORD(VelmExportTemplate, 24, m_TemplatePosPath, 20);
RECORD(VelmExportFilter, 3, m_PolylinePolylineation, 2);
RECORD(VelmExportSettingData, 28, m_exportFilter, 24);
RECORD(VelmAreaAboutSetting, 8, m_aboutOfAreaType, 4);
RECORD(VelmGlobalParam, 248, m_progressBarParam, 244);
RECORD(VelmGlobalParam, 248, m_annNameMap, 168);

RECORD(CVelmRTreeMBR, 32, ymax, 24);
RECORD(CVelmRTreeBranch, 40, child, 32);
RECORD(CVelmRTreePartition, 152, area, 136);
RECORD(CVelmRTreePartition, 152, total, 52);
static_assert(sizeof(CVelmRTreeNode) == 576 && alignof(CVelmRTreeNode) == 64, "CVelmRTreeNode");
