#pragma once

#include <QString>
#include <QStringList>

/// Text as a terminal shows it.
namespace console {

/// @p text without control characters, so that data cannot move the cursor, change colours or turn
/// the direction of the line.
QString plain(const QString& text);

/// The number of columns that @p text takes on a terminal: two for an East Asian wide character,
/// none for a combining mark (Unicode Standard Annex 11).
int displayWidth(const QString& text);

/// @p text up to so many columns that a table stays readable, with "..." where it goes on.
QString clipped(const QString& text);

/// @p text with blanks up to @p width columns.
QString padded(const QString& text, int width);

/// The columns that a line of help may take: those of the terminal, 80 in a file or a pipe.
int lineWidth();

/// Whether standard output is a terminal.
bool isTerminal();

/// The lines of @p text, those that are wider broken between words; a word that is wider stays
/// whole.
QStringList wrapped(const QString& text, int width);

}  // namespace console
