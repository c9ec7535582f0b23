#include "smarttable/sheet/SheetWriter.h"

#include "smarttable/sheet/CellMarkup.h"
#include "smarttable/sheet/NumberText.h"
#include "smarttable/xml/XmlText.h"

namespace SmartTable::detail {

namespace {

bool isBlank(char ch)
{
    return ch == ' ' || ch == '\t' || ch == '\n' || ch == '\r';
}

std::string tag(std::string_view opening, std::string_view prefix, std::string_view rest)
{
    std::string text(opening);
    text += prefix;
    text += rest;
    return text;
}

}  // namespace

void appendTextElement(std::string& xml, std::string_view prefix, std::string_view text)
{
    const bool hasEnds = !text.empty() && (isBlank(text.front()) || isBlank(text.back()));
    xml += '<';
    xml += prefix;
    xml += hasEnds ? "t xml:space=\"preserve\">" : "t>";
    appendEscapedCellText(xml, text);
    xml += "</";
    xml += prefix;
    xml += "t>";
}

SheetWriter::SheetWriter(std::string& xml, const SheetCells& cells, std::string_view prefix)
    : m_xml(xml), m_cells(cells), m_prefix(prefix), m_startOfCell(tag("<", prefix, "c r=\"")),
      m_value(tag("<", prefix, "v>")), m_endOfCell(tag("</", prefix, "v></") + m_prefix + "c>")
{}

void SheetWriter::write()
{
    int number = m_cells.rows.next(1);
    m_xml += tag("<", m_prefix, number > 0 ? "sheetData>" : "sheetData/>");
    for (; number > 0; number = m_cells.rows.next(number + 1))
        writeRow(number, *m_cells.rows.find(number));
    if (m_cells.rows.count() > 0)
        m_xml += tag("</", m_prefix, "sheetData>");
}

void SheetWriter::writeRow(int number, const Row& row)
{
    m_endOfPlace.clear();
    appendNumber(m_endOfPlace, number);
    m_endOfPlace += '"';
    m_xml += tag("<", m_prefix, "row r=\"");
    m_xml += m_endOfPlace;
    m_xml += row.attributes;
    if (row.cells().empty() && row.tail.empty()) {
        m_xml += "/>";
        return;
    }
    m_xml += '>';
    for (const Cell& cell : row.cells())
        writeCell(cell);
    m_xml += row.tail;
    m_xml += tag("</", m_prefix, "row>");
}

void SheetWriter::writeCell(const Cell& cell)
{
    m_xml += m_startOfCell;
    appendColumn(m_xml, cell.column);
    m_xml += m_endOfPlace;
    if (cell.style != 0) {
        m_xml += " s=\"";
        appendNumber(m_xml, static_cast<qint64>(cell.style));
        m_xml += '"';
    }
    switch (cell.form) {
    case CellForm::Empty:
        m_xml += "/>";
        break;
    case CellForm::Number:
        m_xml += '>';
        m_xml += m_value;
        appendNumber(m_xml, cell.number);
        m_xml += m_endOfCell;
        break;
    case CellForm::Shared:
    case CellForm::Bool:
        m_xml += cell.form == CellForm::Bool ? " t=\"b\">" : " t=\"s\">";
        m_xml += m_value;
        appendNumber(m_xml, static_cast<qint64>(cell.index));
        m_xml += m_endOfCell;
        break;
    case CellForm::Inline:
        writeInline(textOf(cell));
        break;
    case CellForm::Plain:
        writeText(textOf(cell), " t=\"str\">");
        break;
    case CellForm::Error:
        writeText(textOf(cell), " t=\"e\">");
        break;
    case CellForm::Date:
        writeText(textOf(cell), " t=\"d\">");
        break;
    case CellForm::Markup:
        writeMarkup(textOf(cell));
        break;
    }
}

void SheetWriter::writeText(std::string_view text, std::string_view type)
{
    m_xml += type;
    m_xml += m_value;
    appendEscapedCellText(m_xml, text);
    m_xml += m_endOfCell;
}

void SheetWriter::writeInline(std::string_view text)
{
    m_xml += " t=\"inlineStr\">";
    m_xml += tag("<", m_prefix, "is>");
    appendTextElement(m_xml, m_prefix, text);
    m_xml += tag("</", m_prefix, "is></") + m_prefix + "c>";
}

void SheetWriter::writeMarkup(std::string_view text)
{
    const CellMarkup markup = splitMarkup(text);
    m_xml += markup.attributes;
    m_xml += '>';
    m_xml += markup.content;
    m_xml += tag("</", m_prefix, "c>");
}

}  // namespace SmartTable::detail
