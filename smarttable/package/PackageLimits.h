#pragma once

#include <QtGlobal>

/// What a package may hold; docs/limits.md tells it to users.
namespace SmartTable::detail {

constexpr bool kIsNarrow = sizeof(void*) == 4;  // a process of 2 to 4 GB
constexpr qint64 kMiB = 1024 * 1024;

/// The file, in bytes.
constexpr qint64 kMostPackageBytes = (kIsNarrow ? 192 : 512) * kMiB;
constexpr int kMostParts = 10000;
/// One part, unpacked.
constexpr qint64 kMostPartBytes = (kIsNarrow ? 192 : 1024) * kMiB;
/// All parts that are read from one package, unpacked.
constexpr qint64 kMostReadBytes = (kIsNarrow ? 512 : 4096) * kMiB;
/// A part of more bytes than this is unpacked to no more than kMostRatio times its packed size. The
/// sheets of a workbook reach 50 times, and "deflate" 1,032.
constexpr qint64 kAlwaysFineBytes = 64 * kMiB;
constexpr int kMostRatio = 500;

/// What is read as a tree: its text, its elements and attributes, and how deep it goes. The text of
/// all relations and the content types of a package has the same bound.
constexpr qint64 kMostSmallXmlBytes = 64 * kMiB;
constexpr int kMostSmallXmlItems = 1000000;
constexpr int kMostSmallXmlDepth = 256;
/// Of one source; a sheet has up to 65,530 links.
constexpr int kMostRelations = 100000;

}  // namespace SmartTable::detail
