#pragma once

#include <QtGlobal>

#include <memory>
#include <string_view>
#include <vector>

namespace SmartTable::detail {

/// Holds many texts in few pieces of memory, and numbers them from 0. Not guarded.
class TextPool
{
public:
    /// Adds a text under a number of its own.
    quint32 add(std::string_view text);
    /// The number of an equal text that was added by addOnce(), or @p text under a new one.
    quint32 addOnce(std::string_view text);
    /// Makes addOnce() find a text that add() has added.
    void share(quint32 number);

    /// Empty for a number that there is not. Valid as long as the pool.
    std::string_view text(quint32 number) const;
    quint32 size() const { return static_cast<quint32>(m_texts.size()); }

private:
    struct Slot
    {
        quint32 hash = 0;
        quint32 numbered = 0;  // the number of a text, and 1; 0 if it is free
    };

    std::string_view keep(std::string_view text);
    size_t slotOf(quint32 hash, std::string_view text) const;
    void grow();

    std::vector<std::unique_ptr<char[]>> m_pieces;
    size_t m_left = 0;  // bytes at the end of the last piece
    char* m_free = nullptr;
    std::vector<std::string_view> m_texts;
    std::vector<Slot> m_slots;  // open addressing, of the texts that addOnce() finds
    size_t m_shared = 0;        // how many those are
};

}  // namespace SmartTable::detail
