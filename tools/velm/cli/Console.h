#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

/// The exit codes of the program.
enum ExitCode : int
{
    ExitFine = 0,
    ExitNothingFound = 1,  ///< nothing found, or findings
    ExitUsage = 2,
    ExitCannotOpen = 3,  ///< a file or database cannot be opened or written
};

/// Results go to standard output, talk goes to standard error. Text and JSON alike are UTF-8 in
/// files and pipes; a terminal gets what it shows.
namespace console {

/// Prints a line of a result.
void print(const QString& line);
/// Prints a JSON document as a result.
void print(const QJsonObject& document);
void print(const QJsonArray& document);

/// Whether everything that was printed so far reached standard output.
bool printedAll();

/// Tells something that is no result, behind "velm: ".
void tell(const QString& line);

/// @p text without control characters, so that data cannot move the cursor, change colours or turn
/// the direction of the line.
QString plain(const QString& text);

/// @p text set off as a heading, if standard output is a terminal that shows colours and NO_COLOR
/// is not set.
QString heading(const QString& text);

/// A patch of the colour with that index of drawings (1 to 255), behind a blank; empty where
/// heading() sets nothing off.
QString swatch(int colourIndex);

/// The number of columns that @p text takes on a terminal: two for an East Asian wide character,
/// none for a combining mark (Unicode Standard Annex 11).
int displayWidth(const QString& text);

/// @p text up to so many columns that a table stays readable, with "..." where it goes on.
QString clipped(const QString& text);

/// @p text with blanks up to @p width columns.
QString padded(const QString& text, int width);

}  // namespace console
