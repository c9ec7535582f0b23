#pragma once

#include <QByteArray>
#include <QDateTime>

namespace velm::detail {

/// The field behind a name that tells the time of a file in seconds since 1970, UTC ("UT", 0x5455,
/// of Info-ZIP); empty where 32 bits do not hold it.
QByteArray timeField(const QDateTime& modified);

/// The time, in UTC, that the fields behind a name tell; invalid if they tell none. Its 32 bits
/// have a sign until 2037; which years are meant, @p dos tells, the other form of the time.
QDateTime timeOfFields(const QByteArray& fields, quint32 dos);

/// A local time in the form of MS-DOS, years 1980 to 2107 in steps of 2 seconds, and back. One
/// beyond these becomes the nearest, an invalid one the first.
quint32 dosTime(const QDateTime& modified);
QDateTime timeOfDos(quint32 dos);

}  // namespace velm::detail
