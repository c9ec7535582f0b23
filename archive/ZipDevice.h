#pragma once

#include <QByteArray>
#include <QIODevice>

#include <minizip/ioapi.h>

namespace velm::detail {

/// Through which minizip writes to an open device. It goes back to each entry that it has written:
/// the end of what is written is held in memory, so that the system is asked seldom. The device is
/// not closed; it lives longer.
/// No exception passes through minizip: want of memory counts as too few bytes, and is noted.
class ZipDevice
{
public:
    explicit ZipDevice(QIODevice& device) : m_device(device) {}
    Q_DISABLE_COPY(ZipDevice)

    zlib_filefunc64_def functions();
    QIODevice& device() const { return m_device; }

    qint64 position() const { return m_position; }
    /// False for a place before the beginning.
    bool seek(qint64 offset, int origin);

    /// How many bytes were written. Fewer than asked for are noted.
    qint64 write(const char* bytes, qint64 size);
    /// Writes what is held in memory. False if it cannot.
    bool flush();

    /// From now on nothing is written: the work is broken off.
    void abandon();
    bool isAbandoned() const { return m_isAbandoned; }

    /// Whether memory ran out.
    bool isOutOfMemory() const { return m_isOutOfMemory; }
    void noteOutOfMemory();

    /// Whether fewer bytes were written than were asked for.
    bool isShort() const { return m_isShort; }

private:
    QIODevice& m_device;
    qint64 m_position = 0;
    QByteArray m_written;  // not yet on the device
    qint64 m_writtenAt = 0;
    bool m_isShort = false;
    bool m_isOutOfMemory = false;
    bool m_isAbandoned = false;
};

}  // namespace velm::detail
