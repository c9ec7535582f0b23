#pragma once

#include <QString>

/// What a terminal can set off; nothing in files and pipes.
namespace console {

/// @p text set off as a heading, if standard output is a terminal that shows colours and NO_COLOR
/// is not set.
QString heading(const QString& text);

/// A patch of the colour with that index of drawings (1 to 255), behind a blank; empty where
/// heading() sets nothing off.
QString swatch(int colourIndex);

}  // namespace console
