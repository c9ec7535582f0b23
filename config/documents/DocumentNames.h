#pragma once

#include <QString>

/// The keys in "globaldefines" under which the configuration keeps JSON documents.
namespace velm::detail::documents {

inline QString globalParameters()
{
    return QStringLiteral("GlobalParam");
}

inline QString fieldConversion()
{
    return QStringLiteral("字段转换");
}

/// The layout of the graphic-attribute library.
inline QString genusLayout()
{
    return QStringLiteral("图属库");
}

}  // namespace velm::detail::documents
