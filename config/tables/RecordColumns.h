#pragma once

#include "data/access/TableReader.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <array>
#include <cstddef>
#include <variant>

namespace velm::detail {

/// A column of a table and the member of a record that holds its value.
template<class Record>
struct Column
{
    const char* name;  ///< as it is written; it is read in any letter case
    std::variant<QString Record::*, double Record::*, int Record::*> member;
};

/// The columns of a table: one list for reading and writing.
template<class Record, size_t count>
using Columns = std::array<Column<Record>, count>;

/// The columns as they are found in a table that is read: makes records of its rows.
template<class Record, size_t count>
class BoundColumns
{
public:
    BoundColumns(const TableReader& rows, const Columns<Record, count>& columns)
        : m_rows(rows), m_columns(columns)
    {
        for (size_t i = 0; i < count; ++i)
            m_places[i] = rows.column(QString::fromLatin1(columns[i].name).toUpper());
    }

    /// The row that is read now. What has no column, or does not convert, is empty or 0.
    Record record() const
    {
        Record record;
        for (size_t i = 0; i < count; ++i)
            store(m_rows.value(m_places[i]), m_columns[i], record);
        return record;
    }

private:
    static void store(const QVariant& value, const Column<Record>& column, Record& record)
    {
        if (const auto* text = std::get_if<QString Record::*>(&column.member))
            record.** text = value.toString();
        else if (const auto* real = std::get_if<double Record::*>(&column.member))
            record.** real = value.toDouble();
        else
            record.*std::get<int Record::*>(column.member) = value.toInt();
    }

    const TableReader& m_rows;
    const Columns<Record, count>& m_columns;
    std::array<int, count> m_places;
};

/// What a row of the table holds for a record.
template<class Record, size_t count>
QMap<QString, QVariant> valuesOf(const Record& record, const Columns<Record, count>& columns)
{
    QMap<QString, QVariant> values;
    for (const Column<Record>& column : columns)
        values.insert(
            QString::fromLatin1(column.name),
            std::visit([&](auto member) { return QVariant(record.*member); }, column.member));
    return values;
}

}  // namespace velm::detail
