#include "config/tables/CVelmIndexDB.h"

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
    const int code = rows.column(QStringLiteral("CODE"));
    const int name = rows.column(QStringLiteral("NAME"));
    const int width = rows.column(QStringLiteral("WIDTH"));
    const int ltype = rows.column(QStringLiteral("LTYPE"));
    const int table = rows.column(QStringLiteral("TABLE"));
    const int usecode = rows.column(QStringLiteral("USECODE"));
    while (rows.next()) {
        VelmIndexItem item;
        item.width = rows.value(width).toDouble();
        item.code = rows.text(code);
        item.name = rows.text(name);
        item.ltype = rows.text(ltype);
        item.table = rows.text(table);
        item.usecode = rows.text(usecode);
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
