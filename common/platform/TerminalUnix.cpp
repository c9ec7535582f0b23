#include "common/platform/Terminal.h"

#include <QString>
#include <QTextCodec>

#include <array>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <poll.h>
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

volatile std::sig_atomic_t caughtSignal = 0;

/// The signals that end or stop the program at the terminal are noted while this exists, and come
/// through during waitForLine() only.
class CaughtSignals
{
public:
    CaughtSignals()
    {
        caughtSignal = 0;
        sigset_t held;
        sigemptyset(&held);
        struct sigaction note
        {};
        note.sa_handler = [](int signal) { caughtSignal = signal; };
        for (size_t i = 0; i < kSignals.size(); ++i) {
            sigaction(kSignals[i], nullptr, &m_usual[i]);
            if (m_usual[i].sa_handler == SIG_IGN)
                continue;
            sigaction(kSignals[i], &note, nullptr);
            sigaddset(&held, kSignals[i]);
        }
        pthread_sigmask(SIG_BLOCK, &held, &m_usualMask);
    }

    ~CaughtSignals()
    {
        for (size_t i = 0; i < kSignals.size(); ++i)
            sigaction(kSignals[i], &m_usual[i], nullptr);
        pthread_sigmask(SIG_SETMASK, &m_usualMask, nullptr);
    }

    Q_DISABLE_COPY(CaughtSignals)

    /// False if a signal came meanwhile.
    bool waitForLine(int terminal) const
    {
        pollfd readable{terminal, POLLIN, 0};
        return ppoll(&readable, 1, nullptr, &m_usualMask) > 0;
    }

private:
    static constexpr std::array<int, 5> kSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};

    std::array<struct sigaction, kSignals.size()> m_usual{};
    sigset_t m_usualMask{};
};

/// The terminal shows nothing while this exists; it edits the line all the same.
class HiddenTerminal
{
public:
    HiddenTerminal(int terminal, const termios& usual) : m_terminal(terminal), m_usual(usual)
    {
        termios hidden = usual;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        hidden.c_lflag |= ICANON | ISIG;
        constexpr int kUtf8 = 106;  // as the registry of character sets numbers it
        if (QTextCodec::codecForLocale()->mibEnum() == kUtf8)
            hidden.c_iflag |= IUTF8;  // Backspace removes a character, not a byte
        tcsetattr(terminal, TCSAFLUSH, &hidden);
    }

    ~HiddenTerminal() { tcsetattr(m_terminal, TCSAFLUSH, &m_usual); }

    Q_DISABLE_COPY(HiddenTerminal)

private:
    int m_terminal;
    termios m_usual;
};

enum class Asked
{
    Line,
    End,
    Signal
};

/// Reads a line, without its end.
Asked readLine(int terminal, const CaughtSignals& signals, QByteArray& line)
{
    std::array<char, 256> part{};
    while (!line.endsWith('\n')) {
        const bool isReady = signals.waitForLine(terminal);
        const ssize_t got = isReady ? read(terminal, part.data(), part.size()) : 0;
        if (got <= 0)
            return caughtSignal != 0 ? Asked::Signal : Asked::End;
        line.append(part.data(), static_cast<int>(got));
    }
    part.fill('\0');
    line.chop(1);
    return Asked::Line;
}

Asked ask(int terminal, const QString& question, QByteArray& line)
{
    termios usual{};
    if (tcgetattr(terminal, &usual) != 0)
        return Asked::End;
    const CaughtSignals signals;
    const HiddenTerminal hidden(terminal, usual);
    writeAll(terminal, question.toLocal8Bit());
    const Asked answer = readLine(terminal, signals, line);
    writeAll(terminal, "\n");
    return answer;
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
    if (terminal < 0)
        return false;
    QByteArray bytes;
    Asked answer = ask(terminal, question, bytes);
    while (answer == Asked::Signal) {
        const int signal = caughtSignal;
        raise(signal);  // as if it came now, when the terminal is as it was
        if (signal != SIGTSTP)
            break;
        bytes.fill('\0');
        bytes.clear();
        answer = ask(terminal, question, bytes);
    }
    close(terminal);
    if (answer == Asked::Line)
        line = QString::fromLocal8Bit(bytes);
    bytes.fill('\0');
    return answer == Asked::Line;
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
