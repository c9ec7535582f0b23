#pragma once

#include "smarttable/package/SmallXml.h"

#include <QHash>

namespace SmartTable::detail {

/// The formats of a workbook's cells (ECMA-376-1, 18.8, the part "styles"). A cell names one by its
/// number; numbers stay as they are.
class Styles
{
public:
    /// Those of a new workbook: one format.
    Styles();

    /// @return what is wrong, and nothing is taken then; empty if nothing is
    QString read(const QByteArray& xml);
    QByteArray xml() const { return m_xml.text(); }

    /// How many formats there are.
    quint32 count() const;
    /// The number of a format like @p style whose attribute @p name of <alignment> is @p value; it
    /// is made if there is none. A number that there is not counts as 0.
    quint32 aligned(quint32 style, const char* name, const char* value);

    bool isChanged() const { return m_isChanged; }

private:
    pugi::xml_node formats() const;
    pugi::xml_node format(quint32 number) const;

    SmallXml m_xml;
    QHash<QString, quint32> m_aligned;  // what aligned() has answered
    bool m_isChanged = false;
};

}  // namespace SmartTable::detail
