#include "smarttable/package/Relations.h"

#include "smarttable/package/PackageLimits.h"
#include "smarttable/package/PartName.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace SmartTable::detail {

namespace {

constexpr char kRoot[] = "Relationships";
constexpr char kItem[] = "Relationship";
constexpr char kSpace[] = "http://schemas.openxmlformats.org/package/2006/relationships";

bool isItem(pugi::xml_node element)
{
    return std::strcmp(localName(element), kItem) == 0;
}

pugi::xml_node nextItem(pugi::xml_node element)
{
    while (element && !isItem(element))
        element = element.next_sibling();
    return element;
}

/// The number of an id "rId12"; 0 if it has another form.
int numberOf(const QString& id)
{
    constexpr int kMostDigits = 8;
    const QString digits = id.mid(3);
    const bool isOurs = id.startsWith(QLatin1String("rId")) && digits.size() <= kMostDigits;
    return isOurs ? std::max(0, digits.toInt()) : 0;
}

/// What is written of a relation to a part.
QString targetOf(const QString& source, const Relation& relation)
{
    const QString fragment =
        relation.fragment.isEmpty() ? QString() : QLatin1Char('#') + relation.fragment;
    return relativeTarget(source, relation.target) + fragment;
}

/// Takes a target apart. False if it leads out of the package.
bool setTarget(const QString& source, const QString& target, Relation& relation)
{
    const int hash = target.indexOf(QLatin1Char('#'));
    const QString path = target.left(hash);
    relation.fragment = hash < 0 ? QString() : target.mid(hash + 1);
    relation.target = path.isEmpty() ? source : resolvedTarget(source, path);
    return !relation.target.isNull();
}

}  // namespace

Relations::Relations(const QString& source) : m_source(source), m_xml(kRoot, kSpace) {}

QString Relations::read(const QByteArray& xml)
{
    Relations read(m_source);
    QString problem = read.m_xml.read(xml, kRoot);
    for (pugi::xml_node element = nextItem(read.m_xml.root().first_child());
         element && problem.isEmpty(); element = nextItem(element.next_sibling()))
        problem = read.take(element);
    if (problem.isEmpty())
        *this = read;
    return problem;
}

QString Relations::take(pugi::xml_node element)
{
    Relation relation;
    relation.id = attributeOf(element, "Id");
    relation.type = attributeOf(element, "Type");
    relation.target = attributeOf(element, "Target");
    const QString mode = attributeOf(element, "TargetMode");
    relation.isExternal = mode == QLatin1String("External");
    if (relation.id.isEmpty() || relation.type.isEmpty() || relation.target.isNull())
        return QStringLiteral("a relation has no id, type or target");
    if (!mode.isNull() && !relation.isExternal && mode != QLatin1String("Internal"))
        return QStringLiteral("the relation \"%1\" is neither internal nor external")
            .arg(relation.id);
    if (m_all.size() >= kMostRelations)
        return QStringLiteral("there are more than %1 relations").arg(kMostRelations);
    if (m_byId.contains(relation.id))
        return QStringLiteral("two relations have the id \"%1\"").arg(relation.id);
    const QString target = relation.target;
    if (!relation.isExternal && !setTarget(m_source, target, relation))
        return QStringLiteral("the relation \"%1\" leads out of the package").arg(relation.id);
    m_lastNumber = std::max(m_lastNumber, numberOf(relation.id));
    m_byId.insert(relation.id, m_all.size());
    m_all.append(relation);
    return QString();
}

QByteArray Relations::xml() const
{
    return m_xml.text();
}

void Relations::setSource(const QString& source)
{
    pugi::xml_node element = nextItem(m_xml.changedRoot().first_child());
    for (const Relation& relation : qAsConst(m_all)) {
        if (!relation.isExternal)
            setAttribute(element, "Target", targetOf(source, relation));
        element = nextItem(element.next_sibling());
    }
    m_source = source;
}

const Relation* Relations::find(const QString& id) const
{
    const auto place = m_byId.constFind(id);
    return place == m_byId.constEnd() ? nullptr : &m_all.at(*place);
}

QVector<Relation> Relations::ofType(const QString& type) const
{
    QVector<Relation> found;
    std::copy_if(m_all.begin(), m_all.end(), std::back_inserter(found),
                 [&type](const Relation& relation) { return relation.type == type; });
    return found;
}

QVector<Relation> Relations::leadingTo(const QString& part) const
{
    const QString key = partKey(part);
    QVector<Relation> found;
    std::copy_if(m_all.begin(), m_all.end(), std::back_inserter(found),
                 [&key](const Relation& relation) {
                     return !relation.isExternal && partKey(relation.target) == key;
                 });
    return found;
}

QString Relations::add(const QString& type, const QString& target)
{
    Relation relation;
    relation.type = type;
    relation.target = target;
    return append(relation);
}

QString Relations::addExternal(const QString& type, const QString& target)
{
    Relation relation;
    relation.type = type;
    relation.target = target;
    relation.isExternal = true;
    return append(relation);
}

QString Relations::append(const Relation& relation)
{
    Relation added = relation;
    added.id = QStringLiteral("rId%1").arg(++m_lastNumber);
    const pugi::xml_node element = m_xml.append(kItem);
    setAttribute(element, "Id", added.id);
    setAttribute(element, "Type", added.type);
    setAttribute(element, "Target", added.isExternal ? added.target : targetOf(m_source, added));
    if (added.isExternal)
        setAttribute(element, "TargetMode", QStringLiteral("External"));
    m_byId.insert(added.id, m_all.size());
    m_all.append(added);
    return added.id;
}

bool Relations::remove(const QString& id)
{
    const int place = m_byId.value(id, -1);
    if (place < 0)
        return false;
    pugi::xml_node root = m_xml.changedRoot();
    pugi::xml_node element = nextItem(root.first_child());
    for (int i = 0; i < place; ++i)
        element = nextItem(element.next_sibling());
    root.remove_child(element);
    m_all.remove(place);
    m_byId.clear();
    for (int i = 0; i < m_all.size(); ++i)
        m_byId.insert(m_all.at(i).id, i);
    return true;
}

}  // namespace SmartTable::detail
