#pragma once

#include "smarttable/sheet/Cell.h"

#include <string>
#include <string_view>

namespace SmartTable::detail {

// A cell of the form Markup is kept as it is written: formulas, rich texts, and whatever else a
// cell may hold.

/// All of a cell but its place and style.
struct CellMarkup
{
    std::string_view attributes;
    std::string_view content;
};

/// As one text, and back.
std::string joinedMarkup(const CellMarkup& markup);
CellMarkup splitMarkup(std::string_view text);

/// What such a cell shows.
struct MarkupValue
{
    CellForm form = CellForm::Empty;  // Number, Bool, Error, Date; Plain for every text; Empty
    std::string text;                 // the value as it is written, or what a text says
    bool isFormula = false;
};
MarkupValue valueOf(const CellMarkup& markup);

/// Of the content of a <si> or <is>: its text without formatting and phonetic hints.
std::string richText(std::string_view content);
/// Whether that content is one text and nothing else; gives it as it is written.
bool isPlainText(std::string_view content, std::string_view& written);

/// The form that the attribute "t" of a cell names; Empty for one that there is not.
CellForm formOf(std::string_view type);

}  // namespace SmartTable::detail
