#include "set/TableSet.h"

#include "common/files/DatabasePath.h"
#include "CVelmDatabase.h"

#include <QSqlDatabase>
#include <QSqlError>

namespace {

QVariant cellValue(const QString& cell, ColumnType type)
{
    switch (type) {
    case ColumnType::Integer:
        return cell.toInt();
    case ColumnType::Real:
        return cell.toDouble();
    default:
        return cell.isNull() ? QStringLiteral("") : cell;
    }
}

Velm::FieldType fieldType(ColumnType type)
{
    switch (type) {
    case ColumnType::Integer:
        return Velm::FieldInt;
    case ColumnType::Real:
        return Velm::FieldReal;
    default:
        return Velm::FieldText;
    }
}

Velm::ErrorStatus createTable(CVelmDatabase& database, const TableSchema& table)
{
    QList<VelmFieldItem> fields;
    for (const ColumnSchema& column : table.columns) {
        VelmFieldItem field;
        field.m_fieldName = column.name;
        field.m_fieldType = fieldType(column.type);
        fields.append(field);
    }
    Velm::ErrorStatus status = database.createTable(table.name, fields);
    for (const QString& column : table.key) {
        if (status == Velm::VelmOk)
            status = database.executeSql(
                QStringLiteral("create index [IX_%1_%2] on [%1] ([%2])").arg(table.name, column));
    }
    return status;
}

Velm::ErrorStatus writeTable(CVelmDatabase& database, const SetTable& table)
{
    const QVector<ColumnSchema>& columns = table.schema.columns;
    Velm::ErrorStatus status = createTable(database, table.schema);
    for (const QStringList& row : table.rows) {
        QMap<QString, QVariant> record;
        for (int i = 0; i < row.size(); ++i)
            record.insert(columns.at(i).name, cellValue(row.at(i), columns.at(i).type));
        if (status == Velm::VelmOk)
            status = database.writeRecordBlob(table.schema.name, record);
    }
    return status;
}

}  // namespace

SetTable DatabaseTables::table(const QString& tableName) const
{
    for (const SetTable& candidate : tables) {
        if (candidate.schema.name == tableName)
            return candidate;
    }
    return SetTable();
}

DatabaseTables emptySystemDatabase()
{
    DatabaseTables system{schema::kSystemFile, {}};
    for (const TableSchema& table : schema::tables()) {
        if (table.database == system.fileName)
            system.tables.append({table, {}});
    }
    return system;
}

QString writeDatabase(const DatabaseTables& content, const QString& path)
{
    QString pathProblem = velm::detail::databasePathProblem(path);
    if (!pathProblem.isEmpty())
        return pathProblem;
    CVelmDatabase database;
    Velm::ErrorStatus status = database.initDatabase(path, QString());
    if (status != Velm::VelmOk)
        return QStringLiteral("the database cannot be made: ")
               + database.getQSqlDatabase().lastError().databaseText();
    status = database.startTransaction(true);
    for (const SetTable& table : content.tables) {
        if (status == Velm::VelmOk)
            status = writeTable(database, table);
        if (status != Velm::VelmOk)
            return QStringLiteral("table ") + table.schema.name + QStringLiteral(": ")
                   + database.getLastErrorText();
    }
    return database.endTransaction() == Velm::VelmOk
               ? QString()
               : QStringLiteral("the changes cannot be written; is there room on the disk?");
}
