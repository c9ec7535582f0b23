#include "smarttable/sheet/SheetEditor.h"

#include "smarttable/sheet/CellMarkup.h"
#include "smarttable/sheet/NumberText.h"
#include "smarttable/xml/Elements.h"
#include "smarttable/xml/XmlText.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace SmartTable::detail {

namespace {

QString noPlace()
{
    return QStringLiteral("a sheet has %1 rows and %2 columns").arg(kMostRows).arg(kMostColumns);
}

/// UTF-16 units of UTF-8.
size_t unitsOf(std::string_view text)
{
    size_t units = 0;
    for (const char ch : text) {
        const auto byte = static_cast<unsigned char>(ch);
        units += (byte & 0xC0) != 0x80 ? 1 : 0;  // the first byte of a character
        units += byte >= 0xF0 ? 1 : 0;           // of one that takes two units
    }
    return units;
}

}  // namespace

bool isNumberText(std::string_view text, double& number)
{
    const std::string_view digits = text.substr(!text.empty() && text[0] == '-' ? 1 : 0);
    const bool isDigit = !digits.empty() && digits[0] >= '0' && digits[0] <= '9';
    const bool losesZero = digits.size() > 1 && digits[0] == '0' && digits[1] != '.';
    constexpr size_t kMostDigits = 15;  // of a double
    const auto count = static_cast<size_t>(std::count_if(
        digits.begin(), digits.end(), [](char ch) { return ch >= '0' && ch <= '9'; }));
    return isDigit && !losesZero && count <= kMostDigits
           && digits.find_first_not_of("0123456789.") == std::string_view::npos
           && readNumber(text, number);
}

/// The cell, which is to get another value.
Cell& SheetEditor::change(const CellPlace& place)
{
    m_sheet.isTouched = true;
    Cell& cell = m_cells.rows.at(place.row).at(place.column);
    if (cell.form == CellForm::Markup)
        m_workbook.changeFormulas();
    return cell;
}

QString SheetEditor::setNumber(const CellPlace& place, double number)
{
    if (!isPlace(place.row, place.column))
        return noPlace();
    if (!std::isfinite(number))
        return QStringLiteral("a cell holds finite numbers only");
    Cell& cell = change(place);
    cell.number = number;
    cell.form = CellForm::Number;
    return QString();
}

QString SheetEditor::setText(const CellPlace& place, std::string_view text, bool asNumber)
{
    double number = 0;
    if (asNumber && isNumberText(text, number))
        return setNumber(place, number);
    if (!isPlace(place.row, place.column))
        return noPlace();
    if (text.size() > kMostCellText && unitsOf(text) > kMostCellText)
        return QStringLiteral("a cell holds up to %1 characters").arg(kMostCellText);
    const quint32 index = m_workbook.texts().add(text);
    Cell& cell = change(place);
    cell.index = index;
    cell.form = CellForm::Shared;
    return QString();
}

QString SheetEditor::setFormula(const CellPlace& place, std::string_view formula,
                                std::string_view value)
{
    constexpr size_t kMostFormula = 8192;
    if (!isPlace(place.row, place.column))
        return noPlace();
    if (!formula.empty() && formula[0] == '=')
        formula.remove_prefix(1);
    if (formula.empty() || unitsOf(formula) > kMostFormula)
        return QStringLiteral("a formula has 1 to %1 characters").arg(kMostFormula);
    double number = 0;
    const bool isNumber = isNumberText(value, number);
    std::string content = "<f>";
    appendEscaped(content, formula);
    content += "</f>";
    if (!value.empty()) {
        content += "<v>";
        appendEscapedCellText(content, value);
        content += "</v>";
    }
    const quint32 index =
        m_cells.texts.add(joinedMarkup({isNumber || value.empty() ? "" : " t=\"str\"", content}));
    Cell& cell = change(place);
    cell.index = index;
    cell.form = CellForm::Markup;
    m_workbook.changeFormulas();
    return QString();
}

QString SheetEditor::setStyle(const CellPlace& place, quint32 style)
{
    if (!isPlace(place.row, place.column))
        return noPlace();
    if (style >= m_workbook.styles().count())
        return QStringLiteral("the workbook has no format %1").arg(style);
    m_sheet.isTouched = true;
    m_cells.rows.at(place.row).at(place.column).style = style;
    return QString();
}

QString SheetEditor::setAlignment(const CellPlace& place, const char* name, const char* value)
{
    if (!isPlace(place.row, place.column))
        return noPlace();
    const Cell* const cell = m_cells.find(place);
    return setStyle(place, m_workbook.styles().aligned(cell ? cell->style : 0, name, value));
}

void SheetEditor::remove(const CellPlace& place)
{
    Row* const row = m_cells.rows.find(place.row);
    const Cell* const cell = row ? row->find(place.column) : nullptr;
    if (!cell)
        return;
    if (cell->form == CellForm::Markup)
        m_workbook.changeFormulas();
    row->remove(place.column);
    m_sheet.isTouched = true;
}

QString SheetEditor::merge(const CellRange& range)
{
    if (!isPlace(range.first.row, range.first.column)
        || !isPlace(range.last.row, range.last.column))
        return noPlace();
    pugi::xml_node merges = m_sheet.content->element("mergeCells");
    std::vector<pugi::xml_node> gone;
    int count = 0;
    for (pugi::xml_node merged : merges.children()) {
        CellRange other;
        ++count;
        if (readRange(merged.attribute("ref").value(), other) && other.meets(range))
            gone.push_back(merged);
    }
    for (const pugi::xml_node& merged : gone)
        merges.remove_child(merged);
    count -= static_cast<int>(gone.size());
    const bool isOne = range.first.row == range.last.row && range.first.column == range.last.column;
    if (!isOne) {
        setAttribute(appendChild(merges, "mergeCell"), "ref",
                     QString::fromStdString(rangeText(range)));
        ++count;
    }
    setAttribute(merges, "count", QString::number(count));
    if (count == 0)
        m_sheet.content->removeElement("mergeCells");
    m_sheet.isTouched = true;
    for (int row = m_cells.rows.next(range.first.row); row > 0 && row <= range.last.row;
         row = m_cells.rows.next(row + 1)) {
        for (Cell& cell : m_cells.rows.find(row)->cells()) {
            const CellPlace place{row, cell.column};
            const bool isFirst = row == range.first.row && place.column == range.first.column;
            if (range.holds(place) && !isFirst)
                cell.form = CellForm::Empty;
        }
    }
    return QString();
}

}  // namespace SmartTable::detail
