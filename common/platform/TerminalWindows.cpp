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

int widthOf(DWORD handle)
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const bool isConsole = GetConsoleScreenBufferInfo(GetStdHandle(handle), &info) != 0;
    return isConsole ? info.srWindow.Right - info.srWindow.Left + 1 : 0;
}

/// Reads keys up to Enter. False if the user breaks off.
bool readKeys(HANDLE console, QString& line)
{
    constexpr wchar_t kBreak = 3;  // Ctrl+C
    constexpr wchar_t kEnd = 4;    // Ctrl+D
    QString keys;
    wchar_t key = 0;
    DWORD count = 0;
    while (ReadConsoleW(console, &key, 1, &count, nullptr) != 0 && count == 1) {
        if (key == L'\r' || key == L'\n') {
            line = keys;
            return true;
        }
        if (key == kBreak || key == kEnd)
            return false;
        if (key == L'\b')
            keys.chop(1);
        else
            keys.append(QChar(static_cast<ushort>(key)));
    }
    return false;
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
    return widthOf(STD_OUTPUT_HANDLE);
}

int errorWidth()
{
    return widthOf(STD_ERROR_HANDLE);
}

bool readHidden(const QString& question, QString& line)
{
    const HANDLE console = CreateFileW(L"CONIN$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD usual = 0;
    if (console == INVALID_HANDLE_VALUE || GetConsoleMode(console, &usual) == 0) {
        if (console != INVALID_HANDLE_VALUE)
            CloseHandle(console);
        return false;
    }
    writeText(Stream::Error, question.toUtf8());
    // Keys are read one by one, so that none ends the program or is shown.
    SetConsoleMode(console, 0);
    const bool isWhole = readKeys(console, line);
    SetConsoleMode(console, usual);
    CloseHandle(console);
    writeText(Stream::Error, "\n");
    return isWhole;
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
