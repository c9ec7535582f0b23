#include "config/tables/CVelmIndexDB.h"

#include "config/tables/IndexColumns.h"
#include "CVelmDatabase.h"
#include "data/access/TableReader.h"

Velm::ErrorStatus CVelmIndexDB::load(CVelmDatabase& database)
{
    loadItems(database);
    loadExtensions(database);
    return m_items.isEmpty() ? Velm::VelmNoData : Velm::VelmOk;
}

void CVelmIndexDB::loadItems(CVelmDatabase& database)
{
    velm::detail::TableReader rows(database, QStringLiteral("indexini"));
    const velm::detail::BoundColumns bound(rows, velm::detail::kIndexColumns);
    while (rows.next()) {
        const VelmIndexItem item = bound.record();
        m_items.insert(m_items.cend(), item.code,
                       item);  // at no cost where rows come in code order
    }
    if (rows.brokeOff())
        m_items.clear();
}

void CVelmIndexDB::loadExtensions(CVelmDatabase& database)
{
    velm::detail::TableReader rows(database, QStringLiteral("IndexiniExtend"));
    const int code = rows.column(QStringLiteral("CODE"));
    const int tables = rows.column(QStringLiteral("EXTTABLE"));
    QVector<QPair<QString, QStringList>> extensions;
    while (rows.next())
        extensions.append(
            {rows.text(code), rows.text(tables).split(QLatin1Char(';'), Qt::SkipEmptyParts)});
    if (rows.brokeOff())
        return;
    for (const auto& [key, names] : qAsConst(extensions)) {
        const auto item = m_items.find(key);
        if (item != m_items.end())
            item->exttable = names;
    }
}
