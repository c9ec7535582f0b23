#pragma once

#include <array>

/// The keys of "FRAMEMODE" of a map frame. All values are integers.
namespace velm::detail::framemodes {

inline constexpr char kSelection[] = "SelMode";
inline constexpr char kTrim[] = "TrimMode";
inline constexpr char kStyle[] = "FrameStyle";
inline constexpr char kSave[] = "FrameSave";
inline constexpr char kScaleType[] = "FrameScaleType";
inline constexpr char kSizeType[] = "FrameSizeType";

inline constexpr std::array<const char*, 6> kAll{kSelection, kTrim,      kStyle,
                                                 kSave,      kScaleType, kSizeType};

}  // namespace velm::detail::framemodes
