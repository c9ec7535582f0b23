#include "set/SampleSet.h"

#include "set/Csv.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

namespace {

QString readResource(const QString& path, QString& problem)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        problem = QStringLiteral("the program lacks ") + path;
    return QString::fromUtf8(file.readAll());
}

/// "@name.json" stands for that document beside the table, without its layout.
QString cellText(const QString& cell, const QDir& folder, QString& problem)
{
    if (!cell.startsWith(QLatin1Char('@')) || !cell.endsWith(QLatin1String(".json")))
        return cell;
    const QString text = readResource(folder.filePath(cell.mid(1)), problem);
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        problem = cell.mid(1) + QStringLiteral(": ") + error.errorString();
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

SetTable readTable(const TableSchema& schema, const QDir& folder, QString& problem)
{
    SetTable table{schema, {}};
    const QString fileName = schema.name + QStringLiteral(".csv");
    const QVector<QStringList> records = parseCsv(readResource(folder.filePath(fileName), problem));
    const QStringList header = schema.columnNames();
    if (records.isEmpty() || records.first() != header) {
        problem = fileName + QStringLiteral(": the header is not that of the table");
        return table;
    }
    for (int i = 1; i < records.size(); ++i) {
        QStringList cells;
        for (const QString& cell : records.at(i))
            cells.append(cellText(cell, folder, problem));
        if (cells.size() != header.size())
            problem = QStringLiteral("%1, record %2: wrong number of cells").arg(fileName).arg(i);
        table.rows.append(cells);
    }
    return table;
}

/// The tables that the sample has of a database: those of the schema, then the dictionaries.
QVector<TableSchema> tablesIn(const QString& database, const QDir& folder)
{
    QVector<TableSchema> tables;
    for (const TableSchema& table : schema::tables()) {
        if (table.database == database && !table.optional)
            tables.append(table);
    }
    const QStringList files = folder.entryList({QStringLiteral("*.csv")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        const QString name = file.section(QLatin1Char('.'), 0, 0);
        if (schema::isDictionary(name))
            tables.append(schema::dictionary(name));
    }
    return tables;
}

}  // namespace

QVector<DatabaseTables> readSampleSet(QString& problem)
{
    QVector<DatabaseTables> databases;
    for (const QString& fileName : {schema::kSystemFile, schema::kPipeFile}) {
        const QDir folder(QStringLiteral(":/sample/")
                          + fileName.section(QLatin1Char('.'), 0, 0).toLower());
        DatabaseTables database{fileName, {}};
        const QVector<TableSchema> tables = tablesIn(fileName, folder);
        for (const TableSchema& table : tables)
            database.tables.append(readTable(table, folder, problem));
        databases.append(database);
    }
    return databases;
}
