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

void chopCharacter(QString& keys)
{
    const bool isPair = keys.size() > 1 && keys.at(keys.size() - 1).isLowSurrogate();
    keys.chop(isPair ? 2 : 1);
}

/// Reads keys up to Enter. False if the user breaks off.
bool readKeys(HANDLE console, QString& line)
{
    constexpr wchar_t kBreak = 3;      // Ctrl+C
    constexpr wchar_t kEnd = 4;        // Ctrl+D
    constexpr wchar_t kKill = 21;      // Ctrl+U
    constexpr wchar_t kKillWord = 23;  // Ctrl+W: a word of what nobody sees is the line
    constexpr wchar_t kEscape = 27;
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
            chopCharacter(keys);
        else if (key == kKill || key == kKillWord || key == kEscape)
            keys.clear();
        else if (key >= L' ')
            keys.append(QChar(static_cast<ushort>(key)));
    }
    return false;
}

/// A console that shows no keys while this exists, and none of which ends the program but
/// Ctrl+Break, which finds the console as it was.
class HiddenConsole
{
public:
    explicit HiddenConsole(HANDLE console)
    {
        hiddenConsole = console;
        m_isConsole = GetConsoleMode(console, &usualMode) != 0;
        if (m_isConsole) {
            SetConsoleCtrlHandler(&restore, TRUE);
            SetConsoleMode(console, 0);
        }
    }

    ~HiddenConsole()
    {
        if (m_isConsole) {
            SetConsoleMode(hiddenConsole, usualMode);
            SetConsoleCtrlHandler(&restore, FALSE);
        }
    }

    Q_DISABLE_COPY(HiddenConsole)

    bool isConsole() const { return m_isConsole; }

private:
    static BOOL WINAPI restore(DWORD event)
    {
        Q_UNUSED(event);
        SetConsoleMode(hiddenConsole, usualMode);
        return FALSE;  // what ends the program comes next
    }

    static inline HANDLE hiddenConsole = INVALID_HANDLE_VALUE;
    static inline DWORD usualMode = 0;

    bool m_isConsole = false;
};

bool ask(HANDLE console, const QString& question, QString& line)
{
    const HiddenConsole hidden(console);
    if (!hidden.isConsole())
        return false;
    writeText(Stream::Error, question.toUtf8());
    const bool isWhole = readKeys(console, line);
    writeText(Stream::Error, "\n");
    return isWhole;
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
    if (console == INVALID_HANDLE_VALUE)
        return false;
    const bool isWhole = ask(console, question, line);
    CloseHandle(console);
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
