#include "smarttable/sheet/TextPool.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace SmartTable::detail {

namespace {

constexpr size_t kPiece = 1 << 18;
constexpr size_t kFewestSlots = 64;

}  // namespace

std::string_view TextPool::keep(std::string_view text)
{
    if (text.size() > m_left) {
        const size_t size = std::max(kPiece, text.size());
        m_pieces.push_back(std::make_unique<char[]>(size));
        m_free = m_pieces.back().get();
        m_left = size;
    }
    char* const place = m_free;
    if (!text.empty())
        std::memcpy(place, text.data(), text.size());
    m_free += text.size();
    m_left -= text.size();
    return std::string_view(place, text.size());
}

quint32 TextPool::add(std::string_view text)
{
    m_texts.push_back(std::string_view());
    m_texts.back() = keep(text);
    return size() - 1;
}

std::string_view TextPool::text(quint32 number) const
{
    return number < m_texts.size() ? m_texts[number] : std::string_view();
}

/// Where the text stands, or the free slot where it would.
size_t TextPool::slotOf(std::string_view text) const
{
    size_t slot = std::hash<std::string_view>()(text) & (m_slots.size() - 1);
    while (m_slots[slot] != 0 && m_texts[m_slots[slot] - 1] != text)
        slot = (slot + 1) & (m_slots.size() - 1);
    return slot;
}

void TextPool::grow()
{
    std::vector<quint32> before(std::max(kFewestSlots, m_slots.size() * 2));
    before.swap(m_slots);
    for (const quint32 numbered : before) {
        if (numbered != 0)
            m_slots[slotOf(m_texts[numbered - 1])] = numbered;
    }
}

quint32 TextPool::addOnce(std::string_view text)
{
    if (2 * (m_shared + 1) > m_slots.size())
        grow();
    const size_t slot = slotOf(text);
    if (m_slots[slot] == 0) {
        const quint32 number = add(text);
        m_slots[slot] = number + 1;
        ++m_shared;
    }
    return m_slots[slot] - 1;
}

void TextPool::share(quint32 number)
{
    if (2 * (m_shared + 1) > m_slots.size())
        grow();
    const size_t slot = slotOf(text(number));
    if (m_slots[slot] == 0) {
        m_slots[slot] = number + 1;
        ++m_shared;
    }
}

}  // namespace SmartTable::detail
