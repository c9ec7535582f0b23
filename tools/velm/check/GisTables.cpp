#include "check/GisTables.h"

#include "check/CheckedSet.h"

GisTables::GisTables(const CheckedSet& set)
{
    const QString tableName = QStringLiteral("TABLENAME");
    addTables(set.table("Attributetable"), QStringLiteral("TABLE"));
    addTables(set.table("SYS_GISTABLE"), QStringLiteral("LAYERNAME"));
    addTables(set.table("SYS_ATTRIBUTEDEF"), tableName);
    addFields(set.table("Attributefield"), QStringLiteral("TABLE"), QStringLiteral("NAME"));
    addFields(set.table("SYS_ATTRIBUTEDEF"), tableName, QStringLiteral("FIELDNAME"));
}

void GisTables::addTables(const CheckedTable& table, const QString& column)
{
    for (int row = 0; row < table.size(); ++row) {
        const QString name = table.text(row, column);
        if (name.isEmpty())
            continue;
        m_names.insert(name.toUpper(), name);
        m_tables[name.toUpper()];
    }
}

void GisTables::addFields(const CheckedTable& fields, const QString& owner, const QString& column)
{
    for (int row = 0; row < fields.size(); ++row) {
        const auto found = m_tables.find(fields.text(row, owner).toUpper());
        const QString name = fields.text(row, column);
        if (found != m_tables.end())
            found->insert(name.toUpper(), name);
    }
}
