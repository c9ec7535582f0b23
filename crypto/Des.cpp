#include "crypto/Des.h"

#include "crypto/DesTables.h"

#include <QtEndian>

namespace velm::detail {

namespace {

using des::kTurn;

/// A block between IP and its reverse.
struct Halves
{
    quint32 left;
    quint32 right;
};

inline quint32 turned(quint32 value, int by)
{
    return des::turnedRight(value, by);
}

/// Exchanges the bits of @p a under the mask, shifted, with those of @p b.
inline void exchange(quint32& a, quint32& b, int shift, quint32 mask)
{
    const quint32 difference = (a >> shift ^ b) & mask;
    b ^= difference;
    a ^= difference << shift;
}

/// IP as exchanges of ever smaller squares of bits; then the halves are turned.
inline Halves load(const char* block)
{
    Halves halves{qFromBigEndian<quint32>(block), qFromBigEndian<quint32>(block + 4)};
    exchange(halves.left, halves.right, 4, 0x0F0F0F0F);
    exchange(halves.left, halves.right, 16, 0x0000FFFF);
    exchange(halves.right, halves.left, 2, 0x33333333);
    exchange(halves.right, halves.left, 8, 0x00FF00FF);
    exchange(halves.left, halves.right, 1, 0x55555555);
    return {turned(halves.left, kTurn), turned(halves.right, kTurn)};
}

/// The reverse of load(), behind the last round, where the halves change places.
inline void store(const Halves& halves, char* block)
{
    quint32 left = turned(halves.right, 32 - kTurn);
    quint32 right = turned(halves.left, 32 - kTurn);
    exchange(left, right, 1, 0x55555555);
    exchange(right, left, 8, 0x00FF00FF);
    exchange(right, left, 2, 0x33333333);
    exchange(left, right, 16, 0x0000FFFF);
    exchange(left, right, 4, 0x0F0F0F0F);
    qToBigEndian(left, block);
    qToBigEndian(right, block + 4);
}

/// What the S-boxes and P make of a half and a round key.
inline quint32 mixed(quint32 half, quint64 key)
{
    const auto& s = des::kSubstitutions;
    const quint32 odd = half ^ static_cast<quint32>(key >> 32);
    const quint32 even = turned(half, 28) ^ static_cast<quint32>(key);
    return s[0][odd >> 24 & 63] ^ s[2][odd >> 16 & 63] ^ s[4][odd >> 8 & 63] ^ s[6][odd & 63]
           ^ s[1][even >> 24 & 63] ^ s[3][even >> 16 & 63] ^ s[5][even >> 8 & 63] ^ s[7][even & 63];
}

/// Two rounds; the halves end where they were.
inline void mixTwice(Halves& halves, quint64 first, quint64 second)
{
    halves.left ^= mixed(halves.right, first);
    halves.right ^= mixed(halves.left, second);
}

/// Two blocks side by side: the processor works at one while it waits for the tables of the other.
void crypt(const char* in, char* out, size_t blocks, const std::array<quint64, 16>& keys)
{
    constexpr size_t kSize = Des::kBlockSize;
    for (; blocks >= 2; blocks -= 2, in += 2 * kSize, out += 2 * kSize) {
        Halves first = load(in);
        Halves second = load(in + kSize);
        for (size_t round = 0; round < keys.size(); round += 2) {
            mixTwice(first, keys[round], keys[round + 1]);
            mixTwice(second, keys[round], keys[round + 1]);
        }
        store(first, out);
        store(second, out + kSize);
    }
    if (blocks == 0)
        return;
    Halves last = load(in);
    for (size_t round = 0; round < keys.size(); round += 2)
        mixTwice(last, keys[round], keys[round + 1]);
    store(last, out);
}

/// Turns 28 bits to the left.
inline quint32 turnedHalfKey(quint32 half, int by)
{
    return (half << by | half >> (28 - by)) & 0x0FFFFFFF;
}

}  // namespace

Des::~Des()
{
    wipe(m_roundKeys.data(), sizeof m_roundKeys);
}

void Des::setKey(const char* key)
{
    quint64 halves = 0;
    for (size_t byte = 0; byte < kBlockSize; ++byte)
        halves |= des::kKeyBytes[byte][static_cast<quint8>(key[byte]) >> 1];
    auto upper = static_cast<quint32>(halves >> 28);
    auto lower = static_cast<quint32>(halves & 0x0FFFFFFF);
    for (size_t round = 0; round < m_roundKeys.size(); ++round) {
        upper = turnedHalfKey(upper, des::kShifts[round]);
        lower = turnedHalfKey(lower, des::kShifts[round]);
        quint64 words = 0;
        for (size_t part = 0; part < 4; ++part) {
            words |= des::kKeyParts[part][upper >> (21 - 7 * part) & 127];
            words |= des::kKeyParts[part + 4][lower >> (21 - 7 * part) & 127];
        }
        m_roundKeys[round] = words;
    }
}

void Des::encrypt(const char* in, char* out, size_t blocks) const
{
    crypt(in, out, blocks, m_roundKeys);
}

void Des::decrypt(const char* in, char* out, size_t blocks) const
{
    std::array<quint64, 16> reversed{};
    for (size_t round = 0; round < reversed.size(); ++round)
        reversed[round] = m_roundKeys[reversed.size() - 1 - round];
    crypt(in, out, blocks, reversed);
    wipe(reversed.data(), sizeof reversed);
}

void wipe(void* memory, size_t size)
{
    auto* bytes = static_cast<volatile char*>(memory);
    while (size > 0)
        bytes[--size] = 0;
}

}  // namespace velm::detail
