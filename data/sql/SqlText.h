#pragma once

#include "VelmTypes.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <QVariant>

/// The texts from which the database wrapper puts its statements together. Nothing is escaped.
namespace velm::detail {

/// What differs between the two kinds of database.
enum class SqlDialect
{
    Sqlite,
    Access
};

/// TEXT, INT, LONG or REAL; TEXT for every other type.
QString columnTypeWord(Velm::FieldType type);

/// "[name]=value" for every entry in key order, with @p separator in between. Invalid and null
/// values are left out, except a null text.
QString terms(const QMap<QString, QVariant>& values, const QString& separator);

/// "where " and the terms with " and " in between; empty for an empty condition.
QString whereClause(const QMap<QString, QVariant>& where);

/// A value as it stands in an insert statement.
QString literal(const QVariant& value, SqlDialect dialect);

/// "select * from table"
QString selectAll(const QString& table);

/// "insert into table ([a], [b]) values(1, 'x')"
QString insertStatement(const QString& table, const QMap<QString, QVariant>& record,
                        SqlDialect dialect);

/// "insert into table ([a],[b]) values (:a,:b)"
QString boundInsertStatement(const QString& table, const QMap<QString, QVariant>& record,
                             SqlDialect dialect);

/// " order by a desc,b asc"; empty for no columns.
QString orderByClause(const QList<QPair<QString, Velm::DataBaseOrderByType>>& orderBy);

/// " COLLATE NOCASE ", which makes the last term of a condition ignore letter case; empty with @p
/// caseSensitive.
QString collation(bool caseSensitive);

}  // namespace velm::detail
