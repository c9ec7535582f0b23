#include "smarttable/sheet/SheetReader.h"

#include "smarttable/sheet/CellMarkup.h"
#include "smarttable/sheet/NumberText.h"
#include "smarttable/xml/XmlText.h"

namespace SmartTable::detail {

namespace {

using Token = XmlScanner::Token;

QString brokenXml()
{
    return QStringLiteral("its XML is broken");
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    const size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

QString SheetReader::read()
{
    const int inside = m_xml.depth();
    while (true) {
        const Token token = m_xml.next();
        if (token == Token::Broken || token == Token::Done)
            return brokenXml();
        if (token == Token::End && m_xml.depth() < inside)
            return QString();
        if (token != Token::Start)
            continue;
        QString problem;
        std::string_view skipped;
        if (m_xml.name() == "row")
            problem = readRow();
        else if (!m_xml.skipContent(skipped))
            problem = brokenXml();
        if (!problem.isEmpty())
            return problem;
    }
}

QString SheetReader::readRow()
{
    const std::string_view attributes = m_xml.attributes();
    const std::string_view number = attributeOf(attributes, "r");
    quint32 row = static_cast<quint32>(m_row) + 1;
    if ((!number.empty() && !readNumber(number, row)) || !isPlace(static_cast<int>(row), 1))
        return QStringLiteral("a row has the number \"%1\"")
            .arg(QString::fromUtf8(number.data(), static_cast<int>(number.size())));
    m_row = static_cast<int>(row);
    m_column = 0;
    m_current = &m_cells.rows.at(m_row);
    m_current->attributes.clear();
    appendAttributes(m_current->attributes, attributes,
                     [](std::string_view name) { return name == "r" || name == "spans"; });
    m_current->cells().reserve(m_expected);
    const int inside = m_xml.depth();
    for (Token token = m_xml.next(); token != Token::End || m_xml.depth() >= inside;
         token = m_xml.next()) {
        const size_t from = m_xml.tokenBegin();
        std::string_view content;
        QString problem;
        if (token == Token::Broken || token == Token::Done)
            return brokenXml();
        if (token == Token::Start && m_xml.name() == "c")
            problem = readCell();
        else if (token == Token::Start && m_xml.skipContent(content))
            m_current->tail += m_xml.between(from, m_xml.position());
        if (!problem.isEmpty())
            return problem;
    }
    m_expected = m_current->cells().size();
    return QString();
}

QString SheetReader::readCell()
{
    m_attributes = m_xml.attributes();
    m_type = std::string_view();
    m_style = 0;
    m_isMarkup = false;
    ++m_column;
    XmlAttributes each(m_attributes);
    while (each.next()) {
        const std::string_view name = each.name();
        CellPlace place;
        if (name == "r") {
            if (!readPlace(each.value(), place) || place.row != m_row)
                return QStringLiteral("row %1 has a cell \"%2\"")
                    .arg(m_row)
                    .arg(QString::fromUtf8(each.value().data(),
                                           static_cast<int>(each.value().size())));
            m_column = place.column;
        } else if (name == "s") {
            if (!readNumber(each.value(), m_style))
                m_style = 0;
        } else if (name == "t") {
            m_type = each.value();
        } else {
            m_isMarkup = true;
        }
    }
    if (m_column > kMostColumns)
        return QStringLiteral("row %1 has too many cells").arg(m_row);
    QString problem = readContent();
    if (problem.isEmpty())
        placeCell();
    return problem;
}

QString SheetReader::readContent()
{
    const size_t from = m_xml.position();
    const int inside = m_xml.depth();
    m_value = std::string_view();
    m_hasValue = false;
    for (Token token = m_xml.next(); token != Token::End || m_xml.depth() >= inside;
         token = m_xml.next()) {
        std::string_view content;
        if (token == Token::Broken || token == Token::Done)
            return brokenXml();
        if (token != Token::Start)
            continue;
        const bool isValue = m_xml.name() == "v" && !m_hasValue;
        const bool isInline = m_xml.name() == "is" && !m_hasValue && m_type == "inlineStr";
        if (!m_xml.skipContent(content))
            return brokenXml();
        if (isValue && content.find('<') == std::string_view::npos)
            m_value = content;
        else if (!isInline || !isPlainText(content, m_value))
            m_isMarkup = true;
        m_hasValue = true;
    }
    m_content = m_xml.between(from, m_xml.tokenBegin());
    return QString();
}

void SheetReader::placeCell()
{
    Cell& cell = m_current->at(m_column);
    cell.style = m_style;
    cell.form = CellForm::Empty;
    if (m_isMarkup || (m_hasValue && !setPlain(cell)))
        setMarkup(cell);
}

/// Whether the value can be held in one of the plain forms.
bool SheetReader::setPlain(Cell& cell)
{
    const CellForm form = formOf(m_type);
    quint32 index = 0;
    switch (form) {
    case CellForm::Number:
        if (!readNumber(trimmed(m_value), cell.number))
            return false;
        break;
    case CellForm::Shared:
    case CellForm::Bool:
        if (!readNumber(trimmed(m_value), index)
            || index >= (form == CellForm::Bool ? 2 : m_sharedTexts))
            return false;
        cell.index = index;
        break;
    case CellForm::Inline:
    case CellForm::Plain:
    case CellForm::Error:
    case CellForm::Date:
        m_text.clear();
        appendCellText(m_text, m_value);
        cell.index = m_cells.texts.add(m_text);
        break;
    default:
        return false;
    }
    cell.form = form;
    return true;
}

void SheetReader::setMarkup(Cell& cell)
{
    m_text.clear();
    appendAttributes(m_text, m_attributes,
                     [](std::string_view name) { return name == "r" || name == "s"; });
    cell.index = m_cells.texts.add(joinedMarkup({m_text, m_content}));
    cell.form = CellForm::Markup;
}

}  // namespace SmartTable::detail
