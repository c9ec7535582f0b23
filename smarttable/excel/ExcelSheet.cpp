#include "smarttable/excel/ExcelPrivate.h"
#include "smarttable/sheet/CellValue.h"
#include "smarttable/sheet/SheetEditor.h"
#include "smarttable/sheet/SheetSizes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace SmartTable {

using detail::Cell;
using detail::CellValue;
using detail::SheetCells;
using detail::SheetEditor;

namespace {

constexpr std::array<const char*, 8> kHorizontal{
    "general", "left", "center", "right", "fill", "justify", "centerContinuous", "distributed"};
constexpr std::array<const char*, 5> kVertical{"top", "center", "bottom", "justify", "distributed"};

}  // namespace

ExcelCellData ExcelSheet::Private::dataOf(const Cell& cell, int row) const
{
    const CellValue value = valueOf(cell);
    ExcelCellData data;
    data.row = row;
    data.col = cell.column;
    data.text = session->answered(value.text());
    data.kind = value.kind();
    return data;
}

ExcelSheet::ExcelSheet() : d(new Private) {}

ExcelSheet::ExcelSheet(const ExcelSheet& other) : d(new Private(*other.d)) {}

ExcelSheet::~ExcelSheet()
{
    delete d;
}

ExcelSheet& ExcelSheet::operator=(const ExcelSheet& other)
{
    if (this != &other)
        *d = *other.d;
    return *this;
}

String ExcelSheet::name() const
{
    return d->isOpen() ? d->session->answered(d->sheet->name.toStdString()) : String();
}

void ExcelSheet::setName(const char* name)
{
    if (d->isOpen())
        d->session->run(
            [&] { return d->sheet->workbook->rename(*d->sheet, d->session->givenText(name)); });
}

int ExcelSheet::sheetID() const
{
    return d->isOpen() ? d->sheet->id : 0;
}

IntList ExcelSheet::rows() const
{
    std::vector<int> numbers;
    if (d->isOpen()) {
        const detail::RowTable& rows = d->sheet->content->cells.rows;
        for (int row = rows.next(1); row > 0; row = rows.next(row + 1))
            numbers.push_back(row);
    }
    return detail::listOf(numbers);
}

IntList ExcelSheet::cols(int row) const
{
    std::vector<int> numbers;
    const detail::Row* const found =
        d->isOpen() ? d->sheet->content->cells.rows.find(row) : nullptr;
    if (found) {
        for (const Cell& cell : found->cells())
            numbers.push_back(cell.column);
    }
    return detail::listOf(numbers);
}

double ExcelSheet::getRowH(int row) const
{
    return d->isOpen() ? detail::rowHeight(*d->sheet->content, row) : 0;
}

double ExcelSheet::getColW(int col) const
{
    return d->isOpen() ? detail::columnWidth(*d->sheet->content, col) : 0;
}

void ExcelSheet::setRowH(int row, double height)
{
    d->change([&](SheetEditor&) { return detail::setRowHeight(*d->sheet, row, height); });
}

void ExcelSheet::setColW(int col, double width)
{
    d->change([&](SheetEditor&) { return detail::setColumnWidth(*d->sheet, col, width); });
}

ExcelCellDataList ExcelSheet::allCellData() const
{
    ExcelCellDataList list;
    if (!d->isOpen())
        return list;
    const SheetCells& cells = d->sheet->content->cells;
    size_t count = 0;
    for (int row = cells.rows.next(1); row > 0; row = cells.rows.next(row + 1))
        count += cells.rows.find(row)->cells().size();
    ExcelCellData* data = list.create(static_cast<int>(count));
    for (int row = cells.rows.next(1); data && row > 0; row = cells.rows.next(row + 1)) {
        for (const Cell& cell : cells.rows.find(row)->cells())
            *data++ = d->dataOf(cell, row);
    }
    return list;
}

ExcelCellData ExcelSheet::cellData(int row, int col) const
{
    ExcelCellData data;
    data.row = row;
    data.col = col;
    const Cell* const cell = d->find(row, col);
    return cell ? d->dataOf(*cell, row) : data;
}

int ExcelSheet::getCellInt(int row, int col) const
{
    constexpr double kMost = std::numeric_limits<int>::max();
    constexpr double kLeast = std::numeric_limits<int>::min();
    return static_cast<int>(std::max(kLeast, std::min(kMost, std::trunc(getCellDouble(row, col)))));
}

double ExcelSheet::getCellDouble(int row, int col) const
{
    const Cell* const cell = d->find(row, col);
    return cell ? d->valueOf(*cell).number() : 0;
}

String ExcelSheet::getCellText(int row, int col) const
{
    const Cell* const cell = d->find(row, col);
    return cell ? d->session->answered(d->valueOf(*cell).text()) : String();
}

bool ExcelSheet::setCellValueInt(int row, int col, int value)
{
    return setCellValueDouble(row, col, value);
}

bool ExcelSheet::setCellValueDouble(int row, int col, double value)
{
    return d->change([&](SheetEditor& sheet) { return sheet.setNumber({row, col}, value); });
}

bool ExcelSheet::setCellValueText(int row, int col, const char* text, bool asNumber)
{
    return d->change([&](SheetEditor& sheet) {
        return sheet.setText({row, col}, d->session->given(text), asNumber);
    });
}

void ExcelSheet::setCellFunction(int row, int col, const char* formula, const char* value)
{
    d->change([&](SheetEditor& sheet) {
        return sheet.setFormula({row, col}, d->session->given(formula), d->session->given(value));
    });
}

void ExcelSheet::setCellProperty(int row, int col, int property)
{
    d->change([&](SheetEditor& sheet) {
        return sheet.setStyle({row, col}, static_cast<quint32>(property));
    });
}

bool ExcelSheet::setCellHAlign(int row, int col, int align)
{
    if (align < 0 || align >= static_cast<int>(kHorizontal.size()))
        return false;
    return d->change([&](SheetEditor& sheet) {
        return sheet.setAlignment({row, col}, "horizontal",
                                  kHorizontal[static_cast<size_t>(align)]);
    });
}

bool ExcelSheet::setCellVAlign(int row, int col, int align)
{
    if (align < 0 || align >= static_cast<int>(kVertical.size()))
        return false;
    return d->change([&](SheetEditor& sheet) {
        return sheet.setAlignment({row, col}, "vertical", kVertical[static_cast<size_t>(align)]);
    });
}

void ExcelSheet::merge(int row1, int col1, int row2, int col2)
{
    d->change([&](SheetEditor& sheet) {
        return sheet.merge({{std::min(row1, row2), std::min(col1, col2)},
                            {std::max(row1, row2), std::max(col1, col2)}});
    });
}

void ExcelSheet::removeCell(int row, int col)
{
    d->change([&](SheetEditor& sheet) {
        sheet.remove({row, col});
        return QString();
    });
}

}  // namespace SmartTable
