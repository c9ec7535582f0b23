#include "set/TableSet.h"

#include "set/Csv.h"

#include "common/files/DatabasePath.h"
#include "CVelmDatabase.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlError>

namespace {

QString readResource(const QString& path, QString& problem)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        problem = QStringLiteral("the program lacks ") + path;
    return QString::fromUtf8(file.readAll());
}

/// "@name.json" stands for that document beside the table, without its layout.
QString cellText(const QString& cell, const QString& folder, QString& problem)
{
    if (!cell.startsWith(QLatin1Char('@')) || !cell.endsWith(QLatin1String(".json")))
        return cell;
    const QString text = readResource(folder + QLatin1Char('/') + cell.mid(1), problem);
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        problem = cell.mid(1) + QStringLiteral(": ") + error.errorString();
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

/// A text alone counts as a list of one.
QStringList stringList(const QJsonValue& value)
{
    if (value.isString())
        return {value.toString()};
    QStringList list;
    const QJsonArray array = value.toArray();
    for (const QJsonValue& element : array)
        list.append(element.toString());
    return list;
}

SetTable readTable(const QJsonObject& description, const QString& folder, QString& problem)
{
    SetTable table;
    table.name = description.value(QStringLiteral("table")).toString();
    table.key = stringList(description.value(QStringLiteral("key")));
    QStringList header;
    const QJsonArray columns = description.value(QStringLiteral("columns")).toArray();
    for (const QJsonValue& column : columns) {
        table.columns.append(
            {column.toArray().at(0).toString(), column.toArray().at(1).toString()});
        header.append(table.columns.last().name);
    }
    const QVector<QStringList> records = parseCsv(
        readResource(folder + QLatin1Char('/') + table.name + QStringLiteral(".csv"), problem));
    if (records.isEmpty() || records.first() != header) {
        problem = table.name + QStringLiteral(".csv: the header is not that of schema.json");
        return table;
    }
    for (int i = 1; i < records.size(); ++i) {
        QStringList cells;
        for (const QString& cell : records.at(i))
            cells.append(cellText(cell, folder, problem));
        if (cells.size() != header.size())
            problem =
                QStringLiteral("%1.csv, record %2: wrong number of cells").arg(table.name).arg(i);
        table.rows.append(cells);
    }
    return table;
}

Velm::FieldType fieldType(const QString& type)
{
    if (type == QLatin1String("INT"))
        return Velm::FieldInt;
    if (type == QLatin1String("LONG"))
        return Velm::FieldLong;
    return type == QLatin1String("REAL") ? Velm::FieldReal : Velm::FieldText;
}

QVariant cellValue(const QString& cell, const QString& type)
{
    switch (fieldType(type)) {
    case Velm::FieldInt:
        return cell.toInt();
    case Velm::FieldLong:
        return cell.toLongLong();
    case Velm::FieldReal:
        return cell.toDouble();
    default:
        return cell.isNull() ? QStringLiteral("") : cell;
    }
}

Velm::ErrorStatus createTable(CVelmDatabase& database, const SetTable& table)
{
    QList<VelmFieldItem> fields;
    for (const SetTable::Column& column : table.columns) {
        VelmFieldItem field;
        field.m_fieldName = column.name;
        field.m_fieldType = fieldType(column.type);
        fields.append(field);
    }
    Velm::ErrorStatus status = database.createTable(table.name, fields);
    for (const QString& column : table.key) {
        if (status == Velm::VelmOk)
            status = database.executeSql(QStringLiteral("create index [IX_") + table.name
                                         + QLatin1Char('_') + column + QStringLiteral("] on [")
                                         + table.name + QStringLiteral("] ([") + column
                                         + QStringLiteral("])"));
    }
    return status;
}

Velm::ErrorStatus writeTable(CVelmDatabase& database, const SetTable& table)
{
    Velm::ErrorStatus status = createTable(database, table);
    for (const QStringList& row : table.rows) {
        QMap<QString, QVariant> record;
        for (int i = 0; i < row.size(); ++i)
            record.insert(table.columns.at(i).name, cellValue(row.at(i), table.columns.at(i).type));
        if (status == Velm::VelmOk)
            status = database.writeRecordBlob(table.name, record);
    }
    return status;
}

}  // namespace

SetTable DatabaseTables::table(const QString& tableName) const
{
    for (const SetTable& candidate : tables) {
        if (candidate.name == tableName)
            return candidate;
    }
    return SetTable();
}

QVector<DatabaseTables> readSampleSet(QString& problem)
{
    const QString base = QStringLiteral(":/sample/");
    const QByteArray schema = readResource(base + QStringLiteral("schema.json"), problem).toUtf8();
    const QJsonObject root = QJsonDocument::fromJson(schema).object();
    QVector<DatabaseTables> databases;
    for (auto it = root.begin(); it != root.end(); ++it) {
        DatabaseTables database{it.key(), {}};
        const QString folder = base + it.key().section(QLatin1Char('.'), 0, 0).toLower();
        const QJsonArray tables = it.value().toArray();
        for (const QJsonValue& table : tables)
            database.tables.append(readTable(table.toObject(), folder, problem));
        databases.append(database);
    }
    return databases;
}

DatabaseTables systemDatabase(QString& problem)
{
    const QVector<DatabaseTables> databases = readSampleSet(problem);
    for (const DatabaseTables& database : databases) {
        if (database.fileName == QLatin1String("peltaconfig.db"))
            return database;
    }
    return DatabaseTables();
}

QString writeDatabase(const DatabaseTables& sample, const QString& path)
{
    QString pathProblem = velm::detail::databasePathProblem(path);
    if (!pathProblem.isEmpty())
        return pathProblem;
    CVelmDatabase database;
    Velm::ErrorStatus status = database.initDatabase(path, QString());
    if (status != Velm::VelmOk)
        return QStringLiteral("the database cannot be made: ")
               + database.getQSqlDatabase().lastError().text();
    status = database.startTransaction(true);
    for (const SetTable& table : sample.tables) {
        if (status == Velm::VelmOk)
            status = writeTable(database, table);
        if (status != Velm::VelmOk)
            return QStringLiteral("table ") + table.name + QStringLiteral(": ")
                   + database.getLastErrorText();
    }
    return database.endTransaction() == Velm::VelmOk
               ? QString()
               : QStringLiteral("the changes cannot be written; is there room on the disk?");
}
