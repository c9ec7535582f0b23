#include "smarttable/sheet/Worksheet.h"

#include "smarttable/sheet/SheetReader.h"
#include "smarttable/sheet/SheetWriter.h"
#include "smarttable/xml/Elements.h"

#include <algorithm>
#include <array>

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
    SheetWriter(xml, cells, prefixOf(m_frame.root())).write();
    xml += text.substr(scanner.position());
    return xml;
}

pugi::xml_node Worksheet::find(const char* name) const
{
    return childNamed(m_frame.root(), name);
}

pugi::xml_node Worksheet::element(const char* name)
{
    return elementInOrder(m_frame.changedRoot(), name, kOrder.data(), kOrder.size());
}

void Worksheet::removeElement(const char* name)
{
    if (!find(name))
        return;
    pugi::xml_node root = m_frame.changedRoot();
    root.remove_child(childNamed(root, name));
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
