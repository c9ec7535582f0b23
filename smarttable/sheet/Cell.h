#pragma once

#include <QtGlobal>

namespace SmartTable::detail {

constexpr int kMostRows = 1048576;
constexpr int kMostColumns = 16384;
constexpr int kMostCellText = 32767;  // UTF-16 units

/// In which form a cell holds its value.
enum class CellForm : quint8
{
    Empty,   ///< a style at most
    Number,  ///< number
    Shared,  ///< index: a text of the workbook
    Inline,  ///< index: a text of the sheet
    Plain,   ///< index: a text of the sheet, written as that of a formula would be
    Bool,    ///< index: 0 or 1
    Error,   ///< index: a text of the sheet, "#DIV/0!"
    Date,    ///< index: a text of the sheet, as ISO 8601 has it
    Markup   ///< index: a text of the sheet, all of the cell but its place and style: see
             ///< CellMarkup.h
};

/// A cell of a sheet, in 16 bytes: a sheet may have millions.
struct Cell
{
    union
    {
        double number = 0;
        quint32 index;
    };
    quint32 style = 0;  // index of the workbook's cell formats
    quint16 column = 0;
    CellForm form = CellForm::Empty;

    bool isText() const
    {
        return form == CellForm::Shared || form == CellForm::Inline || form == CellForm::Plain;
    }
};
static_assert(sizeof(Cell) == 16);

}  // namespace SmartTable::detail
