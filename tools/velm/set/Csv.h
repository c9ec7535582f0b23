#pragma once

#include <QStringList>
#include <QVector>

/// The records of comma-separated text as RFC 4180 describes it: fields may be quoted, a doubled
/// quote inside stands for one, and lines end with LF or CRLF. A line end behind the last record is
/// no further record.
QVector<QStringList> parseCsv(const QString& text);
