#pragma once

#include "smarttable/excel/Session.h"
#include "smarttable/sheet/CellValue.h"
#include "smarttable/sheet/SheetEditor.h"

namespace SmartTable {

class Excel::Private
{
public:
    std::shared_ptr<detail::Session> session = std::make_shared<detail::Session>();

    static QString noSheet() { return QStringLiteral("there is no such sheet"); }
    /// Makes @p sheet stand for one that was found, and reads it. @return what is wrong; empty if
    /// nothing is
    QString give(const detail::Workbook::SheetPointer& found, ExcelSheet& sheet) const;
};

class ExcelSheet::Private
{
public:
    std::shared_ptr<detail::Session> session;
    std::shared_ptr<detail::Sheet> sheet;

    /// Whether there is a sheet that can be asked; reads it if need be.
    bool isOpen() const
    {
        return sheet && sheet->workbook && (sheet->content || session->run([this] {
                   return sheet->workbook->open(*sheet);
               }));
    }

    /// Null where there is none.
    const detail::Cell* find(int row, int column) const
    {
        return isOpen() ? sheet->content->cells.find({row, column}) : nullptr;
    }
    detail::CellValue valueOf(const detail::Cell& cell) const
    {
        return detail::CellValue(cell, sheet->content->cells, sheet->workbook->texts());
    }
    ExcelCellData dataOf(const detail::Cell& cell, int row) const;

    /// Changes the sheet. False if there is none, or the operation answers what is wrong.
    template<class Operation>
    bool change(const Operation& operation) const
    {
        return isOpen() && session->run([&] {
            detail::SheetEditor editor(*sheet->workbook, *sheet);
            return operation(editor);
        });
    }
};

}  // namespace SmartTable
