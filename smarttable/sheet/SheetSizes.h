#pragma once

#include "smarttable/sheet/Sheet.h"

#include <QString>

namespace SmartTable::detail {

/// In points; that of the sheet's other rows if it has none of its own.
double rowHeight(const Worksheet& sheet, int row);
/// In characters of the usual font; that of the sheet's other columns if it has none of its own.
double columnWidth(const Worksheet& sheet, int column);

// What is wrong is answered; empty if nothing is.

QString setRowHeight(Sheet& sheet, int row, double height);
QString setColumnWidth(Sheet& sheet, int column, double width);

}  // namespace SmartTable::detail
