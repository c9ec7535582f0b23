#pragma once

#include <QString>
#include <QStringList>

/// Why the file at @p path is none that can be opened as a database; empty if nothing is wrong from
/// without.
QString whyNoFile(const QString& path);

/// The same and, if tables are named, why it is no database, or what is needed of one of these
/// tables is not there. What the rows hold is not looked at.
QString whyUnreadable(const QString& path, const QStringList& tables);
