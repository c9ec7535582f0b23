#include "check/CheckedTable.h"

#include "check/PlainName.h"

#include <algorithm>

QString rowName(const Place& place)
{
    return place.row == 0 ? QStringLiteral("another row") : QStringLiteral("row %1").arg(place.row);
}

CheckedTable::CheckedTable(const TableSchema& schema) : m_schema(schema)
{
    for (ColumnSchema& column : m_schema.columns)
        column.name = column.name.toUpper();
    for (QString& column : m_schema.key)
        column = column.toUpper();
}

bool CheckedTable::hasKey() const
{
    return std::all_of(m_schema.key.begin(), m_schema.key.end(),
                       [this](const QString& column) { return has(column); });
}

QVariant CheckedTable::value(int row, const QString& column) const
{
    const auto found = m_columns.constFind(column);
    return found == m_columns.constEnd() ? QVariant() : m_rows.at(row).cells.at(*found);
}

bool CheckedTable::isDamaged(int row, const QString& column) const
{
    const auto found = m_columns.constFind(column);
    return found != m_columns.constEnd() && m_rows.at(row).damaged.contains(*found);
}

QString CheckedTable::asGbk(int row, const QString& column) const
{
    const auto found = m_columns.constFind(column);
    return found == m_columns.constEnd() ? QString() : m_rows.at(row).damaged.value(*found);
}

QString CheckedTable::plain(int row, const QString& column) const
{
    const QString gbk = asGbk(row, column);
    if (!gbk.isEmpty())
        return plainName(gbk);
    QString name = text(row, column);
    if (isDamaged(row, column))
        name.remove(QChar::ReplacementCharacter);
    const QString beforeNul = plainName(name.section(QChar::Null, 0, 0));
    return beforeNul.isEmpty() ? plainName(name) : beforeNul;
}

Place CheckedTable::place(int row, const QString& column) const
{
    Place place = this->place(column);
    place.row = m_rows.at(row).id;
    place.keyColumn = m_schema.key.first();
    place.key = text(row, place.keyColumn);
    for (const QString& key : m_schema.key.mid(1))
        place.key += QStringLiteral(", %1 ").arg(key) + text(row, key);
    place.value = text(row, column);
    return place;
}

Place CheckedTable::place(const QString& column) const
{
    Place place;
    place.database = m_schema.database;
    place.table = name();
    place.column = column;
    return place;
}

void CheckedTable::setColumns(const QStringList& names)
{
    for (int i = 0; i < names.size(); ++i)
        m_columns.insert(names.at(i).toUpper(), i);
}
