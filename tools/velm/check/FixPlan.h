#pragma once

#include "check/Problems.h"

class CheckedSet;
class MendedNames;

/// What is to be done about one value.
struct Change
{
    Place place;
    QString value;  ///< the new one; null to remove the row
    QString left;   ///< why nothing is done; empty if something is
    bool isCode;    ///< whether it is the code of a feature, which other rows may refer to
};

/// What is to be done about those of @p problems that lie in a database and have one safe answer,
/// codes of features first. A row that goes has no other changes, and a value has one.
/// @p names are those of both databases.
QVector<Change> planOf(const CheckedSet& set, MendedNames& names, const QVector<Problem>& problems,
                       const QString& database);
