#pragma once

#include <QIODevice>

#include <minizip/ioapi.h>

namespace velm::detail {

/// Through which minizip reads and writes an open device, which is not closed. Both live longer
/// than their use.
class ZipDevice
{
public:
    explicit ZipDevice(QIODevice& device) : m_device(device) {}

    zlib_filefunc64_def functions();
    QIODevice& device() const { return m_device; }

    /// Whether fewer bytes were read or written than were asked for. minizip asks: it takes the end
    /// of a file in the middle of a number for a zero otherwise.
    bool isShort() const { return m_isShort; }
    void note(qint64 asked, qint64 done) { m_isShort = m_isShort || done != asked; }

private:
    QIODevice& m_device;
    bool m_isShort = false;
};

}  // namespace velm::detail
