#pragma once

#include <QByteArray>
#include <QIODevice>

#include <array>
#include <limits>

#include <minizip/ioapi.h>

namespace velm::detail {

/// Through which minizip reads or writes an open device. It reads numbers byte by byte, here and
/// there by turns, and goes back to each entry that it has written: parts of the device are held in
/// memory, so that the system is asked seldom. The device is not closed; it lives longer.
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

    // How many bytes were read or written. Fewer than asked for are noted.

    qint64 read(char* bytes, qint64 size);
    qint64 write(const char* bytes, qint64 size);
    /// Writes what is held in memory. False if it cannot.
    bool flush();

    /// From now on nothing is written: the work is broken off.
    void abandon();
    bool isAbandoned() const { return m_isAbandoned; }

    /// Whether memory ran out.
    bool isOutOfMemory() const { return m_isOutOfMemory; }
    void noteOutOfMemory();

    /// Whether fewer bytes were read or written than were asked for. minizip asks: it takes the end
    /// of a file in the middle of a number for a zero otherwise.
    bool isShort() const { return m_isShort; }

private:
    /// Some bytes of the device from a place on.
    struct Part
    {
        QByteArray bytes;
        qint64 at = 0;

        bool holds(qint64 place) const { return place >= at && place < at + bytes.size(); }
    };

    const Part& partWith(qint64 place);

    QIODevice& m_device;
    qint64 m_position = 0;
    std::array<Part, 2> m_read;                         // the one that was used last comes first
    qint64 m_end = std::numeric_limits<qint64>::max();  // from which on nothing was there to read
    Part m_written;                                     // not yet on the device
    bool m_isShort = false;
    bool m_isOutOfMemory = false;
    bool m_isAbandoned = false;
};

}  // namespace velm::detail
