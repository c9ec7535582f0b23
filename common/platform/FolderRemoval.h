#pragma once

#include <QString>

namespace velm::detail::platform {

/// Removes a folder of our own with all that is in it. A link, in its place or within it, is never
/// followed, also if it comes there meanwhile (on Windows: but for the moment between look and
/// step). @return whether no folder is there any more; what is no folder is left alone. False also
/// where memory runs out.
bool removeFolder(const QString& path) noexcept;

/// Whether a file belongs to the user of this process. Always true on Windows.
bool isOwn(const QString& path);

}  // namespace velm::detail::platform
