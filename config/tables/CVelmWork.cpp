#include "CVelmWork.h"

#include "config/tables/DefinitionTable.h"
#include "config/tables/WorkColumns.h"
#include "data/access/SystemConfig.h"

using namespace velm::detail;

namespace {

/// The database reads it as "workdef" too; the spelling is the one that existing databases were
/// written with.
const QString& writeTableName()
{
    static const QString name = QStringLiteral("Workdef");
    return name;
}

}  // namespace

CVelmWork::CVelmWork() = default;

CVelmWork::CVelmWork(const CVelmWork& other) = default;

CVelmWork& CVelmWork::operator=(const CVelmWork& other) = default;

CVelmWork::~CVelmWork() = default;

bool CVelmWork::isValidCode(const QString& code) const
{
    return m_items.contains(code);
}

Velm::ErrorStatus CVelmWork::get_text(const QString& code, QString& text) const
{
    return getField(m_items, code, &VelmWorkItem::text, text);
}

Velm::ErrorStatus CVelmWork::get_color(const QString& code, int& color) const
{
    return getField(m_items, code, &VelmWorkItem::color, color);
}

Velm::ErrorStatus CVelmWork::get_parOne(const QString& code, QString& par1) const
{
    return getField(m_items, code, &VelmWorkItem::par1, par1);
}

Velm::ErrorStatus CVelmWork::get_parTwo(const QString& code, QString& par2) const
{
    return getField(m_items, code, &VelmWorkItem::par2, par2);
}

Velm::ErrorStatus CVelmWork::get_enttype(const QString& code, int& enttype) const
{
    return getField(m_items, code, &VelmWorkItem::enttype, enttype);
}

Velm::ErrorStatus CVelmWork::get_layer(const QString& code, QString& layer, bool flag) const
{
    Q_UNUSED(flag)
    return getField(m_items, code, &VelmWorkItem::layer, layer);
}

Velm::ErrorStatus CVelmWork::get_par(const QString& code, QString& layer, int& enttype,
                                     QString& par1, QString& par2, QString& text) const
{
    int color = 0;
    return get_par(code, layer, enttype, par1, par2, text, color);
}

Velm::ErrorStatus CVelmWork::get_par(const QString& code, QString& layer, int& enttype,
                                     QString& par1, QString& par2, QString& text, int& color) const
{
    const auto it = m_items.constFind(code);
    if (it == m_items.cend())
        return Velm::VelmNotFound;
    layer = it->layer;
    enttype = it->enttype;
    par1 = it->par1;
    par2 = it->par2;
    text = it->text;
    color = it->color;
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmWork::getWorkItem(const QString& code, VelmWorkItem& item) const
{
    if (code.isEmpty())
        return Velm::VelmEmptyArgument;
    const auto it = m_items.constFind(code);
    if (it == m_items.cend())
        return Velm::VelmWorkCodeNotFound;
    item = *it;
    return Velm::VelmOk;
}

Velm::ErrorStatus CVelmWork::addItem(const VelmWorkItem& item)
{
    m_items.insert(item.code, item);
    return writeSystemConfig(writeTableName(), withoutCode(valuesOf(item, kWorkColumns)),
                             ofCode(item.code));
}

Velm::ErrorStatus CVelmWork::removeItem(const QString& code)
{
    if (m_items.remove(code) == 0)
        return Velm::VelmNotFound;
    return deleteFromSystemConfig(writeTableName(), ofCode(code));
}
