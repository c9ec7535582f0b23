#pragma once

#include <QString>

/// The readings of the GB 2312 level-1 characters, which the standard sorts by pinyin.
namespace velm::detail {

/// The syllable of a GB 2312 character. @p key is lead byte * 256 + trail byte - 65536; keys before
/// the first and behind the last level-1 syllable count as "a" and "zuo".
QString syllableOfKey(int key);

/// The initial letter, upper case. @p areaPosition is area * 100 + position (1601 to 5589 for level
/// 1); the empty text outside.
QString initialOfPosition(int areaPosition);

}  // namespace velm::detail
