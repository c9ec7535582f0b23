#include "config/tables/CVelmWorkDef.h"

#include "config/tables/DefinitionFile.h"

namespace {

constexpr int kFieldCount = 7;

VelmWorkItem itemOf(const QStringList& fields)
{
    VelmWorkItem item;
    item.code = fields.value(0);
    item.layer = fields.value(1);
    if (fields.size() > 2)
        item.enttype = fields.at(2).toInt();
    item.par1 = fields.value(3);
    item.par2 = fields.value(4);
    item.text = fields.value(5);
    if (fields.size() > 6)
        item.color = fields.at(6).toInt();
    return item;
}

}  // namespace

Velm::ErrorStatus CVelmWorkDef::initVelmWork()
{
    return velm::detail::readDefinitionFile(QStringLiteral("work.def"), kFieldCount,
                                            [this](const QStringList& fields) {
                                                const VelmWorkItem item = itemOf(fields);
                                                m_items.insert(item.code, item);
                                            });
}
