#include "cli/TerminalText.h"

#include "common/platform/Terminal.h"

#include <QVector>

#include <algorithm>
#include <array>

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

/// Whether the character ends a line, or overrides the direction in which text is shown.
bool changesLine(QChar ch)
{
    const ushort code = ch.unicode();
    return code == QChar::LineSeparator || code == QChar::ParagraphSeparator
           || (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

QString plain(const QString& text)
{
    QString shown = text;
    for (QChar& ch : shown) {
        if (ch.category() == QChar::Other_Control || changesLine(ch))
            ch = QLatin1Char('?');
    }
    return shown;
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

int lineWidth()
{
    constexpr int kUsual = 80;
    constexpr int kNarrowest = 40;  // two columns of words fit
    const int width = velm::detail::platform::outputWidth();
    return width > 0 ? std::max(width, kNarrowest) : kUsual;
}

bool isTerminal()
{
    return velm::detail::platform::outputWidth() > 0;
}

QStringList wrapped(const QString& text, int width)
{
    QStringList lines;
    const QStringList given = text.split(QLatin1Char('\n'));
    for (const QString& line : given) {
        lines.append(QString());
        const QStringList words = line.split(QLatin1Char(' '));
        for (const QString& word : words) {
            QString& last = lines.last();
            if (last.isEmpty())
                last = word;
            else if (displayWidth(last) + 1 + displayWidth(word) <= width)
                last += QLatin1Char(' ') + word;
            else
                lines.append(word);
        }
    }
    return lines;
}

}  // namespace console
