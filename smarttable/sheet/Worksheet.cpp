#include "smarttable/sheet/Worksheet.h"

#include "smarttable/sheet/SheetReader.h"
#include "smarttable/sheet/SheetWriter.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace SmartTable::detail {

namespace {

using Token = XmlScanner::Token;

constexpr char kSpace[] = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr char kRows[] = "sheetData";

/// The elements of a worksheet in the order that the standard wants.
constexpr std::array<const char*, 38> kOrder{"sheetPr",
                                             "dimension",
                                             "sheetViews",
                                             "sheetFormatPr",
                                             "cols",
                                             kRows,
                                             "sheetCalcPr",
                                             "sheetProtection",
                                             "protectedRanges",
                                             "scenarios",
                                             "autoFilter",
                                             "sortState",
                                             "dataConsolidate",
                                             "customSheetViews",
                                             "mergeCells",
                                             "phoneticPr",
                                             "conditionalFormatting",
                                             "dataValidations",
                                             "hyperlinks",
                                             "printOptions",
                                             "pageMargins",
                                             "pageSetup",
                                             "headerFooter",
                                             "rowBreaks",
                                             "colBreaks",
                                             "customProperties",
                                             "cellWatches",
                                             "ignoredErrors",
                                             "smartTags",
                                             "drawing",
                                             "legacyDrawing",
                                             "legacyDrawingHF",
                                             "picture",
                                             "oleObjects",
                                             "controls",
                                             "webPublishItems",
                                             "tableParts",
                                             "extLst"};

int orderOfName(const char* name)
{
    const auto* const found = std::find_if(kOrder.begin(), kOrder.end(), [name](const char* known) {
        return std::strcmp(known, name) == 0;
    });
    return found == kOrder.end() ? -1 : static_cast<int>(found - kOrder.begin());
}

/// That of a choice between contents is that of the first content (ECMA-376-3, 10.2.1).
int orderOf(pugi::xml_node element)
{
    if (std::strcmp(localName(element), "AlternateContent") == 0)
        element = element.first_child().first_child();
    return orderOfName(localName(element));
}

/// Goes to the Start of <sheetData>; Done or Broken if there is none.
Token findRows(XmlScanner& xml)
{
    Token token = xml.next();
    while (token != Token::Done && token != Token::Broken
           && !(token == Token::Start && xml.depth() == 2 && xml.name() == kRows))
        token = xml.next();
    return token;
}

QString brokenXml()
{
    return QStringLiteral("its XML is broken");
}

}  // namespace

Worksheet::Worksheet() : m_frame("worksheet", kSpace)
{
    element(kRows);
}

QString Worksheet::read(const QByteArray& xml, quint32 sharedTexts)
{
    const std::string_view text(xml.constData(), static_cast<size_t>(xml.size()));
    XmlScanner scanner(text);
    const Token token = findRows(scanner);
    if (token != Token::Start)
        return token == Token::Done ? QStringLiteral("it has no rows") : brokenXml();
    const size_t begin = scanner.tokenBegin();
    const std::string start = "<" + std::string(scanner.fullName()) + "/>";
    QString problem = SheetReader(scanner, cells, sharedTexts).read();
    if (!problem.isEmpty())
        return problem;
    const size_t end = scanner.position();
    QByteArray frame = xml.left(static_cast<int>(begin));
    frame.append(start.data(), static_cast<int>(start.size()));
    frame.append(xml.constData() + end, xml.size() - static_cast<int>(end));
    return m_frame.read(frame, "worksheet");
}

std::string Worksheet::xml()
{
    tellDimension();
    const QByteArray frame = m_frame.text();
    const std::string_view text(frame.constData(), static_cast<size_t>(frame.size()));
    XmlScanner scanner(text);
    findRows(scanner);
    const size_t begin = scanner.tokenBegin();
    std::string_view skipped;
    scanner.skipContent(skipped);
    std::string xml(text.substr(0, begin));
    SheetWriter(xml, cells, prefix()).write();
    xml += text.substr(scanner.position());
    return xml;
}

std::string Worksheet::prefix() const
{
    const char* const name = m_frame.root().name();
    return std::string(name, static_cast<size_t>(localName(m_frame.root()) - name));
}

pugi::xml_node Worksheet::find(const char* name) const
{
    for (pugi::xml_node child : m_frame.root().children()) {
        if (std::strcmp(localName(child), name) == 0)
            return child;
    }
    return pugi::xml_node();
}

pugi::xml_node Worksheet::element(const char* name)
{
    const pugi::xml_node root = m_frame.changedRoot();
    const int order = orderOfName(name);
    pugi::xml_node before;
    for (pugi::xml_node child : root.children()) {
        if (std::strcmp(localName(child), name) == 0)
            return child;
        if (!before && orderOf(child) > order)
            before = child;
    }
    const std::string full = prefix() + name;
    pugi::xml_node made = before ? pugi::xml_node(root).insert_child_before(full.c_str(), before)
                                 : pugi::xml_node(root).append_child(full.c_str());
    if (!made)
        throw std::bad_alloc();
    return made;
}

void Worksheet::removeElement(const char* name)
{
    const pugi::xml_node found = find(name);
    if (!found)
        return;
    pugi::xml_node root = m_frame.changedRoot();
    for (pugi::xml_node child : root.children()) {
        if (std::strcmp(localName(child), name) == 0) {
            root.remove_child(child);
            return;
        }
    }
}

pugi::xml_node Worksheet::append(pugi::xml_node parent, const char* name) const
{
    pugi::xml_node made = parent.append_child((prefix() + name).c_str());
    if (!made)
        throw std::bad_alloc();
    return made;
}

/// Some programs read no more than the part tells that it has.
void Worksheet::tellDimension()
{
    CellRange used{{kMostRows, kMostColumns}, {0, 0}};
    for (int number = cells.rows.next(1); number > 0; number = cells.rows.next(number + 1)) {
        const std::vector<Cell>& row = cells.rows.find(number)->cells();
        if (row.empty())
            continue;
        used.first.row = std::min(used.first.row, number);
        used.last.row = number;
        used.first.column = std::min<int>(used.first.column, row.front().column);
        used.last.column = std::max<int>(used.last.column, row.back().column);
    }
    if (used.last.row == 0)
        used = {{1, 1}, {1, 1}};
    setAttribute(element("dimension"), "ref", QString::fromStdString(rangeText(used)));
}

}  // namespace SmartTable::detail
