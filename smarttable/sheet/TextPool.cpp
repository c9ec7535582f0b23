#include "smarttable/sheet/TextPool.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace SmartTable::detail {

namespace {

constexpr size_t kPiece = 1 << 18;
constexpr size_t kFewestSlots = 64;

quint32 hashOf(std::string_view text)
{
    const quint64 hash = std::hash<std::string_view>()(text);
    return static_cast<quint32>(hash ^ hash >> 32);
}

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
size_t TextPool::slotOf(quint32 hash, std::string_view text) const
{
    const size_t mask = m_slots.size() - 1;
    size_t slot = hash & mask;
    while (m_slots[slot].numbered != 0
           && (m_slots[slot].hash != hash || m_texts[m_slots[slot].numbered - 1] != text))
        slot = (slot + 1) & mask;
    return slot;
}

/// Makes room for one text more.
void TextPool::grow()
{
    if (2 * (m_shared + 1) <= m_slots.size())
        return;
    std::vector<Slot> before(std::max(kFewestSlots, m_slots.size() * 2));
    before.swap(m_slots);
    const size_t mask = m_slots.size() - 1;
    for (const Slot& slot : before) {
        size_t free = slot.hash & mask;
        while (slot.numbered != 0 && m_slots[free].numbered != 0)
            free = (free + 1) & mask;
        if (slot.numbered != 0)
            m_slots[free] = slot;
    }
}

quint32 TextPool::addOnce(std::string_view text)
{
    grow();
    const quint32 hash = hashOf(text);
    Slot& slot = m_slots[slotOf(hash, text)];
    if (slot.numbered == 0) {
        slot = {hash, add(text) + 1};
        ++m_shared;
    }
    return slot.numbered - 1;
}

void TextPool::share(quint32 number)
{
    grow();
    const quint32 hash = hashOf(text(number));
    Slot& slot = m_slots[slotOf(hash, text(number))];
    if (slot.numbered == 0) {
        slot = {hash, number + 1};
        ++m_shared;
    }
}

}  // namespace SmartTable::detail
