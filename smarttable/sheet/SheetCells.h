#pragma once

#include "smarttable/sheet/CellReference.h"
#include "smarttable/sheet/RowTable.h"
#include "smarttable/sheet/TextPool.h"

namespace SmartTable::detail {

/// What stands between the tags of a sheet's <sheetData>.
struct SheetCells
{
    RowTable rows;
    TextPool texts;  // of the cells whose forms name texts of the sheet

    const Cell* find(const CellPlace& place) const
    {
        const Row* const row = rows.find(place.row);
        return row ? row->find(place.column) : nullptr;
    }
};

}  // namespace SmartTable::detail
