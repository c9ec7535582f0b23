#pragma once

#include "smarttable/sheet/TextPool.h"

#include <QByteArray>
#include <QString>

#include <string>
#include <unordered_map>

namespace SmartTable::detail {

/// The texts that the cells of a workbook share (ECMA-376-1, 18.4, the part "sharedStrings").
/// Numbers stay as they are: sheets that nobody touched go on naming them.
class SharedTexts
{
public:
    /// Replaces all. @return what is wrong; empty if nothing is
    QString load(std::string_view xml);
    /// The part, as it is to be written.
    std::string save() const;

    /// Without formatting; empty for a number that there is not.
    std::string_view text(quint32 number) const { return m_texts.text(number); }
    quint32 size() const { return m_texts.size(); }
    /// The number of a text without formatting, under which it is added if it is not there.
    quint32 add(std::string_view text);

    /// Whether there is more than what was loaded.
    bool isChanged() const { return m_texts.size() != m_loaded; }

private:
    void addItem(std::string_view content);

    TextPool m_texts;
    std::unordered_map<quint32, std::string> m_markup;  // of texts that are not just text
    std::string m_prefix;                               // of the names of elements
    std::string m_attributes;                           // of the root, without the counts
    std::string m_tail;                                 // behind the last text
    quint32 m_loaded = 0;
    quint32 m_found = 0;  // of those that were loaded, by add()
    std::string m_text;   // that is read
};

}  // namespace SmartTable::detail
