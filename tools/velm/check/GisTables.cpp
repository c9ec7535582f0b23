#include "check/GisTables.h"

#include "check/CheckedSet.h"
#include "cli/Suggestions.h"

GisTables::GisTables(const CheckedSet& set)
{
    const QString tableName = QStringLiteral("TABLENAME");
    addTables(set.table("Attributetable"), QStringLiteral("TABLE"));
    addTables(set.table("SYS_GISTABLE"), QStringLiteral("LAYERNAME"));
    addTables(set.table("SYS_ATTRIBUTEDEF"), tableName);
    addFields(set.table("Attributefield"), QStringLiteral("TABLE"), QStringLiteral("NAME"));
    addFields(set.table("SYS_ATTRIBUTEDEF"), tableName, QStringLiteral("FIELDNAME"));
    findStrayFields();
}

void GisTables::findStrayFields()
{
    constexpr int kMost = 20;  // each is compared with all tables
    const QStringList owners = QStringList(m_unknownOwners.values()).mid(0, kMost);
    for (Table& table : m_tables)
        table.hasStrayFields =
            table.fieldNames.isEmpty() && !similarTo(table.name, owners).isEmpty();
    m_unknownOwners.clear();
}

void GisTables::addTables(const CheckedTable& table, const QString& column)
{
    for (int row = 0; row < table.size(); ++row) {
        const QString name = table.plain(row, column);
        if (name.isEmpty())
            continue;
        m_keys.insert(name.toUpper(), name.toUpper());
        m_keys.insert(table.text(row, column).toUpper(), name.toUpper());
        Table& known = m_tables[name.toUpper()];
        if (known.name.isEmpty())
            known = {name, table.place(row, column), {}, {}, false};
    }
}

void GisTables::addFields(const CheckedTable& fields, const QString& owner, const QString& column)
{
    for (int row = 0; row < fields.size(); ++row) {
        const QString table = fields.plain(row, owner);
        const auto found = m_tables.find(table.toUpper());
        if (found == m_tables.end()) {
            m_unknownOwners.insert(table);
            continue;
        }
        const QString name = fields.plain(row, column);
        found->fields.insert(name.toUpper());
        found->fields.insert(fields.text(row, column).toUpper());
        found->fieldNames.append(name);
    }
}

QStringList GisTables::tableNames() const
{
    QStringList names;
    for (const Table& table : m_tables)
        names.append(table.name);
    return names;
}
