#include "archive/ZipDevice.h"

#include <algorithm>

namespace velm::detail {

namespace {

ZipDevice& of(voidpf stream)
{
    return *static_cast<ZipDevice*>(stream);
}

voidpf ZCALLBACK openDevice(voidpf opaque, const void*, int)
{
    return opaque;
}

uLong ZCALLBACK readDevice(voidpf, voidpf stream, void* buffer, uLong size)
{
    const auto asked = static_cast<qint64>(size);
    const qint64 got = of(stream).device().read(static_cast<char*>(buffer), asked);
    of(stream).note(asked, got);
    return static_cast<uLong>(std::max<qint64>(0, got));
}

uLong ZCALLBACK writeDevice(voidpf, voidpf stream, const void* buffer, uLong size)
{
    const auto asked = static_cast<qint64>(size);
    const qint64 put = of(stream).device().write(static_cast<const char*>(buffer), asked);
    of(stream).note(asked, put);
    return static_cast<uLong>(std::max<qint64>(0, put));
}

ZPOS64_T ZCALLBACK tellDevice(voidpf, voidpf stream)
{
    return static_cast<ZPOS64_T>(of(stream).device().pos());
}

long ZCALLBACK seekDevice(voidpf, voidpf stream, ZPOS64_T offset, int origin)
{
    QIODevice& device = of(stream).device();
    qint64 base = 0;
    if (origin == ZLIB_FILEFUNC_SEEK_CUR)
        base = device.pos();
    else if (origin == ZLIB_FILEFUNC_SEEK_END)
        base = device.size();
    const qint64 place = base + static_cast<qint64>(offset);
    return place >= 0 && device.seek(place) ? 0 : -1;
}

int ZCALLBACK leaveDevice(voidpf, voidpf)
{
    return 0;
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
    functions.zread_file = readDevice;
    functions.zwrite_file = writeDevice;
    functions.ztell64_file = tellDevice;
    functions.zseek64_file = seekDevice;
    functions.zclose_file = leaveDevice;
    functions.zerror_file = wasShort;
    functions.opaque = this;
    return functions;
}

}  // namespace velm::detail
