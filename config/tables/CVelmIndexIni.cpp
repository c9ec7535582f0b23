#include "config/tables/CVelmIndexIni.h"

#include "config/tables/DefinitionFile.h"

namespace {

constexpr int kFieldCount = 6;

VelmIndexItem itemOf(const QStringList& fields)
{
    VelmIndexItem item;
    item.code = fields.value(0);
    item.ltype = fields.value(1);
    item.width = fields.value(2).toDouble();
    item.name = fields.value(3);
    item.usecode = fields.value(4);
    item.table = fields.value(5);
    return item;
}

}  // namespace

Velm::ErrorStatus CVelmIndexIni::load()
{
    const Velm::ErrorStatus status = velm::detail::readDefinitionFile(
        QStringLiteral("index.ini"), kFieldCount, [this](const QStringList& fields) {
            const VelmIndexItem item = itemOf(fields);
            m_items.insert(item.code, item);
        });
    if (status != Velm::VelmOk)
        return status;
    return m_items.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}
