#include "smarttable/sheet/Styles.h"

#include "smarttable/xml/Elements.h"

#include <cstring>
#include <new>
#include <string>

namespace SmartTable::detail {

namespace {

constexpr char kSpace[] = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";

/// What every workbook has at least (18.8.39 and 18.8.20).
constexpr char kUsual[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
    "<fonts count=\"1\"><font><sz val=\"11\"/><name val=\"Calibri\"/></font></fonts>"
    "<fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill>"
    "<fill><patternFill patternType=\"gray125\"/></fill></fills>"
    "<borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
    "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>"
    "</cellStyleXfs>"
    "<cellXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\"/>"
    "</cellXfs>"
    "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles>"
    "</styleSheet>";

}  // namespace

Styles::Styles() : m_xml("styleSheet", kSpace)
{
    m_xml.read(kUsual, "styleSheet");
}

QString Styles::read(const QByteArray& xml)
{
    SmallXml read = m_xml;
    QString problem = read.read(xml, "styleSheet");
    if (!problem.isEmpty())
        return problem;
    m_xml = read;
    m_aligned.clear();
    m_isChanged = false;
    return format(0) ? QString() : QStringLiteral("it has no format of cells");
}

pugi::xml_node Styles::formats() const
{
    return childNamed(m_xml.root(), "cellXfs");
}

pugi::xml_node Styles::format(quint32 number) const
{
    quint32 at = 0;
    for (pugi::xml_node child : formats().children()) {
        if (std::strcmp(localName(child), "xf") == 0 && at++ == number)
            return child;
    }
    return pugi::xml_node();
}

quint32 Styles::count() const
{
    quint32 count = 0;
    for (pugi::xml_node child : formats().children())
        count += std::strcmp(localName(child), "xf") == 0 ? 1 : 0;
    return count;
}

quint32 Styles::aligned(quint32 style, const char* name, const char* value)
{
    const QString key =
        QStringLiteral("%1 %2 %3").arg(style).arg(QLatin1String(name), QLatin1String(value));
    const auto known = m_aligned.constFind(key);
    if (known != m_aligned.constEnd())
        return known.value();
    m_xml.changedRoot();
    pugi::xml_node like = format(style);
    if (!like)
        like = format(0);
    pugi::xml_node made = formats().append_copy(like);
    pugi::xml_node alignment = childNamed(made, "alignment");
    if (made && !alignment)
        alignment = made.prepend_child((prefixOf(made) + "alignment").c_str());
    if (!alignment)
        throw std::bad_alloc();
    setAttribute(alignment, name, QLatin1String(value));
    setAttribute(made, "applyAlignment", QStringLiteral("1"));
    const quint32 number = count() - 1;
    pugi::xml_node all = formats();
    setAttribute(all, "count", QString::number(number + 1));
    m_aligned.insert(key, number);
    m_isChanged = true;
    return number;
}

}  // namespace SmartTable::detail
