#pragma once

#include "smarttable/sheet/SheetCells.h"

#include <string>
#include <string_view>

namespace SmartTable::detail {

/// Writes the rows of a sheet as <sheetData> holds them.
class SheetWriter
{
public:
    /// @p prefix is that of the names of elements, ":" included; mostly there is none.
    SheetWriter(std::string& xml, const SheetCells& cells, std::string_view prefix);

    /// Appends <sheetData> with all rows.
    void write();

private:
    void writeRow(int number, const Row& row);
    void writeCell(const Cell& cell);
    std::string_view textOf(const Cell& cell) const { return m_cells.texts.text(cell.index); }
    void writeText(std::string_view text, std::string_view type);
    void writeInline(std::string_view text);
    void writeMarkup(std::string_view text);

    std::string& m_xml;
    const SheetCells& m_cells;
    std::string m_prefix;
    std::string m_startOfCell;
    std::string m_value;
    std::string m_endOfCell;
    std::string m_endOfPlace;  // of the references to cells of the row that is written
};

/// Appends a text between the tags <t>, which keep its blanks.
void appendTextElement(std::string& xml, std::string_view prefix, std::string_view text);

}  // namespace SmartTable::detail
