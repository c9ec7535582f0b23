#pragma once

#include "smarttable/sheet/Workbook.h"

#include <QString>

namespace SmartTable::detail {

/// Changes the cells of one sheet. All may throw std::bad_alloc.
class SheetEditor
{
public:
    /// Both are open and live longer.
    SheetEditor(Workbook& workbook, Sheet& sheet)
        : m_workbook(workbook), m_sheet(sheet), m_cells(sheet.content->cells)
    {}

    // What is wrong is answered, and nothing is changed then; empty if nothing is. The format of
    // the cell stays.

    QString setNumber(const CellPlace& place, double number);
    /// UTF-8.
    QString setText(const CellPlace& place, std::string_view text, bool asNumber);
    QString setFormula(const CellPlace& place, std::string_view formula, std::string_view value);
    QString setStyle(const CellPlace& place, quint32 style);
    QString setAlignment(const CellPlace& place, const char* name, const char* value);

    void remove(const CellPlace& place);
    QString merge(const CellRange& range);

private:
    Cell& change(const CellPlace& place);

    Workbook& m_workbook;
    Sheet& m_sheet;
    SheetCells& m_cells;
};

/// Whether a text reads as a number that would be written as the same text, but for zeros behind a
/// decimal point.
bool isNumberText(std::string_view text, double& number);

}  // namespace SmartTable::detail
