#include "archive/ZipFields.h"

namespace velm::detail {

QByteArray extraField(const QByteArray& fields, quint16 id)
{
    constexpr int kHead = 4;  // the number of the field, and its size
    for (int at = 0; at + kHead <= fields.size();) {
        const int size = fieldOf<quint16>(fields, at + 2);
        if (fieldOf<quint16>(fields, at) == id && at + kHead + size <= fields.size())
            return fields.mid(at + kHead, size);
        at += kHead + size;
    }
    return QByteArray();
}

}  // namespace velm::detail
