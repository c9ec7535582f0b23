#include "smarttable/sheet/CellMarkup.h"

#include "smarttable/xml/XmlScanner.h"
#include "smarttable/xml/XmlText.h"

namespace SmartTable::detail {

namespace {

using Token = XmlScanner::Token;

/// The texts of an element that was just started, up to its end.
void appendContent(std::string& text, XmlScanner& xml)
{
    const int inside = xml.depth();
    for (Token token = xml.next(); token == Token::Text || token == Token::Start
                                   || (token == Token::End && xml.depth() >= inside);
         token = xml.next()) {
        if (token == Token::Text && xml.isVerbatim())
            text += xml.text();
        else if (token == Token::Text)
            appendCellText(text, xml.text());
    }
}

}  // namespace

std::string joinedMarkup(const CellMarkup& markup)
{
    std::string text(markup.attributes);
    text += '\0';
    text += markup.content;
    return text;
}

CellMarkup splitMarkup(std::string_view text)
{
    const size_t end = text.find('\0');
    if (end == std::string_view::npos)
        return {text, std::string_view()};
    return {text.substr(0, end), text.substr(end + 1)};
}

CellForm formOf(std::string_view type)
{
    if (type.empty() || type == "n")
        return CellForm::Number;
    if (type == "s")
        return CellForm::Shared;
    if (type == "inlineStr")
        return CellForm::Inline;
    if (type == "str")
        return CellForm::Plain;
    if (type == "b")
        return CellForm::Bool;
    if (type == "e")
        return CellForm::Error;
    return type == "d" ? CellForm::Date : CellForm::Empty;
}

std::string richText(std::string_view content)
{
    std::string text;
    XmlScanner xml(content);
    std::string_view skipped;
    for (Token token = xml.next(); token != Token::Done && token != Token::Broken;
         token = xml.next()) {
        if (token == Token::Start && xml.name() == "rPh")
            xml.skipContent(skipped);
        else if (token == Token::Start && xml.name() == "t")
            appendContent(text, xml);
    }
    return text;
}

/// Most texts are written so, without blanks around.
bool isUsualText(std::string_view content, std::string_view& written)
{
    constexpr std::string_view kOpening = "<t>";
    constexpr std::string_view kKept = "<t xml:space=\"preserve\">";
    constexpr std::string_view kClosing = "</t>";
    const size_t opening = content.substr(0, kOpening.size()) == kOpening ? kOpening.size()
                           : content.substr(0, kKept.size()) == kKept     ? kKept.size()
                                                                          : 0;
    if (opening == 0 || content.size() < opening + kClosing.size())
        return false;
    written = content.substr(opening, content.size() - opening - kClosing.size());
    return content.substr(opening + written.size()) == kClosing
           && written.find('<') == std::string_view::npos;
}

bool isPlainText(std::string_view content, std::string_view& written)
{
    if (isUsualText(content, written))
        return true;
    XmlScanner xml(content);
    Token token = xml.next();
    while (token == Token::Text
           && xml.text().find_first_not_of(" \t\r\n") == std::string_view::npos)
        token = xml.next();
    if (token != Token::Start || xml.name() != "t" || !xml.skipContent(written)
        || written.find('<') != std::string_view::npos)
        return false;
    token = xml.next();
    while (token == Token::Text
           && xml.text().find_first_not_of(" \t\r\n") == std::string_view::npos)
        token = xml.next();
    return token == Token::Done;
}

MarkupValue valueOf(const CellMarkup& markup)
{
    MarkupValue value;
    const CellForm form = formOf(attributeOf(markup.attributes, "t"));
    XmlScanner xml(markup.content);
    std::string_view skipped;
    for (Token token = xml.next(); token != Token::Done && token != Token::Broken;
         token = xml.next()) {
        if (token != Token::Start)
            continue;
        value.isFormula = value.isFormula || xml.name() == "f";
        if (xml.name() == "v") {
            appendContent(value.text, xml);
            value.form = form;
        } else if (xml.name() == "is" && xml.skipContent(skipped)) {
            value.text = richText(skipped);
            value.form = CellForm::Plain;
        } else {
            xml.skipContent(skipped);
        }
    }
    return value;
}

}  // namespace SmartTable::detail
