#include "archive/ZipDevice.h"

#include <algorithm>

namespace velm::detail {

namespace {

constexpr int kMostWritten = 1 << 20;  // bytes that are held before they are written

ZipDevice& of(voidpf stream)
{
    return *static_cast<ZipDevice*>(stream);
}

/// Does something on behalf of minizip, which is no C++.
/// @return @p failed if an exception ends it
template<class Call, class Answer>
Answer guarded(voidpf stream, Answer failed, const Call& call) noexcept
{
    try {
        return call(of(stream));
    } catch (...) {  // there is none but std::bad_alloc
        of(stream).noteOutOfMemory();
        return failed;
    }
}

voidpf ZCALLBACK openDevice(voidpf opaque, const void*, int)
{
    return opaque;
}

/// What is made anew is not read.
uLong ZCALLBACK readNothing(voidpf, voidpf, void*, uLong)
{
    return 0;
}

uLong ZCALLBACK writeDevice(voidpf, voidpf stream, const void* bytes, uLong size)
{
    return guarded(stream, uLong(0), [&](ZipDevice& device) {
        return static_cast<uLong>(
            device.write(static_cast<const char*>(bytes), static_cast<qint64>(size)));
    });
}

ZPOS64_T ZCALLBACK tellDevice(voidpf, voidpf stream)
{
    return static_cast<ZPOS64_T>(of(stream).position());
}

long ZCALLBACK seekDevice(voidpf, voidpf stream, ZPOS64_T offset, int origin)
{
    return guarded(stream, -1L, [&](ZipDevice& device) {
        return device.seek(static_cast<qint64>(offset), origin) ? 0L : -1L;
    });
}

int ZCALLBACK leaveDevice(voidpf, voidpf stream)
{
    return guarded(stream, -1, [](ZipDevice& device) { return device.flush() ? 0 : -1; });
}

int ZCALLBACK wasShort(voidpf, voidpf stream)
{
    return of(stream).isShort() ? 1 : 0;
}

}  // namespace

zlib_filefunc64_def ZipDevice::functions()
{
    zlib_filefunc64_def functions{};
    functions.zopen64_file = openDevice;
    functions.zread_file = readNothing;
    functions.zwrite_file = writeDevice;
    functions.ztell64_file = tellDevice;
    functions.zseek64_file = seekDevice;
    functions.zclose_file = leaveDevice;
    functions.zerror_file = wasShort;
    functions.opaque = this;
    return functions;
}

void ZipDevice::abandon()
{
    m_isAbandoned = true;
    m_isShort = true;
    m_written.clear();
}

void ZipDevice::noteOutOfMemory()
{
    m_isOutOfMemory = true;
    abandon();
}

bool ZipDevice::seek(qint64 offset, int origin)
{
    qint64 base = 0;
    if (origin == ZLIB_FILEFUNC_SEEK_CUR)
        base = m_position;
    else if (origin == ZLIB_FILEFUNC_SEEK_END)
        base = std::max(m_device.size(), m_writtenAt + m_written.size());
    if (offset < -base)
        return false;
    m_position = base + offset;
    return true;
}

qint64 ZipDevice::write(const char* bytes, qint64 size)
{
    if (m_isAbandoned)
        return 0;
    const qint64 end = m_writtenAt + m_written.size();
    const bool touches = m_position >= m_writtenAt && m_position <= end;
    if ((!touches || m_written.size() >= kMostWritten) && !flush())
        return 0;
    if (m_written.isEmpty())
        m_writtenAt = m_position;
    const auto offset = static_cast<int>(m_position - m_writtenAt);
    const auto count = static_cast<int>(size);
    m_written.replace(offset, count, bytes, count);
    m_position += size;
    return size;
}

bool ZipDevice::flush()
{
    if (m_isAbandoned)
        return false;
    const qint64 size = m_written.size();
    const bool isDone =
        size == 0
        || (m_device.seek(m_writtenAt) && m_device.write(m_written.constData(), size) == size);
    m_isShort = m_isShort || !isDone;
    m_written.resize(0);
    return isDone;
}

}  // namespace velm::detail
