#pragma once

#include "smarttable/package/SmallXml.h"
#include "smarttable/sheet/SheetCells.h"

#include <string>

namespace SmartTable::detail {

/// The part of a worksheet (ECMA-376-1, 18.3.1.99): its cells in compact form, all the rest as a
/// small tree in which everything is kept.
class Worksheet
{
public:
    /// An empty sheet.
    Worksheet();

    /// Takes the content of a part; @p sharedTexts is how many texts the workbook has.
    /// @return what is wrong, and the sheet is not to be used then; empty if nothing is
    QString read(const QByteArray& xml, quint32 sharedTexts);
    /// As the content of a part.
    std::string xml();

    SheetCells cells;

    /// All but the rows, to look at; a null node if there is no such element.
    pugi::xml_node find(const char* name) const;
    /// The element of that name below the root, to be changed; it is made where the standard wants
    /// it if it is not there.
    pugi::xml_node element(const char* name);
    void removeElement(const char* name);

private:
    void tellDimension();

    SmallXml m_frame;  // an empty <sheetData> stands for the rows
};

}  // namespace SmartTable::detail
