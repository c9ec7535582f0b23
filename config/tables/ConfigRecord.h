#pragma once

#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QVariant>

namespace velm::detail {

/// One row of a table of the system configuration database, for the definitions that are read anew
/// on every query. Columns are named in upper case; a missing one, or a value that does not
/// convert, is empty or 0.
class ConfigRecord
{
public:
    ConfigRecord() = default;
    /// Of a row that was read.
    explicit ConfigRecord(const QMap<QString, QVariant>& values) : m_values(values) {}

    /// Opens the database and reads the first row whose @p keyColumn is exactly @p key.
    /// @return VelmOk; VelmDatabaseOpenFailed; VelmNoData if there is no such row;
    ///         VelmSqlExecFailed if it cannot be read
    Velm::ErrorStatus read(const QString& table, const QString& keyColumn, const QString& key);

    QString text(const QString& column) const { return m_values.value(column).toString(); }
    int integer(const QString& column) const { return m_values.value(column).toInt(); }
    /// With all its digits, for a number that must be in a range.
    qint64 wideInteger(const QString& column) const { return m_values.value(column).toLongLong(); }
    double real(const QString& column) const { return m_values.value(column).toDouble(); }
    /// The JSON object in a column; empty if it is none.
    QMap<QString, QVariant> map(const QString& column) const;

private:
    QMap<QString, QVariant> m_values;  // by upper-case column
};

}  // namespace velm::detail
