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

/// Writes a piece of a result, in UTF-8, as it stands.
void write(const QByteArray& text);

/// Prints a line of a result.
void print(const QString& line);
/// Prints a JSON document as a result.
void print(const QJsonObject& document);
void print(const QJsonArray& document);

/// Writes what was printed and still waits. @return whether everything reached standard output
bool printedAll();

/// Tells something that is no result, behind "velm: ".
void tell(const QString& line);

}  // namespace console
