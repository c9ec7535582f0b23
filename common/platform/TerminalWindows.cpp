#include "common/platform/Terminal.h"

#include <QString>

#include <algorithm>
#include <cstdio>

#include <windows.h>

namespace velm::detail::platform {

namespace {

bool writeToConsole(HANDLE console, const QString& text)
{
    constexpr int kMostAtOnce = 8000;  // a console has a small buffer for what is written to it
    for (int i = 0; i < text.size();) {
        DWORD written = 0;
        int count = std::min(kMostAtOnce, text.size() - i);
        if (count > 1 && text.at(i + count - 1).isHighSurrogate())
            --count;
        if (WriteConsoleW(console, text.utf16() + i, static_cast<DWORD>(count), &written, nullptr)
                == 0
            || written == 0)
            return false;
        i += static_cast<int>(written);
    }
    return true;
}

}  // namespace

bool outputTakesEscapes()
{
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(output, &mode) == 0)  // a file, a pipe or nothing
        return false;
    return SetConsoleMode(output,
                          mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING)
           != 0;
}

int outputWidth()
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool isConsole = GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) != 0;
    return isConsole ? info.srWindow.Right - info.srWindow.Left + 1 : 0;
}

bool writeText(Stream stream, const QByteArray& text)
{
    const HANDLE handle =
        GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) != 0)
        return writeToConsole(handle, QString::fromUtf8(text));
    std::FILE* file = stream == Stream::Output ? stdout : stderr;
    const auto size = static_cast<size_t>(text.size());
    return std::fwrite(text.constData(), 1, size, file) == size && std::fflush(file) == 0;
}

}  // namespace velm::detail::platform
