#include "common/platform/Terminal.h"

#include <QString>

#include <cstdio>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace velm::detail::platform {

namespace {

int widthOf(int file)
{
    winsize size{};
    return ioctl(file, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void writeAll(int file, const QByteArray& text)
{
    ssize_t written = write(file, text.constData(), static_cast<size_t>(text.size()));
    Q_UNUSED(written)  // a terminal takes a line
}

/// Reads keys up to Enter. False if the user breaks off.
bool readKeys(int terminal, QByteArray& line)
{
    constexpr char kBreak = 3;  // Ctrl+C
    constexpr char kEnd = 4;    // Ctrl+D
    constexpr char kDelete = 127;
    char key = '\0';
    while (read(terminal, &key, 1) == 1) {
        if (key == '\n' || key == '\r')
            return true;
        if (key == kBreak || key == kEnd)
            return false;
        if (key == kDelete || key == '\b')
            line.chop(1);
        else
            line.append(key);
    }
    return false;
}

}  // namespace

bool outputTakesEscapes()
{
    return isatty(STDOUT_FILENO) != 0;
}

int outputWidth()
{
    return widthOf(STDOUT_FILENO);
}

int errorWidth()
{
    return widthOf(STDERR_FILENO);
}

bool readHidden(const QString& question, QString& line)
{
    const int terminal = open("/dev/tty", O_RDWR | O_CLOEXEC);
    termios usual{};
    if (terminal < 0 || tcgetattr(terminal, &usual) != 0) {
        if (terminal >= 0)
            close(terminal);
        return false;
    }
    termios hidden = usual;
    // Nothing may end the program while the terminal shows nothing.
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON | ISIG);
    tcsetattr(terminal, TCSAFLUSH, &hidden);
    writeAll(terminal, question.toLocal8Bit());
    QByteArray bytes;
    const bool isWhole = readKeys(terminal, bytes);
    writeAll(terminal, "\n");
    tcsetattr(terminal, TCSAFLUSH, &usual);
    close(terminal);
    if (isWhole)
        line = QString::fromLocal8Bit(bytes);
    bytes.fill('\0');
    return isWhole;
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
