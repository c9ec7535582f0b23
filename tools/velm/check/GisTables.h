#pragma once

#include "check/CheckedTable.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

class CheckedSet;

/// All GIS tables of a set with their fields, by upper-case name, as the library puts them together
/// from both databases. A name with a character too much, which is told as that, is found without
/// it too.
class GisTables
{
public:
    GisTables() = default;
    explicit GisTables(const CheckedSet& set);

    bool contains(const QString& table) const { return m_keys.contains(table.toUpper()); }
    bool hasField(const QString& table, const QString& field) const
    {
        return find(table).fields.contains(field.toUpper());
    }
    /// In upper case.
    QSet<QString> fieldsOf(const QString& table) const { return find(table).fields; }
    /// Where a table is defined.
    Place placeOf(const QString& table) const { return find(table).place; }
    /// Whether it has no fields, but a table that is not defined and has nearly its name does.
    bool hasStrayFields(const QString& table) const { return find(table).hasStrayFields; }
    /// Names for suggestions, in no order.
    QStringList tableNames() const;
    QStringList fieldNames(const QString& table) const { return find(table).fieldNames; }

private:
    struct Table
    {
        QString name;
        Place place;
        QSet<QString> fields;  // in upper case
        QStringList fieldNames;
        bool hasStrayFields = false;
    };

    void addTables(const CheckedTable& table, const QString& column);
    void addFields(const CheckedTable& fields, const QString& owner, const QString& column);
    void findStrayFields();
    Table find(const QString& name) const { return m_tables.value(m_keys.value(name.toUpper())); }

    QHash<QString, QString> m_keys;  // of m_tables, by upper-case name
    QHash<QString, Table> m_tables;
    QSet<QString> m_unknownOwners;  // of fields
};
