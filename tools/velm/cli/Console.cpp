#include "cli/Console.h"

#include "common/platform/Terminal.h"

#include <QColor>
#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <optional>

namespace console {

namespace {

namespace platform = velm::detail::platform;

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

void writeResult(const QString& text)
{
    outputFailed = !platform::writeText(platform::Stream::Output, text) || outputFailed;
}

bool showsColours()
{
    return qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb"
           && platform::outputTakesEscapes();
}

bool onColourTerminal()
{
    static const bool colours = showsColours();
    return colours;
}

/// The colour of an index of drawings: 1 to 9 are fixed, 250 to 255 grey; those between go round
/// the colour circle in steps of 15 degrees, each in five shades, full and half saturated.
std::optional<QColor> colourOfIndex(int index)
{
    constexpr std::array<QRgb, 10> kFixed{0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                          0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
    constexpr std::array<int, 5> kShades{255, 189, 129, 104, 79};
    constexpr std::array<int, 6> kGreys{51, 80, 105, 130, 190, 255};
    if (index < 1 || index > 255)
        return std::nullopt;
    if (index < 10)
        return QColor(kFixed[static_cast<size_t>(index)]);
    if (index >= 250) {
        const int grey = kGreys[static_cast<size_t>(index - 250)];
        return QColor(grey, grey, grey);
    }
    const int hue = (index / 10 - 1) * 15;
    const int shade = kShades[static_cast<size_t>(index % 10 / 2)];
    return QColor::fromHsv(hue, index % 2 == 0 ? 255 : 128, shade);
}

/// Whether the character overrides the direction in which text is shown.
bool changesDirection(QChar ch)
{
    const ushort code = ch.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

void print(const QString& line)
{
    writeResult(line + QLatin1Char('\n'));
}

void print(const QJsonObject& document)
{
    writeResult(QString::fromUtf8(QJsonDocument(document).toJson()));
}

void print(const QJsonArray& document)
{
    writeResult(QString::fromUtf8(QJsonDocument(document).toJson()));
}

bool printedAll()
{
    return !outputFailed;
}

void tell(const QString& line)
{
    platform::writeText(platform::Stream::Error,
                        QStringLiteral("velm: ") + plain(line) + QLatin1Char('\n'));
}

QString plain(const QString& text)
{
    QString shown = text;
    for (QChar& ch : shown) {
        if (ch.category() == QChar::Other_Control || changesDirection(ch))
            ch = QLatin1Char('?');
    }
    return shown;
}

QString heading(const QString& text)
{
    return onColourTerminal() ? QStringLiteral("\033[1m") + text + QStringLiteral("\033[0m") : text;
}

QString swatch(int colourIndex)
{
    const std::optional<QColor> colour = colourOfIndex(colourIndex);
    if (!colour || !onColourTerminal())
        return QString();
    return QStringLiteral(" \033[48;2;%1;%2;%3m   \033[0m")
        .arg(colour->red())
        .arg(colour->green())
        .arg(colour->blue());
}

int displayWidth(const QString& text)
{
    int width = 0;
    const QVector<uint> characters = text.toUcs4();
    for (const uint character : characters)
        width += columnsOf(character);
    return width;
}

QString clipped(const QString& text)
{
    constexpr int kWidest = 160;
    const QString start = text.left(kWidest);  // a column a character, at least
    if (start.size() == text.size() && displayWidth(text) <= kWidest)
        return text;
    int length = start.size();
    while (displayWidth(text.left(length)) > kWidest - 3 || start.at(length - 1).isHighSurrogate())
        --length;
    return start.left(length) + QStringLiteral("...");
}

QString padded(const QString& text, int width)
{
    return text + QString(std::max(0, width - displayWidth(text)), QLatin1Char(' '));
}

}  // namespace console
