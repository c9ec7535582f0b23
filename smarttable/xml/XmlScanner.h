#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace SmartTable::detail {

/// Goes through XML in memory (UTF-8) tag by tag, for parts that are too large for a document tree.
/// Nothing is copied: names, attributes and texts are pieces of the XML. Comments and processing
/// instructions are passed over. What is not well-formed, a document type, and elements deeper than
/// kMostXmlDepth end it. References to characters are left as they stand: see XmlText.h.
class XmlScanner
{
public:
    enum class Token
    {
        Start,
        End,
        Text,
        Done,
        Broken
    };

    explicit XmlScanner(std::string_view xml) : m_xml(xml) {}

    /// An element without content gives a Start and an End.
    Token next();

    /// Of the Start or End that was found: its name without a prefix.
    std::string_view name() const;
    /// The name as it is written.
    std::string_view fullName() const { return m_name; }
    /// Of a Start: what stands between its name and its end.
    std::string_view attributes() const { return m_attributes; }
    /// Of a Text: as it is written. Whether it is of a CDATA section, without references.
    std::string_view text() const { return m_text; }
    bool isVerbatim() const { return m_isVerbatim; }

    /// How many elements are open, the one that was just started included.
    int depth() const { return static_cast<int>(m_open.size()); }
    /// Where the token that was found begins, and where the next one is sought.
    size_t tokenBegin() const { return m_begin; }
    size_t position() const { return m_at; }
    std::string_view between(size_t from, size_t to) const { return m_xml.substr(from, to - from); }

    /// Behind the Start of an element: passes its End, and gives what it holds, as it is written.
    /// False if the XML is broken.
    bool skipContent(std::string_view& content);

private:
    Token broken();
    Token readTag();
    Token readMarked();
    Token readStart(size_t end);
    Token readEnd(size_t end);
    Token readText();
    bool passOver(std::string_view opening, std::string_view closing);

    std::string_view m_xml;
    size_t m_at = 0;
    size_t m_begin = 0;
    std::string_view m_name;
    std::string_view m_attributes;
    std::string_view m_text;
    std::vector<std::string_view> m_open;
    bool m_isVerbatim = false;
    bool m_isClosing = false;  // the end of an element without content is due
    bool m_isBroken = false;
};

/// One attribute after the other of a tag.
class XmlAttributes
{
public:
    explicit XmlAttributes(std::string_view attributes) : m_rest(attributes) {}

    /// False at the end, or where they are not well-formed.
    bool next();

    std::string_view name() const { return m_name; }
    /// As it is written, without its quotes.
    std::string_view value() const { return m_value; }
    /// Name, "=", quotes and value.
    std::string_view written() const { return m_written; }

private:
    std::string_view m_rest;
    std::string_view m_name;
    std::string_view m_value;
    std::string_view m_written;
};

/// The value of the attribute @p name, as it is written; empty if there is none.
std::string_view attributeOf(std::string_view attributes, std::string_view name);

/// Appends the attributes that @p isLeftOut does not name, each behind a blank.
template<class LeftOut>
void appendAttributes(std::string& written, std::string_view attributes, const LeftOut& isLeftOut)
{
    XmlAttributes each(attributes);
    while (each.next()) {
        if (!isLeftOut(each.name())) {
            written += ' ';
            written += each.written();
        }
    }
}

}  // namespace SmartTable::detail
