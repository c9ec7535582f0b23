#include "smarttable/package/ContentTypes.h"

#include "smarttable/package/PartName.h"

#include <cstring>

namespace SmartTable::detail {

namespace {

constexpr char kRoot[] = "Types";
constexpr char kSpace[] = "http://schemas.openxmlformats.org/package/2006/content-types";
constexpr char kOfEnding[] = "Default";
constexpr char kOfPart[] = "Override";

QString endingOf(const QString& part)
{
    const QString name = part.mid(part.lastIndexOf(QLatin1Char('/')) + 1);
    const int point = name.lastIndexOf(QLatin1Char('.'));
    return point < 0 ? QString() : partKey(name.mid(point + 1));
}

/// The own entry of the part with that key.
pugi::xml_node entryOf(pugi::xml_node root, const QString& key)
{
    return root.find_child([&key](pugi::xml_node element) {
        return std::strcmp(localName(element), kOfPart) == 0
               && partKey(attributeOf(element, "PartName")) == key;
    });
}

}  // namespace

ContentTypes::ContentTypes() : m_xml(kRoot, kSpace)
{
    const std::pair<QString, QString> types[] = {
        {QStringLiteral("rels"),
         QStringLiteral("application/vnd.openxmlformats-package.relationships+xml")},
        {QStringLiteral("xml"), QStringLiteral("application/xml")}};
    for (const auto& [ending, type] : types) {
        const pugi::xml_node element = m_xml.append(kOfEnding);
        setAttribute(element, "Extension", ending);
        setAttribute(element, "ContentType", type);
        m_ofEndings.insert(ending, type);
    }
}

QString ContentTypes::read(const QByteArray& xml)
{
    ContentTypes read;
    read.m_ofEndings.clear();
    QString problem = read.m_xml.read(xml, kRoot);
    for (pugi::xml_node element = read.m_xml.root().first_child(); element && problem.isEmpty();
         element = element.next_sibling())
        problem = read.take(element);
    if (problem.isEmpty())
        *this = read;
    return problem;
}

QString ContentTypes::take(pugi::xml_node element)
{
    const bool isOfPart = std::strcmp(localName(element), kOfPart) == 0;
    if (!isOfPart && std::strcmp(localName(element), kOfEnding) != 0)
        return QString();
    const QString name = attributeOf(element, isOfPart ? "PartName" : "Extension");
    const QString type = attributeOf(element, "ContentType");
    if (name.isEmpty() || type.isNull())
        return QStringLiteral("an entry has no name or no type");
    QHash<QString, QString>& types = isOfPart ? m_ofParts : m_ofEndings;
    const QString key = partKey(name);
    if (types.contains(key) && types.value(key) != type)
        return QStringLiteral("\"%1\" has two types").arg(name);
    types.insert(key, type);
    return QString();
}

QString ContentTypes::of(const QString& part) const
{
    const auto own = m_ofParts.constFind(partKey(part));
    return own == m_ofParts.constEnd() ? m_ofEndings.value(endingOf(part)) : *own;
}

bool ContentTypes::set(const QString& part, const QString& type)
{
    if (of(part) == type)
        return false;
    const QString key = partKey(part);
    pugi::xml_node element = entryOf(m_xml.changedRoot(), key);
    if (!element) {
        element = m_xml.append(kOfPart);
        setAttribute(element, "PartName", part);
    }
    setAttribute(element, "ContentType", type);
    m_ofParts.insert(key, type);
    return true;
}

bool ContentTypes::remove(const QString& part)
{
    const QString key = partKey(part);
    if (m_ofParts.remove(key) == 0)
        return false;
    pugi::xml_node root = m_xml.changedRoot();
    while (root.remove_child(entryOf(root, key))) {
    }
    return true;
}

}  // namespace SmartTable::detail
