#include "cli/Colours.h"

#include "common/platform/Terminal.h"

#include <QColor>

#include <array>
#include <optional>

namespace console {

namespace {

bool showsColours()
{
    return qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb"
           && velm::detail::platform::outputTakesEscapes();
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

}  // namespace

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

}  // namespace console
