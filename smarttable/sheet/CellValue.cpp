#include "smarttable/sheet/CellValue.h"

#include "SmartTable.h"
#include "smarttable/sheet/CellMarkup.h"
#include "smarttable/sheet/NumberText.h"

namespace SmartTable::detail {

namespace {

int kindOf(CellForm form)
{
    switch (form) {
    case CellForm::Empty:
        return CellEmpty;
    case CellForm::Number:
        return CellNumber;
    case CellForm::Bool:
        return CellBool;
    case CellForm::Error:
        return CellError;
    case CellForm::Date:
        return CellDate;
    default:
        return CellText;
    }
}

}  // namespace

CellValue::CellValue(const Cell& cell, const SheetCells& cells, const SharedTexts& texts)
    : m_kind(kindOf(cell.form))
{
    switch (cell.form) {
    case CellForm::Empty:
        break;
    case CellForm::Number:
        takeNumber(cell.number);
        break;
    case CellForm::Shared:
        takeText(texts.text(cell.index));
        break;
    case CellForm::Bool:
        take(cell.form, cell.index != 0 ? "1" : "0", texts);
        break;
    case CellForm::Markup: {
        const MarkupValue value = valueOf(splitMarkup(cells.texts.text(cell.index)));
        m_kind = value.isFormula ? static_cast<int>(CellFormula) : kindOf(value.form);
        take(value.form, value.text, texts);
        break;
    }
    default:
        takeText(cells.texts.text(cell.index));
    }
}

/// A value as it is written between tags.
void CellValue::take(CellForm form, std::string_view written, const SharedTexts& texts)
{
    quint32 index = 0;
    double number = 0;
    if (form == CellForm::Number && readNumber(written, number)) {
        takeNumber(number);
    } else if (form == CellForm::Shared) {
        takeText(readNumber(written, index) ? texts.text(index) : std::string_view());
    } else if (form == CellForm::Bool) {
        m_text = written == "1" ? "TRUE" : "FALSE";
        m_number = written == "1" ? 1 : 0;
    } else {
        takeText(written);
    }
}

void CellValue::takeText(std::string_view text)
{
    m_text = text;
    readNumber(text, m_number);
}

void CellValue::takeNumber(double number)
{
    m_number = number;
    appendNumber(m_text, number);
}

}  // namespace SmartTable::detail
