#include "config/tables/CVelmWorkDB.h"

#include "CVelmDatabase.h"
#include "data/access/TableReader.h"

Velm::ErrorStatus CVelmWorkDB::initVelmWork(CVelmDatabase& db)
{
    velm::detail::TableReader rows(db, QStringLiteral("workdef"));
    const int color = rows.column(QStringLiteral("COLOR"));
    const int code = rows.column(QStringLiteral("CODE"));
    const int text = rows.column(QStringLiteral("TEXT"));
    const int par1 = rows.column(QStringLiteral("PAR1"));
    const int par2 = rows.column(QStringLiteral("PAR2"));
    const int layer = rows.column(QStringLiteral("LAYER"));
    const int enttype = rows.column(QStringLiteral("ENTTYPE"));
    while (rows.next()) {
        VelmWorkItem item;
        if (color >= 0)
            item.color = rows.value(color).toInt();
        item.enttype = rows.value(enttype).toInt();
        item.code = rows.text(code);
        item.par1 = rows.text(par1);
        item.par2 = rows.text(par2);
        item.text = rows.text(text);
        item.layer = rows.text(layer);
        m_items.insert(m_items.cend(), item.code,
                       item);  // at no cost where rows come in code order
    }
    if (rows.brokeOff())
        m_items.clear();
    return m_items.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}
