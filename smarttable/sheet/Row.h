#pragma once

#include "smarttable/sheet/Cell.h"

#include <string>
#include <vector>

namespace SmartTable::detail {

/// A row of a sheet: its cells in the order of their columns, and what else it is written with.
class Row
{
public:
    const Cell* find(int column) const;
    /// The cell; an empty one is made where there is none.
    Cell& at(int column);
    /// Whether there was one.
    bool remove(int column);

    const std::vector<Cell>& cells() const { return m_cells; }
    std::vector<Cell>& cells() { return m_cells; }

    std::string attributes;  // as they are written, without "r" and "spans"
    std::string tail;        // what stands behind its cells

private:
    std::vector<Cell> m_cells;
};

}  // namespace SmartTable::detail
