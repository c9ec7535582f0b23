#include "smarttable/sheet/SharedTexts.h"

#include "smarttable/sheet/CellMarkup.h"
#include "smarttable/sheet/NumberText.h"
#include "smarttable/sheet/SheetWriter.h"
#include "smarttable/xml/XmlScanner.h"
#include "smarttable/xml/XmlText.h"

namespace SmartTable::detail {

namespace {

using Token = XmlScanner::Token;

constexpr std::string_view kNames =
    " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";

std::string prefixOf(std::string_view fullName)
{
    const size_t colon = fullName.find(':');
    return colon == std::string_view::npos ? std::string()
                                           : std::string(fullName.substr(0, colon + 1));
}

}  // namespace

QString SharedTexts::load(std::string_view xml)
{
    *this = SharedTexts();
    XmlScanner scanner(xml);
    Token token = scanner.next();
    for (; token != Token::Done && token != Token::Broken; token = scanner.next()) {
        if (token != Token::Start)
            continue;
        const size_t from = scanner.tokenBegin();
        std::string_view content;
        if (scanner.depth() == 1) {
            m_prefix = prefixOf(scanner.fullName());
            appendAttributes(m_attributes, scanner.attributes(), [](std::string_view name) {
                return name == "count" || name == "uniqueCount";
            });
        } else if (scanner.name() != "si") {
            scanner.skipContent(content);
            m_tail += scanner.between(from, scanner.position());
        } else if (scanner.skipContent(content)) {
            addItem(content);
        }
    }
    m_loaded = m_texts.size();
    return token == Token::Done ? QString() : QStringLiteral("the XML of its texts is broken");
}

void SharedTexts::addItem(std::string_view content)
{
    std::string_view written;
    if (isPlainText(content, written)) {
        m_text.clear();
        appendCellText(m_text, written);
        m_texts.add(m_text);
    } else {
        m_markup.emplace(m_texts.add(richText(content)), content);
    }
}

/// The texts that were loaded are found from now on.
quint32 SharedTexts::add(std::string_view text)
{
    for (; m_found < m_loaded; ++m_found) {
        if (m_markup.count(m_found) == 0)
            m_texts.share(m_found);
    }
    return m_texts.addOnce(text);
}

std::string SharedTexts::save() const
{
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<" + m_prefix + "sst";
    xml += m_attributes.empty() ? kNames : std::string_view(m_attributes);
    xml += " uniqueCount=\"";
    appendNumber(xml, static_cast<qint64>(size()));
    xml += "\">";
    const std::string opening = "<" + m_prefix + "si>";
    const std::string closing = "</" + m_prefix + "si>";
    for (quint32 number = 0; number < size(); ++number) {
        xml += opening;
        const auto markup = m_markup.find(number);
        if (markup != m_markup.end())
            xml += markup->second;
        else
            appendTextElement(xml, m_prefix, text(number));
        xml += closing;
    }
    xml += m_tail;
    return xml + "</" + m_prefix + "sst>";
}

}  // namespace SmartTable::detail
