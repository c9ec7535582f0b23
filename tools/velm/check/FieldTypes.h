#pragma once

#include "VelmTypes.h"

#include <QString>

/// The numbers of the types of fields, as configurations have them.
namespace fieldtypes {

constexpr int kHidden = 10;  ///< is added to the type of a field that is not shown

inline bool isKnown(int type)
{
    return type >= 0 && type % kHidden <= Velm::FieldDate && type < 2 * kHidden;
}

/// For messages: "0 text, 1 integer, ...".
inline QString names()
{
    return QStringLiteral(
        "0 text, 1 integer, 2 long, 3 real, 4 date, or 10 more for a hidden field");
}

}  // namespace fieldtypes
