#include "common/platform/Terminal.h"

#include <QString>

#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace velm::detail::platform {

bool outputTakesEscapes()
{
    return isatty(STDOUT_FILENO) != 0;
}

int outputWidth()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool writeText(Stream stream, const QByteArray& text)
{
    std::FILE* file = stream == Stream::Output ? stdout : stderr;
    const QByteArray bytes =
        isatty(fileno(file)) != 0 ? QString::fromUtf8(text).toLocal8Bit() : text;
    const auto size = static_cast<size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, file) == size && std::fflush(file) == 0;
}

}  // namespace velm::detail::platform
