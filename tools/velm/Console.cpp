#include "Console.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <cstdio>

#include <unistd.h>

namespace console {

namespace {

struct Range
{
    uint first;
    uint last;
};

// The blocks whose characters are wide or full-width.
constexpr std::array<Range, 14> kWide{{{0x1100, 0x115F},
                                       {0x2E80, 0x303E},
                                       {0x3041, 0x33FF},
                                       {0x3400, 0x4DBF},
                                       {0x4E00, 0x9FFF},
                                       {0xA000, 0xA4CF},
                                       {0xAC00, 0xD7A3},
                                       {0xF900, 0xFAFF},
                                       {0xFE30, 0xFE4F},
                                       {0xFF00, 0xFF60},
                                       {0xFFE0, 0xFFE6},
                                       {0x1F300, 0x1FAFF},
                                       {0x20000, 0x2FFFD},
                                       {0x30000, 0x3FFFD}}};

int columnsOf(uint character)
{
    const QChar::Category category = QChar::category(character);
    if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing)
        return 0;
    const bool wide = std::any_of(kWide.begin(), kWide.end(), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
    return wide ? 2 : 1;
}

bool outputFailed = false;

bool write(std::FILE* stream, const QByteArray& bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

void writeResult(const QByteArray& bytes)
{
    outputFailed = !write(stdout, bytes) || outputFailed;
}

bool showsColours()
{
    return qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb"
           && isatty(STDOUT_FILENO) != 0;
}

}  // namespace

void print(const QString& line)
{
    writeResult((line + QLatin1Char('\n')).toLocal8Bit());
}

void print(const QJsonObject& document)
{
    writeResult(QJsonDocument(document).toJson());
}

void print(const QJsonArray& document)
{
    writeResult(QJsonDocument(document).toJson());
}

bool printedAll()
{
    return !outputFailed;
}

void tell(const QString& line)
{
    write(stderr, (QStringLiteral("velm: ") + line + QLatin1Char('\n')).toLocal8Bit());
}

QString plain(const QString& text)
{
    QString shown = text;
    for (QChar& ch : shown) {
        if (ch.category() == QChar::Other_Control)
            ch = QLatin1Char('?');
    }
    return shown;
}

QString heading(const QString& text)
{
    static const bool colours = showsColours();
    return colours ? QStringLiteral("\033[1m") + text + QStringLiteral("\033[0m") : text;
}

int displayWidth(const QString& text)
{
    int width = 0;
    const QVector<uint> characters = text.toUcs4();
    for (const uint character : characters)
        width += columnsOf(character);
    return width;
}

QString padded(const QString& text, int width)
{
    return text + QString(std::max(0, width - displayWidth(text)), QLatin1Char(' '));
}

}  // namespace console
