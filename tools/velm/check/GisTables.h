#pragma once

#include <QHash>
#include <QString>
#include <QVariant>

class CheckedSet;
class CheckedTable;

/// All GIS tables of a set with their fields, by upper-case name, as the library puts them together
/// from both databases.
class GisTables
{
public:
    using Fields = QHash<QString, QString>;  // upper-case name to the name as it is stored

    GisTables() = default;
    explicit GisTables(const CheckedSet& set);

    bool contains(const QString& table) const { return m_tables.contains(table.toUpper()); }
    bool hasField(const QString& table, const QString& field) const
    {
        return m_tables.value(table.toUpper()).contains(field.toUpper());
    }
    /// Names for suggestions.
    QStringList tableNames() const { return m_names.values(); }
    QStringList fieldNames(const QString& table) const
    {
        return m_tables.value(table.toUpper()).values();
    }

private:
    void addTables(const CheckedTable& table, const QString& column);
    void addFields(const CheckedTable& fields, const QString& owner, const QString& column);

    QHash<QString, QString> m_names;
    QHash<QString, Fields> m_tables;
};
