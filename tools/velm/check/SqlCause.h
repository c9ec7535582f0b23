#pragma once

#include <QString>

/// What SQLite says of a failure, in the words of whoever uses the program.
QString sqlCause(const QString& text);
