#pragma once

#include <string>
#include <string_view>

namespace SmartTable::detail {

/// The place of a cell, rows and columns from 1.
struct CellPlace
{
    int row = 0;
    int column = 0;
};

/// A rectangle of cells, its corners included.
struct CellRange
{
    CellPlace first;  // upper left
    CellPlace last;   // lower right

    bool holds(const CellPlace& place) const
    {
        return place.row >= first.row && place.row <= last.row && place.column >= first.column
               && place.column <= last.column;
    }
    bool meets(const CellRange& other) const
    {
        return first.row <= other.last.row && other.first.row <= last.row
               && first.column <= other.last.column && other.first.column <= last.column;
    }
};

/// Whether a sheet has such a place.
bool isPlace(int row, int column);

/// "B7". False if the text is none, or beyond a sheet.
bool readPlace(std::string_view text, CellPlace& place);
/// "B7:D9" or "B7".
bool readRange(std::string_view text, CellRange& range);

void appendColumn(std::string& text, int column);
void appendPlace(std::string& text, const CellPlace& place);
std::string rangeText(const CellRange& range);

}  // namespace SmartTable::detail
