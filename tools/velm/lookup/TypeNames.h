#pragma once

#include <QString>

// Names of the numbers that the configuration holds; the number itself where it has none.

/// "general", "text", "special line".
QString entityTypeName(int type);
/// "point", "line", "area", "annotation", "pipe point", "pipe line".
QString tableTypeName(int type);
/// "text", "integer", "long", "real", "date".
QString fieldTypeName(int type);
