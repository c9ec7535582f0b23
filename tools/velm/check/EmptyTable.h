#pragma once

class CheckedSet;
class CheckedTable;
class Problems;
class QString;

// What refers to something that is empty as a whole need not be told: that it is, is.

/// Reports a table without rows, once, to which something refers. @return whether it is one
bool tellIfEmpty(const CheckedTable& table, Problems& problems);

/// Reports that a database defines no GIS tables in the same way.
bool tellIfNoTables(const CheckedSet& set, Problems& problems);

/// Reports a GIS table without fields in the same way.
bool tellIfWithoutFields(const CheckedSet& set, const QString& gisTable, Problems& problems);
