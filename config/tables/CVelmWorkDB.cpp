#include "config/tables/CVelmWorkDB.h"

#include "config/tables/WorkColumns.h"
#include "CVelmDatabase.h"
#include "data/access/TableReader.h"

Velm::ErrorStatus CVelmWorkDB::initVelmWork(CVelmDatabase& db)
{
    velm::detail::TableReader rows(db, QStringLiteral("workdef"));
    const velm::detail::BoundColumns bound(rows, velm::detail::kWorkColumns);
    while (rows.next()) {
        const VelmWorkItem item = bound.record();
        m_items.insert(m_items.cend(), item.code,
                       item);  // at no cost where rows come in code order
    }
    if (rows.brokeOff())
        m_items.clear();
    return m_items.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}
