#pragma once

#include <QString>

namespace velm::detail {

/// The part of an XML text that can be parsed with bounded memory: all of it, or what stands before
/// its first entity declaration if the references to its entities would grow to more than eight
/// million characters, or if one of them begins more than 256 elements or groups. Qt's parser
/// bounds entities within entities only.
QString withoutEntityBomb(const QString& xml);

}  // namespace velm::detail
