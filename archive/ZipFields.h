#pragma once

#include <QByteArray>
#include <QtEndian>

namespace velm::detail {

/// The number that stands there in an archive. The caller has seen that the bytes are there.
template<class Number>
Number fieldOf(const QByteArray& bytes, int at)
{
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

/// The content of the extra field @p id (APPNOTE 4.5); empty if there is none.
QByteArray extraField(const QByteArray& fields, quint16 id);

}  // namespace velm::detail
