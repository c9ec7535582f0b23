#include "smarttable/xml/XmlScanner.h"

#include <algorithm>

namespace SmartTable::detail {

namespace {

constexpr int kMostXmlDepth = 256;

constexpr std::string_view kBlanks = " \t\r\n";

bool isBlank(char ch)
{
    return kBlanks.find(ch) != std::string_view::npos;
}

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

std::string_view withoutBlanks(std::string_view text)
{
    const size_t first = text.find_first_not_of(kBlanks);
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

/// Where the ">" of a tag stands: not one within the quotes of a value.
size_t endOfTag(std::string_view xml, size_t from)
{
    for (size_t at = from; at < xml.size(); ++at) {
        const char ch = xml[at];
        if (ch == '>')
            return at;
        if (ch == '<')
            break;
        if (ch == '"' || ch == '\'') {
            at = xml.find(ch, at + 1);
            if (at == std::string_view::npos)
                break;
        }
    }
    return std::string_view::npos;
}

}  // namespace

XmlScanner::Token XmlScanner::broken()
{
    m_isBroken = true;
    return Token::Broken;
}

std::string_view XmlScanner::name() const
{
    const size_t colon = m_name.find(':');
    return colon == std::string_view::npos ? m_name : m_name.substr(colon + 1);
}

XmlScanner::Token XmlScanner::next()
{
    if (m_isBroken)
        return Token::Broken;
    if (m_isClosing) {
        m_isClosing = false;
        m_open.pop_back();
        m_begin = m_at;
        return Token::End;
    }
    while (m_at < m_xml.size()) {
        m_begin = m_at;
        if (m_xml[m_at] != '<')
            return readText();
        const char kind = m_at + 1 < m_xml.size() ? m_xml[m_at + 1] : '\0';
        if (kind != '!' && kind != '?')
            return readTag();
        if (passOver("<!--", "-->") || passOver("<?", "?>"))
            continue;
        return m_isBroken ? Token::Broken : readMarked();
    }
    return m_open.empty() ? Token::Done : broken();
}

/// Whether there is something that is passed over. Without its end, the XML is broken.
bool XmlScanner::passOver(std::string_view opening, std::string_view closing)
{
    if (!startsWith(m_xml.substr(m_at), opening))
        return false;
    const size_t end = m_xml.find(closing, m_at + opening.size());
    m_isBroken = end == std::string_view::npos;
    if (!m_isBroken)
        m_at = end + closing.size();
    return !m_isBroken;
}

/// A CDATA section. Anything else is a document type, which no part has.
XmlScanner::Token XmlScanner::readMarked()
{
    constexpr std::string_view kVerbatim = "<![CDATA[";
    constexpr std::string_view kVerbatimEnd = "]]>";
    const std::string_view rest = m_xml.substr(m_at);
    const size_t end = rest.find(kVerbatimEnd);
    if (!startsWith(rest, kVerbatim) || end == std::string_view::npos || m_open.empty())
        return broken();
    m_text = rest.substr(kVerbatim.size(), end - kVerbatim.size());
    m_isVerbatim = true;
    m_at += end + kVerbatimEnd.size();
    return Token::Text;
}

XmlScanner::Token XmlScanner::readTag()
{
    const size_t end = endOfTag(m_xml, m_at + 1);
    if (end == std::string_view::npos)
        return broken();
    return m_xml[m_at + 1] == '/' ? readEnd(end) : readStart(end);
}

XmlScanner::Token XmlScanner::readStart(size_t end)
{
    std::string_view tag = m_xml.substr(m_at + 1, end - m_at - 1);
    m_isClosing = !tag.empty() && tag.back() == '/';
    if (m_isClosing)
        tag.remove_suffix(1);
    const size_t nameEnd = std::min(tag.find_first_of(kBlanks), tag.size());
    m_name = tag.substr(0, nameEnd);
    m_attributes = tag.substr(nameEnd);
    if (m_name.empty() || depth() >= kMostXmlDepth)
        return broken();
    m_open.push_back(m_name);
    m_at = end + 1;
    return Token::Start;
}

XmlScanner::Token XmlScanner::readEnd(size_t end)
{
    std::string_view name = m_xml.substr(m_at + 2, end - m_at - 2);
    while (!name.empty() && isBlank(name.back()))
        name.remove_suffix(1);
    if (m_open.empty() || m_open.back() != name)
        return broken();
    m_open.pop_back();
    m_name = name;
    m_at = end + 1;
    return Token::End;
}

XmlScanner::Token XmlScanner::readText()
{
    const size_t end = std::min(m_xml.find('<', m_at), m_xml.size());
    m_text = m_xml.substr(m_at, end - m_at);
    m_isVerbatim = false;
    m_at = end;
    return Token::Text;
}

bool XmlScanner::skipContent(std::string_view& content)
{
    const int outside = depth() - 1;
    const size_t from = m_at;
    Token token = next();
    while (token != Token::Broken && token != Token::Done && depth() > outside)
        token = next();
    content = m_xml.substr(from, m_begin - from);
    return token == Token::End;
}

bool XmlAttributes::next()
{
    m_rest = withoutBlanks(m_rest);
    const size_t equals = m_rest.find('=');
    if (equals == std::string_view::npos)
        return false;
    m_name = m_rest.substr(0, equals);
    while (!m_name.empty() && isBlank(m_name.back()))
        m_name.remove_suffix(1);
    const std::string_view quoted = withoutBlanks(m_rest.substr(equals + 1));
    if (quoted.empty() || (quoted[0] != '"' && quoted[0] != '\''))
        return false;
    const size_t end = quoted.find(quoted[0], 1);
    if (end == std::string_view::npos)
        return false;
    m_value = quoted.substr(1, end - 1);
    m_written = m_rest.substr(0, m_rest.size() - quoted.size() + end + 1);
    m_rest = quoted.substr(end + 1);
    return true;
}

std::string_view attributeOf(std::string_view attributes, std::string_view name)
{
    XmlAttributes each(attributes);
    while (each.next()) {
        if (each.name() == name)
            return each.value();
    }
    return std::string_view();
}

}  // namespace SmartTable::detail
