#include "CVelmIndex.h"

#include "config/tables/DefinitionTable.h"
#include "config/tables/IndexColumns.h"
#include "data/access/SystemConfig.h"

using namespace velm::detail;

namespace {

const QString& tableName()
{
    static const QString name = QStringLiteral("indexini");
    return name;
}

bool equalsIgnoringCase(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

}  // namespace

CVelmIndex::CVelmIndex() = default;

CVelmIndex::CVelmIndex(const CVelmIndex& other) = default;

CVelmIndex& CVelmIndex::operator=(const CVelmIndex& other) = default;

CVelmIndex::~CVelmIndex() = default;

Velm::ErrorStatus CVelmIndex::getName(const QString& code, QString& name) const
{
    return getField(m_items, code, &VelmIndexItem::name, name);
}

Velm::ErrorStatus CVelmIndex::getWidth(const QString& code, double& width) const
{
    return getField(m_items, code, &VelmIndexItem::width, width);
}

Velm::ErrorStatus CVelmIndex::getLType(const QString& code, QString& ltype) const
{
    return getField(m_items, code, &VelmIndexItem::ltype, ltype);
}

Velm::ErrorStatus CVelmIndex::getUseCode(const QString& code, QString& usecode) const
{
    return getField(m_items, code, &VelmIndexItem::usecode, usecode);
}

Velm::ErrorStatus CVelmIndex::getGisTableName(const QString& code, QString& table) const
{
    return getField(m_items, code, &VelmIndexItem::table, table);
}

Velm::ErrorStatus CVelmIndex::getExtendTables(const QString& code, QStringList& tables) const
{
    return getField(m_items, code, &VelmIndexItem::exttable, tables);
}

Velm::ErrorStatus CVelmIndex::getItem(const QString& code, VelmIndexItem& item) const
{
    const auto it = m_items.constFind(code);
    if (it == m_items.cend())
        return Velm::VelmNotFound;
    item = *it;
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmIndex::getPars(const QString& code, QString& ltype, double& width,
                                      QString& name, QString& usecode, QString& table) const
{
    const auto it = m_items.constFind(code);
    if (it == m_items.cend())
        return Velm::VelmNotFound;
    ltype = it->ltype;
    width = it->width;
    name = it->name;
    usecode = it->usecode;
    table = it->table;
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmIndex::getEntType(const QString& code, Velm::EntityType& type) const
{
    const auto it = m_items.constFind(code);
    if (it == m_items.cend())
        return Velm::VelmNotFound;
    if (it->ltype.startsWith(QLatin1String("gc"), Qt::CaseInsensitive) || it->width < 0.0)
        type = Velm::EntitySpecialLine;
    else if (equalsIgnoringCase(it->ltype, QStringLiteral("text")))
        type = Velm::EntityText;
    else
        type = Velm::EntityGeneral;
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmIndex::getCodes(const QString& table, QStringList& codes) const
{
    for (const VelmIndexItem& item : m_items) {
        if (equalsIgnoringCase(item.table, table))
            codes.append(item.code);
    }
    return codes.isEmpty() ? Velm::VelmNotFound : Velm::VelmOk;
}

Velm::ErrorStatus CVelmIndex::getCodeByUsercode(const QString& usecode, QString& code) const
{
    if (usecode.isEmpty())
        return Velm::VelmNotFound;
    for (const VelmIndexItem& item : m_items) {
        if (equalsIgnoringCase(item.usecode, usecode)) {
            code = item.code;
            return Velm::VelmOk;
        }
    }
    return Velm::VelmNotFound;
}

QMap<QString, VelmIndexItem> CVelmIndex::getIndexMap() const
{
    return m_items;
}

Velm::ErrorStatus CVelmIndex::addItem(const VelmIndexItem& item)
{
    m_items.insert(item.code, item);
    return writeSystemConfig(tableName(), withoutCode(valuesOf(item, kIndexColumns)),
                             ofCode(item.code));
}

Velm::ErrorStatus CVelmIndex::removeItem(const QString& code)
{
    if (m_items.remove(code) == 0)
        return Velm::VelmNotFound;
    return deleteFromSystemConfig(tableName(), ofCode(code));
}
