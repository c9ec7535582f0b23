#include "smarttable/sheet/RowTable.h"

namespace SmartTable::detail {

/// Where the row stands; null if its page is not there.
std::unique_ptr<Row>* RowTable::place(int number) const
{
    const auto page = static_cast<size_t>(number) / kPageRows;
    if (number < 1 || page >= m_pages.size() || !m_pages[page])
        return nullptr;
    return &(*m_pages[page])[static_cast<size_t>(number) % kPageRows];
}

const Row* RowTable::find(int number) const
{
    const auto* const found = place(number);
    return found ? found->get() : nullptr;
}

Row* RowTable::find(int number)
{
    auto* const found = place(number);
    return found ? found->get() : nullptr;
}

Row& RowTable::at(int number)
{
    const auto page = static_cast<size_t>(number) / kPageRows;
    if (page >= m_pages.size())
        m_pages.resize(page + 1);
    if (!m_pages[page])
        m_pages[page] = std::make_unique<Page>();
    std::unique_ptr<Row>& row = *place(number);
    if (!row) {
        row = std::make_unique<Row>();
        ++m_count;
    }
    return *row;
}

void RowTable::remove(int number)
{
    auto* const found = place(number);
    if (found && *found) {
        found->reset();
        --m_count;
    }
}

int RowTable::next(int number) const
{
    auto page = static_cast<size_t>(number) / kPageRows;
    auto row = static_cast<size_t>(number) % kPageRows;
    for (; page < m_pages.size(); ++page, row = 0) {
        for (; m_pages[page] && row < kPageRows; ++row) {
            if ((*m_pages[page])[row])
                return static_cast<int>(page * kPageRows + row);
        }
    }
    return 0;
}

}  // namespace SmartTable::detail
