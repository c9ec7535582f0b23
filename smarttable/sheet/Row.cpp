#include "smarttable/sheet/Row.h"

#include <algorithm>

namespace SmartTable::detail {

namespace {

bool isBefore(const Cell& cell, int column)
{
    return cell.column < column;
}

}  // namespace

const Cell* Row::find(int column) const
{
    const auto found = std::lower_bound(m_cells.begin(), m_cells.end(), column, isBefore);
    return found != m_cells.end() && found->column == column ? &*found : nullptr;
}

Cell& Row::at(int column)
{
    // Most sheets are written from left to right.
    auto place = m_cells.empty() || m_cells.back().column < column
                     ? m_cells.end()
                     : std::lower_bound(m_cells.begin(), m_cells.end(), column, isBefore);
    if (place == m_cells.end() || place->column != column) {
        Cell cell;
        cell.column = static_cast<quint16>(column);
        place = m_cells.insert(place, cell);
    }
    return *place;
}

bool Row::remove(int column)
{
    const auto found = std::lower_bound(m_cells.begin(), m_cells.end(), column, isBefore);
    if (found == m_cells.end() || found->column != column)
        return false;
    m_cells.erase(found);
    return true;
}

}  // namespace SmartTable::detail
