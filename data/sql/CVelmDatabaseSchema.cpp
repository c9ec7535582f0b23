#include "CVelmDatabase.h"

#include "CVelmString.h"
#include "data/sql/CVelmDatabasePrivate.h"
#include "data/sql/SqlText.h"
#include "data/sql/Statement.h"

#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

using namespace velm::detail;

namespace {

/// The columns of a table; none if it cannot be read.
QSqlRecord columnsOf(const QSqlDatabase& database, const QString& table)
{
    QSqlQuery query = forwardQuery(database);
    if (runStatement(query, selectAll(QLatin1Char('[') + table + QLatin1Char(']'))) != Velm::VelmOk)
        return QSqlRecord();
    return query.record();
}

bool holdsColumn(const QSqlRecord& columns, int index)
{
    return index >= 0 && index < columns.count();
}

QString typeWordOf(QVariant::Type type)
{
    return columnTypeWord(CVelmString::QVariantType2VelmFieldType(type));
}

}  // namespace

Velm::ErrorStatus CVelmDatabase::createTable(const QString& table,
                                             const QList<VelmFieldItem>& fields)
{
    if (existTable(table)) {
        const Velm::ErrorStatus status = deleteTable(table);
        if (status != Velm::VelmOk)
            return status;
    }
    QStringList columns;
    for (const VelmFieldItem& field : fields) {
        const bool numeric = d->isOdbc() && field.m_fieldType == Velm::FieldReal;
        columns.append(QLatin1Char('[') + field.m_fieldName + QStringLiteral("] ")
                       + (numeric ? QStringLiteral("NUMERIC") : columnTypeWord(field.m_fieldType))
                       + (field.m_fieldMust ? QStringLiteral(" NOT NULL") : QString()));
    }
    return executeSql(QStringLiteral("Create Table ") + table + QLatin1Char('(')
                      + columns.join(QStringLiteral(", ")) + QStringLiteral(");"));
}

Velm::ErrorStatus CVelmDatabase::deleteTable(const QString& table)
{
    return executeSql(QStringLiteral("DROP TABLE ") + table);
}

int CVelmDatabase::columnCount(const QString& table) const
{
    return columnsOf(d->database, table).count();
}

QStringList CVelmDatabase::allFieldName(const QString& table) const
{
    QStringList names;
    const QSqlRecord columns = columnsOf(d->database, table);
    for (int i = 0; i < columns.count(); ++i)
        names.append(columns.fieldName(i));
    return names;
}

bool CVelmDatabase::hasFieldName(const QString& table, const QString& field) const
{
    return allFieldName(table).contains(field, Qt::CaseInsensitive);
}

QString CVelmDatabase::columnName(const QString& table, int index) const
{
    return columnsOf(d->database, table).fieldName(index);
}

QVariant::Type CVelmDatabase::columnType(const QString& table, int index) const
{
    return columnsOf(d->database, table).field(index).type();
}

QVariant::Type CVelmDatabase::columnType(const QString& table, const QString& field) const
{
    return columnsOf(d->database, table).field(field).type();
}

int CVelmDatabase::columnLength(const QString& table, int index) const
{
    const QSqlRecord columns = columnsOf(d->database, table);
    return holdsColumn(columns, index) ? columns.field(index).length() : 0;
}

int CVelmDatabase::columnPrecision(const QString& table, int index) const
{
    const QSqlRecord columns = columnsOf(d->database, table);
    return holdsColumn(columns, index) ? columns.field(index).precision() : 0;
}

unsigned int CVelmDatabase::columnPrecision(const QString& table, const QString& field) const
{
    const QSqlRecord columns = columnsOf(d->database, table);
    const int index = columns.indexOf(field);
    return holdsColumn(columns, index) ? static_cast<unsigned int>(columns.field(index).precision())
                                       : 0U;
}

Velm::ErrorStatus CVelmDatabase::addColumnField(const QString& table, const QString& field,
                                                QVariant::Type type, int length)
{
    Q_UNUSED(length)
    return executeSql(QStringLiteral("alter table ") + table + QStringLiteral(" add column [")
                      + field + QStringLiteral("] ") + typeWordOf(type));
}

Velm::ErrorStatus CVelmDatabase::delColumnField(const QString& table, const QString& field)
{
    return executeSql(QStringLiteral("alter table ") + table + QStringLiteral(" drop COLUMN '")
                      + field + QLatin1Char('\''));
}

Velm::ErrorStatus CVelmDatabase::changeColumnType(const QString& table, const QString& field,
                                                  QVariant::Type type)
{
    Q_UNUSED(field)
    return executeSql(QStringLiteral("alter table ") + table + QStringLiteral(" alter column [")
                      + table + QStringLiteral("] ") + typeWordOf(type));
}

Velm::ErrorStatus CVelmDatabase::copyColumnValue(const QString& table, const QString& fromField,
                                                 const QString& toField)
{
    return executeSql(QStringLiteral("update ") + table + QStringLiteral(" set ") + toField
                      + QLatin1Char('=') + fromField);
}

Velm::ErrorStatus CVelmDatabase::renameColumnName(const QString& table, const QString& oldName,
                                                  const QString& newName)
{
    const QVariant::Type type = columnType(table, oldName);
    const auto precision = static_cast<int>(columnPrecision(table, oldName));
    Velm::ErrorStatus status = addColumnField(table, newName, type, precision);
    if (status == Velm::VelmOk)
        status = copyColumnValue(table, oldName, newName);
    if (status == Velm::VelmOk)
        status = delColumnField(table, oldName);
    return status;
}
