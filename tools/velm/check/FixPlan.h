#pragma once

#include "check/Problems.h"

class CheckedSet;

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
QVector<Change> planOf(const CheckedSet& set, const QVector<Problem>& problems,
                       const QString& database);

/// Why a row is left that belongs to a feature whose code keeps its blank.
QString featureKeepsCode();
