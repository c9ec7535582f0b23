#pragma once

#include "check/Problems.h"

#include <QJsonObject>

class CheckedSet;

namespace rules {

/// Reports what a field conversion says of tables, fields and dictionaries that are not there.
/// @p place is that of the document.
void checkConversion(const CheckedSet& set, const QJsonObject& document, const Place& place,
                     Problems& problems);

/// Reports the elements of a list of fields that have no name, for which the library reads none of
/// the list. @return whether there are such
bool tellNamelessFields(const QJsonObject& document, const Place& place, Problems& problems);

}  // namespace rules
