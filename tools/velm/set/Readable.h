#pragma once

#include <QString>
#include <QStringList>

/// Why the database at @p path, or what is needed of one of these tables, cannot be read; empty if
/// all can.
QString whyUnreadable(const QString& path, const QStringList& tables);

/// The same of the system configuration database, with the tables without which there is no
/// feature code.
QString whySystemUnreadable();
