#pragma once

#include "smarttable/sheet/SheetCells.h"
#include "smarttable/xml/XmlScanner.h"

#include <QString>

namespace SmartTable::detail {

/// Reads the rows of a sheet (ECMA-376-1, 18.3.1.80, sheetData).
class SheetReader
{
public:
    /// @p xml has just started <sheetData>; @p sharedTexts is how many texts the workbook has.
    SheetReader(XmlScanner& xml, SheetCells& cells, quint32 sharedTexts)
        : m_xml(xml), m_cells(cells), m_sharedTexts(sharedTexts)
    {}

    /// Reads up to the end of <sheetData>. @return what is wrong; empty if nothing is
    QString read();

private:
    QString readRow();
    QString readCell();
    QString readContent();
    void placeCell();
    bool setPlain(Cell& cell);
    void setMarkup(Cell& cell);

    XmlScanner& m_xml;
    SheetCells& m_cells;
    quint32 m_sharedTexts;
    int m_row = 0;
    int m_column = 0;
    Row* m_current = nullptr;
    size_t m_expected = 0;  // cells of the row before

    // Of the cell that is read.
    std::string_view m_attributes;
    std::string_view m_type;
    std::string_view m_value;  // as it is written
    std::string_view m_content;
    quint32 m_style = 0;
    bool m_hasValue = false;
    bool m_isMarkup = false;
    std::string m_text;
};

}  // namespace SmartTable::detail
