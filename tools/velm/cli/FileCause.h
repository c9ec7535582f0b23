#pragma once

#include <QString>

/// Why a file could not be opened for reading, in English on every system.
QString whyNotRead(const QString& path);

/// Why a file could not be written.
QString whyNotWritten(const QString& path);
