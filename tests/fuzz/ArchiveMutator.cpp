#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include <zlib.h>

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

namespace {

constexpr size_t kLocalSize = 30;
constexpr size_t kCentralSize = 46;
constexpr quint64 kInField64 = 0xFFFFFFFF;

template<class Number>
Number get(const uint8_t* from)
{
    return qFromLittleEndian<Number>(from);
}

template<class Number>
void put(uint8_t* to, quint64 number)
{
    qToLittleEndian(static_cast<Number>(number), to);
}

/// What the reader finds in the bytes of an entry.
struct Content
{
    quint64 size = 0;
    uLong crc = crc32(0, nullptr, 0);

    void add(const uint8_t* bytes, size_t count)
    {
        size += count;
        crc = crc32(crc, bytes, static_cast<uInt>(count));
    }
};

Content inflated(const uint8_t* bytes, size_t size)
{
    constexpr quint64 kMost = 1 << 21;
    std::array<uint8_t, 1 << 14> part;
    Content content;
    z_stream stream{};
    inflateInit2(&stream, -MAX_WBITS);
    stream.next_in = const_cast<uint8_t*>(bytes);
    stream.avail_in = static_cast<uInt>(size);
    for (int result = Z_OK; result == Z_OK && content.size < kMost;) {
        stream.next_out = part.data();
        stream.avail_out = static_cast<uInt>(part.size());
        result = inflate(&stream, Z_NO_FLUSH);
        content.add(part.data(), part.size() - stream.avail_out);
    }
    inflateEnd(&stream);
    return content;
}

/// Makes the headers of an archive fit its bytes again, so that a change of a name or a content is
/// not refused for a length, a place or a checksum.
class Repair
{
public:
    Repair(uint8_t* data, size_t size) : m_data(data), m_size(size) {}

    void run(bool keepsSizes)
    {
        const std::vector<size_t> locals = places("PK\3\4", kLocalSize);
        const std::vector<size_t> centrals = places("PK\1\2", kCentralSize);
        for (size_t i = 0; i < centrals.size() && !locals.empty(); ++i)
            repairEntry(centrals[i], locals[i % locals.size()], keepsSizes);
        if (!centrals.empty())
            repairEnds(centrals);
    }

private:
    /// Where a signature stands with a whole header behind it.
    std::vector<size_t> places(const char* signature, size_t headerSize) const
    {
        std::vector<size_t> found;
        for (size_t at = 0; at + headerSize <= m_size; ++at) {
            if (std::memcmp(m_data + at, signature, 4) == 0)
                found.push_back(at);
        }
        return found;
    }

    /// Where the next record begins, or the bytes end.
    size_t nextRecord(size_t at) const
    {
        for (at = std::min(at, m_size); at + 4 <= m_size; ++at) {
            const uint8_t* kind = m_data + at + 2;
            if (m_data[at] == 'P' && m_data[at + 1] == 'K' && kind[0] < 8 && kind[1] < 9)
                return at;
        }
        return m_size;
    }

    void repairEntry(size_t central, size_t local, bool keepsSizes)
    {
        uint8_t* header = m_data + central;
        const size_t rest = nextRecord(central + kCentralSize) - central - kCentralSize;
        const size_t others = get<quint16>(header + 30) + get<quint16>(header + 32);
        if (rest >= others)
            put<quint16>(header + 28, rest - others);  // the name takes what there is
        const size_t begin =
            local + kLocalSize + get<quint16>(header + 28) + get<quint16>(m_data + local + 28);
        const size_t end = nextRecord(begin);
        Content content;
        if (begin <= end && get<quint16>(header + 10) == Z_DEFLATED)
            content = inflated(m_data + begin, end - begin);
        else if (begin <= end)
            content.add(m_data + begin, end - begin);
        put<quint32>(header + 16, content.crc);
        m_field64 = central + kCentralSize + get<quint16>(header + 28) + 4;
        if (!keepsSizes) {
            putWide(header + 24, content.size);
            putWide(header + 20, begin <= end ? end - begin : 0);
            putWide(header + 42, local);
        }
        std::memmove(m_data + local + 4, header + 6, 24);  // version to length of the name
    }

    /// Puts a number, or into the field behind the name that holds the greater numbers in turn.
    void putWide(uint8_t* to, quint64 number)
    {
        if (get<quint32>(to) != kInField64) {
            put<quint32>(to, number);
        } else if (m_field64 + 8 <= m_size) {
            put<quint64>(m_data + m_field64, number);
            m_field64 += 8;
        }
    }

    void repairEnds(const std::vector<size_t>& centrals)
    {
        const std::vector<size_t> wide = places("PK\6\6", 56);
        const std::vector<size_t> locators = places("PK\6\7", 20);
        const std::vector<size_t> ends = places("PK\5\6", 22);
        const size_t begin = centrals.front();
        if (!wide.empty() && !locators.empty()) {
            put<quint64>(m_data + locators.back() + 8, wide.back());
            putEnd<quint64>(wide.back() + 24, centrals.size(), wide.back() - begin, begin);
        }
        if (!ends.empty()) {
            const size_t end = wide.empty() ? ends.back() : wide.back();
            putEnd<quint32, quint16>(ends.back() + 8, centrals.size(), end - begin, begin);
        }
    }

    /// Puts the number of entries twice, size and place of the directory.
    template<class Number, class Count = Number>
    void putEnd(size_t at, size_t count, size_t size, size_t begin)
    {
        uint8_t* to = m_data + at;
        put<Count>(to, count);
        put<Count>(to + sizeof(Count), count);
        put<Number>(to + 2 * sizeof(Count), size);
        put<Number>(to + 2 * sizeof(Count) + sizeof(Number), begin);
    }

    uint8_t* m_data;
    size_t m_size;
    size_t m_field64 = 0;
};

}  // namespace

/// Leaves one archive of four as it comes and keeps the sizes of another, which may be wrong then.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize,
                                          unsigned int seed)
{
    size = LLVMFuzzerMutate(data, size, maxSize);
    if (seed % 4 != 0)
        Repair(data, size).run(seed % 4 == 1);
    return size;
}
