#pragma once

#include "smarttable/sheet/SharedTexts.h"
#include "smarttable/sheet/SheetCells.h"

#include <string>

namespace SmartTable::detail {

/// What a cell holds, in the forms that users ask for.
class CellValue
{
public:
    CellValue(const Cell& cell, const SheetCells& cells, const SharedTexts& texts);

    /// As it would be typed, without a format of numbers; empty for an empty cell.
    const std::string& text() const { return m_text; }
    /// The number; that which a text reads as, 0 if it is none; 1 for "TRUE".
    double number() const { return m_number; }
    /// One of the public CellKind.
    int kind() const { return m_kind; }

private:
    void take(CellForm form, std::string_view written, const SharedTexts& texts);
    void takeText(std::string_view text);
    void takeNumber(double number);

    std::string m_text;
    double m_number = 0;
    int m_kind = 0;
};

}  // namespace SmartTable::detail
