#pragma once

#include "data/access/TableReader.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <array>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <variant>

namespace velm::detail {

/// A column of a table and where a record keeps its value.
template<class Record>
struct Column
{
    using Reader = void (*)(const QVariant& value, Record& record);

    const char* name;  ///< as it is written; it is read in any letter case
    /// A member; or what puts the value in place where it is not stored as it is, then the column
    /// is never written.
    std::variant<QString Record::*, double Record::*, int Record::*, qint64 Record::*,
                 bool Record::*, Reader>
        member;
    bool keepsDefault = false;  ///< a table without the column leaves the member as it is

    QString upperName() const { return QString::fromLatin1(name).toUpper(); }
};

/// The columns of a table: one list for reading and writing.
template<class Record, size_t count>
using Columns = std::array<Column<Record>, count>;

/// An integer of a row. What is none, or more than 32 bits hold, is 0.
inline int integerOf(const QVariant& value)
{
    using Limits = std::numeric_limits<int>;
    if (value.userType() == QMetaType::Double) {
        const double real = value.toDouble();
        return real > Limits::min() - 0.5 && real < Limits::max() + 0.5 ? qRound(real) : 0;
    }
    const qint64 number = value.toLongLong();
    return number >= Limits::min() && number <= Limits::max() ? static_cast<int>(number) : 0;
}

/// Puts the value of a column in place. One that does not convert is empty, 0 or false.
template<class Record>
void store(const QVariant& value, const Column<Record>& column, Record& record)
{
    if (const auto* text = std::get_if<QString Record::*>(&column.member))
        record.** text = value.toString();
    else if (const auto* real = std::get_if<double Record::*>(&column.member))
        record.** real = value.toDouble();
    else if (const auto* number = std::get_if<int Record::*>(&column.member))
        record.** number = integerOf(value);
    else if (const auto* wide = std::get_if<qint64 Record::*>(&column.member))
        record.** wide = value.toLongLong();
    else if (const auto* flag = std::get_if<bool Record::*>(&column.member))
        record.** flag = integerOf(value) != 0;
    else
        std::get<typename Column<Record>::Reader>(column.member)(value, record);
}

/// The columns as they are found in a table that is read: makes records of its rows.
template<class Record, size_t count>
class BoundColumns
{
public:
    BoundColumns(const TableReader& rows, const Columns<Record, count>& columns)
        : m_rows(rows), m_columns(columns)
    {
        for (size_t i = 0; i < count; ++i)
            m_places[i] = rows.column(columns[i].upperName());
    }

    /// The record of the row that is read now. What has no column is empty, 0 or false, unless it
    /// keeps its default.
    Record record() const
    {
        Record record;
        for (size_t i = 0; i < count; ++i) {
            if (m_places[i] >= 0 || !m_columns[i].keepsDefault)
                store(m_rows.value(m_places[i]), m_columns[i], record);
        }
        return record;
    }

private:
    const TableReader& m_rows;
    const Columns<Record, count>& m_columns;
    std::array<int, count> m_places;
};

/// The records of a table in stored order; none if the reading breaks off.
template<class Record, size_t count>
QVector<Record> recordsOf(const CVelmDatabase& database, const QString& table,
                          const Columns<Record, count>& columns)
{
    TableReader rows(database, table);
    const BoundColumns bound(rows, columns);
    QVector<Record> records;
    while (rows.next())
        records.append(bound.record());
    if (rows.brokeOff())
        records.clear();
    return records;
}

/// What a row of the table holds for a record.
template<class Record, size_t count>
QMap<QString, QVariant> valuesOf(const Record& record, const Columns<Record, count>& columns)
{
    QMap<QString, QVariant> values;
    for (const Column<Record>& column : columns) {
        const auto insert = [&](auto member) {
            if constexpr (std::is_member_pointer_v<decltype(member)>)
                values.insert(QString::fromLatin1(column.name), QVariant(record.*member));
        };
        std::visit(insert, column.member);
    }
    return values;
}

}  // namespace velm::detail
