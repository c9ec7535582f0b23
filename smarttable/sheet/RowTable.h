#pragma once

#include "smarttable/sheet/Row.h"

#include <array>
#include <memory>
#include <vector>

namespace SmartTable::detail {

/// The rows of a sheet by their numbers, 1 to kMostRows. A row is found without a search, and rows
/// far apart take little. Not guarded.
class RowTable
{
public:
    /// Null where there is none.
    const Row* find(int number) const;
    Row* find(int number);
    /// The row; an empty one is made where there is none.
    Row& at(int number);
    void remove(int number);

    /// The number of the first row from @p number on; 0 if there is none.
    int next(int number) const;
    int count() const { return m_count; }

private:
    static constexpr int kPageRows = 1024;
    using Page = std::array<std::unique_ptr<Row>, kPageRows>;

    std::unique_ptr<Row>* place(int number) const;

    std::vector<std::unique_ptr<Page>> m_pages;
    int m_count = 0;
};

}  // namespace SmartTable::detail
