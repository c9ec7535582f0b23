#pragma once

#include <QByteArray>
#include <QString>

/// What each system does in its own way with a terminal.
namespace velm::detail::platform {

/// Whether standard output is a terminal that takes escape sequences. On Windows a console is told
/// to take them, and one that refuses shows no colours.
bool outputTakesEscapes();

/// The number of columns of the terminal that standard output is; 0 if it is none.
int outputWidth();
/// The same of standard error.
int errorWidth();

/// Asks for a line that the terminal does not show, and ends with Enter. The keys that edit a line
/// do so; others that are no characters, arrows say, may leave control characters in it. False if
/// there is no terminal, or if the user breaks off (Ctrl+D, on Windows also Ctrl+C). A signal finds
/// the terminal as it was, and is not held back.
bool readHidden(const QString& question, QString& line);

enum class Stream
{
    Output,
    Error
};

/// Writes a text, which is UTF-8: as it is to a file or a pipe; to a terminal in the local
/// encoding, to a console of Windows in characters, which it shows whatever its code page is.
/// @return false if not all of it could be written
bool writeText(Stream stream, const QByteArray& text);

}  // namespace velm::detail::platform
