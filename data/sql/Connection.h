#pragma once

#include <QSqlDatabase>
#include <QString>

namespace velm::detail {

/// Registers a connection, not open yet, under that name. Where there is no QCoreApplication yet Qt
/// knows no folder of the program, so the library's own is among those in which it looks for
/// drivers; once there is one, Qt looks again.
QSqlDatabase addConnection(const QString& driver, const QString& name);

/// A copy that shares nothing: Qt keeps texts of a connection longer than the library, or the
/// module that they come from, may be loaded.
QString unshared(const QString& text);

/// What the log tells about an opening that failed.
QString cannotOpen(const QString& fileName, const QString& why);

}  // namespace velm::detail
