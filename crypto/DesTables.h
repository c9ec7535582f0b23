#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

/// The tables of FIPS 46-3 as they are printed there, bits counted from 1 at the most significant
/// one, and what Des looks up, made of them by the compiler.
namespace velm::detail::des {

template<size_t size>
using Positions = std::array<quint8, size>;

// Key schedule.
inline constexpr Positions<56> kPC1{57, 49, 41, 33, 25, 17, 9,  1,  58, 50, 42, 34, 26, 18,
                                    10, 2,  59, 51, 43, 35, 27, 19, 11, 3,  60, 52, 44, 36,
                                    63, 55, 47, 39, 31, 23, 15, 7,  62, 54, 46, 38, 30, 22,
                                    14, 6,  61, 53, 45, 37, 29, 21, 13, 5,  28, 20, 12, 4};
inline constexpr Positions<48> kPC2{14, 17, 11, 24, 1,  5,  3,  28, 15, 6,  21, 10, 23, 19, 12, 4,
                                    26, 8,  16, 7,  27, 20, 13, 2,  41, 52, 31, 37, 47, 55, 30, 40,
                                    51, 45, 33, 48, 44, 49, 39, 56, 34, 53, 46, 42, 50, 36, 29, 32};
inline constexpr std::array<int, 16> kShifts{1, 1, 2, 2, 2, 2, 2, 2, 1, 2, 2, 2, 2, 2, 2, 1};

// The round function. E is what bits 4i to 4i + 5 of a half are, so no table of it is needed.
inline constexpr Positions<32> kP{16, 7, 20, 21, 29, 12, 28, 17, 1,  15, 23, 26, 5,  18, 31, 10,
                                  2,  8, 24, 14, 32, 27, 3,  9,  19, 13, 30, 6,  22, 11, 4,  25};
inline constexpr std::array<Positions<64>, 8> kS{
    {{14, 4,  13, 1, 2,  15, 11, 8,  3,  10, 6,  12, 5,  9,  0, 7,  //
      0,  15, 7,  4, 14, 2,  13, 1,  10, 6,  12, 11, 9,  5,  3, 8,  //
      4,  1,  14, 8, 13, 6,  2,  11, 15, 12, 9,  7,  3,  10, 5, 0,  //
      15, 12, 8,  2, 4,  9,  1,  7,  5,  11, 3,  14, 10, 0,  6, 13},
     {15, 1,  8,  14, 6,  11, 3,  4,  9,  7, 2,  13, 12, 0, 5,  10,  //
      3,  13, 4,  7,  15, 2,  8,  14, 12, 0, 1,  10, 6,  9, 11, 5,   //
      0,  14, 7,  11, 10, 4,  13, 1,  5,  8, 12, 6,  9,  3, 2,  15,  //
      13, 8,  10, 1,  3,  15, 4,  2,  11, 6, 7,  12, 0,  5, 14, 9},
     {10, 0,  9,  14, 6, 3,  15, 5,  1,  13, 12, 7,  11, 4,  2,  8,  //
      13, 7,  0,  9,  3, 4,  6,  10, 2,  8,  5,  14, 12, 11, 15, 1,  //
      13, 6,  4,  9,  8, 15, 3,  0,  11, 1,  2,  12, 5,  10, 14, 7,  //
      1,  10, 13, 0,  6, 9,  8,  7,  4,  15, 14, 3,  11, 5,  2,  12},
     {7,  13, 14, 3, 0,  6,  9,  10, 1,  2, 8, 5,  11, 12, 4,  15,  //
      13, 8,  11, 5, 6,  15, 0,  3,  4,  7, 2, 12, 1,  10, 14, 9,   //
      10, 6,  9,  0, 12, 11, 7,  13, 15, 1, 3, 14, 5,  2,  8,  4,   //
      3,  15, 0,  6, 10, 1,  13, 8,  9,  4, 5, 11, 12, 7,  2,  14},
     {2,  12, 4,  1,  7,  10, 11, 6,  8,  5,  3,  15, 13, 0, 14, 9,   //
      14, 11, 2,  12, 4,  7,  13, 1,  5,  0,  15, 10, 3,  9, 8,  6,   //
      4,  2,  1,  11, 10, 13, 7,  8,  15, 9,  12, 5,  6,  3, 0,  14,  //
      11, 8,  12, 7,  1,  14, 2,  13, 6,  15, 0,  9,  10, 4, 5,  3},
     {12, 1,  10, 15, 9, 2,  6,  8,  0,  13, 3,  4,  14, 7,  5,  11,  //
      10, 15, 4,  2,  7, 12, 9,  5,  6,  1,  13, 14, 0,  11, 3,  8,   //
      9,  14, 15, 5,  2, 8,  12, 3,  7,  0,  4,  10, 1,  13, 11, 6,   //
      4,  3,  2,  12, 9, 5,  15, 10, 11, 14, 1,  7,  6,  0,  8,  13},
     {4,  11, 2,  14, 15, 0, 8,  13, 3,  12, 9, 7,  5,  10, 6, 1,  //
      13, 0,  11, 7,  4,  9, 1,  10, 14, 3,  5, 12, 2,  15, 8, 6,  //
      1,  4,  11, 13, 12, 3, 7,  14, 10, 15, 6, 8,  0,  5,  9, 2,  //
      6,  11, 13, 8,  1,  4, 10, 7,  9,  5,  0, 15, 14, 2,  3, 12},
     {13, 2,  8,  4, 6,  15, 11, 1,  10, 9,  3,  14, 5,  0,  12, 7,  //
      1,  15, 13, 8, 10, 3,  7,  4,  12, 5,  6,  11, 0,  14, 9,  2,  //
      7,  11, 4,  1, 9,  12, 14, 2,  0,  6,  10, 13, 15, 3,  5,  8,  //
      2,  1,  14, 7, 4,  10, 8,  13, 15, 12, 9,  0,  3,  5,  6,  11}}};

/// Takes the bits of @p value, which has @p width of them, in the order that a table tells.
template<size_t size>
constexpr quint64 permuted(quint64 value, int width, const Positions<size>& table)
{
    quint64 result = 0;
    for (const quint8 position : table)
        result = result << 1 | (value >> (width - position) & 1);
    return result;
}

/// Each half is held turned to the right by this, so that the six bits for each second S-box are
/// the low ones of a byte.
inline constexpr int kTurn = 3;

constexpr quint32 turnedRight(quint32 value, int by)
{
    return value >> by | value << (32 - by);
}

/// What an S-box and P make of six bits.
constexpr quint32 substituted(size_t box, quint32 six)
{
    const quint32 row = (six >> 4 & 2) | (six & 1);
    const quint64 four = kS[box][row * 16 + (six >> 1 & 15)];
    return turnedRight(static_cast<quint32>(permuted(four << (28 - 4 * box), 32, kP)), kTurn);
}

using Substitutions = std::array<std::array<quint32, 64>, 8>;

constexpr Substitutions makeSubstitutions()
{
    Substitutions all{};
    for (size_t box = 0; box < all.size(); ++box) {
        for (quint32 six = 0; six < 64; ++six)
            all[box][six] = substituted(box, six);
    }
    return all;
}

/// The S-boxes with P behind them.
inline constexpr Substitutions kSubstitutions = makeSubstitutions();

/// A round key as it meets the halves: six bits in each byte, those of S-boxes 1, 3, 5, 7 in the
/// upper word and of 2, 4, 6, 8 in the lower one.
constexpr quint64 spread(quint64 key)
{
    quint64 words = 0;
    for (int box = 0; box < 8; ++box) {
        const quint64 six = key >> (42 - 6 * box) & 63;
        words |= six << ((box % 2 == 0 ? 56 : 24) - 4 * (box - box % 2));
    }
    return words;
}

/// PC-2 for seven bits of the 56 at a time.
using KeyParts = std::array<std::array<quint64, 128>, 8>;

constexpr KeyParts makeKeyParts()
{
    KeyParts all{};
    for (size_t part = 0; part < all.size(); ++part) {
        for (size_t seven = 0; seven < 128; ++seven)
            all[part][seven] = spread(permuted(quint64(seven) << (49 - 7 * part), 56, kPC2));
    }
    return all;
}

inline constexpr KeyParts kKeyParts = makeKeyParts();

/// PC-1 for a byte of the key at a time; its parity bit counts for nothing.
using KeyBytes = std::array<std::array<quint64, 128>, 8>;

constexpr KeyBytes makeKeyBytes()
{
    KeyBytes all{};
    for (size_t byte = 0; byte < all.size(); ++byte) {
        for (size_t seven = 0; seven < 128; ++seven)
            all[byte][seven] = permuted(quint64(seven) << (57 - 8 * byte), 64, kPC1);
    }
    return all;
}

inline constexpr KeyBytes kKeyBytes = makeKeyBytes();

}  // namespace velm::detail::des
