#pragma once

#include <QtCore/qglobal.h>

/// Marks what the library SmartTable exports. SMARTTABLE_LIBRARY is defined only where its objects
/// are built or linked themselves.
#if defined(SMARTTABLE_LIBRARY)
#define SMARTTABLE_EXPORT Q_DECL_EXPORT
#else
#define SMARTTABLE_EXPORT Q_DECL_IMPORT
#endif

/// Workbooks and documents without an office program.
namespace SmartTable {

/// The version of the library that is loaded, e.g. "0.2.0".
SMARTTABLE_EXPORT const char* version();

}  // namespace SmartTable
