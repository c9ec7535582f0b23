#include "smarttable/sheet/SheetSizes.h"

#include "smarttable/sheet/NumberText.h"
#include "smarttable/xml/Elements.h"
#include "smarttable/xml/XmlScanner.h"

namespace SmartTable::detail {

namespace {

constexpr double kUsualHeight = 15;
constexpr double kUsualWidth = 8.43;

QString textOf(double number)
{
    std::string text;
    appendNumber(text, number);
    return QString::fromStdString(text);
}

/// Of the sheet's rows or columns that tell none of their own.
double usualSize(const Worksheet& sheet, const char* attribute, double usual)
{
    return sheet.find("sheetFormatPr").attribute(attribute).as_double(usual);
}

/// Adds a description of some columns before another, or behind all.
pugi::xml_node insertColumns(pugi::xml_node list, pugi::xml_node before, pugi::xml_node like)
{
    if (!like)
        return before ? list.insert_child_before((prefixOf(list) + "col").c_str(), before)
                      : appendChild(list, "col");
    return list.insert_copy_before(like, before);
}

void setSpan(pugi::xml_node columns, unsigned first, unsigned last)
{
    setAttribute(columns, "min", QString::number(first));
    setAttribute(columns, "max", QString::number(last));
}

/// The description of one column alone. One of several columns is parted; what it says of the
/// others stays.
pugi::xml_node columnAlone(pugi::xml_node list, unsigned column)
{
    pugi::xml_node behind;
    for (pugi::xml_node columns : list.children()) {
        const unsigned first = columns.attribute("min").as_uint();
        const unsigned last = columns.attribute("max").as_uint();
        if (first > column) {
            behind = columns;
            break;
        }
        if (last < column)
            continue;
        if (first < column)
            setSpan(insertColumns(list, columns, columns), first, column - 1);
        if (last > column)
            setSpan(list.insert_copy_after(columns, columns), column + 1, last);
        setSpan(columns, column, column);
        return columns;
    }
    const pugi::xml_node made = insertColumns(list, behind, pugi::xml_node());
    setSpan(made, column, column);
    return made;
}

}  // namespace

double rowHeight(const Worksheet& sheet, int row)
{
    double height = usualSize(sheet, "defaultRowHeight", kUsualHeight);
    const Row* const found = sheet.cells.rows.find(row);
    if (found)
        readNumber(attributeOf(found->attributes, "ht"), height);
    return height;
}

double columnWidth(const Worksheet& sheet, int column)
{
    for (pugi::xml_node columns : sheet.find("cols").children()) {
        if (columns.attribute("min").as_int() <= column
            && column <= columns.attribute("max").as_int() && columns.attribute("width"))
            return columns.attribute("width").as_double();
    }
    return usualSize(sheet, "defaultColWidth", kUsualWidth);
}

QString setRowHeight(Sheet& sheet, int row, double height)
{
    constexpr double kMost = 409.5;
    if (!isPlace(row, 1) || !(height >= 0) || height > kMost)
        return QStringLiteral("a row is 0 to %1 points high").arg(kMost);
    Row& changed = sheet.content->cells.rows.at(row);
    std::string attributes;
    appendAttributes(attributes, changed.attributes,
                     [](std::string_view name) { return name == "ht" || name == "customHeight"; });
    attributes += " ht=\"";
    appendNumber(attributes, height);
    attributes += "\" customHeight=\"1\"";
    changed.attributes = attributes;
    sheet.isTouched = true;
    return QString();
}

QString setColumnWidth(Sheet& sheet, int column, double width)
{
    constexpr double kMost = 255;
    if (!isPlace(1, column) || !(width >= 0) || width > kMost)
        return QStringLiteral("a column is 0 to %1 characters wide").arg(kMost);
    const pugi::xml_node changed =
        columnAlone(sheet.content->element("cols"), static_cast<unsigned>(column));
    setAttribute(changed, "width", textOf(width));
    setAttribute(changed, "customWidth", QStringLiteral("1"));
    sheet.isTouched = true;
    return QString();
}

}  // namespace SmartTable::detail
