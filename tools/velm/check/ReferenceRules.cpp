#include "CheckedSet.h"
#include "Rules.h"

#include "CVelmFindFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// Reports the names in a column that are no GIS tables. Only extension tables are a list,
/// separated by ";".
void checkTableNames(const CheckedSet& set, const char* tableName, const char* columnName,
                     const Rule& rule, Problems& problems)
{
    const CheckedTable& table = set.table(tableName);
    const QString column = QLatin1String(columnName);
    for (int row = 0; row < table.size(); ++row) {
        const QString text = table.text(row, column);
        QStringList names{text};
        if (&rule == &rules::kUnknownExtensionTable)
            names = text.split(QLatin1Char(';'));
        names.removeAll(QString());
        for (const QString& name : names) {
            if (!set.gisTables().contains(name.toUpper()))
                problems.add(rule, table.place(row, column),
                             QStringLiteral("there is no GIS table ") + quoted(name));
        }
    }
}

/// Reports dictionaries that do not exist. In "Attributefield" only some values name one.
void checkDictionaries(const CheckedSet& set, const char* tableName, const char* columnName,
                       bool onlyWithPrefix, Problems& problems)
{
    const CheckedTable& table = set.table(tableName);
    const QString column = QLatin1String(columnName);
    for (int row = 0; row < table.size(); ++row) {
        const QString name = table.text(row, column);
        const bool refers = onlyWithPrefix
                                ? name.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive)
                                : !name.isEmpty();
        if (refers && !set.dictionaries().contains(name))
            problems.add(rules::kUnknownDictionary, table.place(row, column),
                         QStringLiteral("there is no dictionary ") + quoted(name));
    }
}

void checkPipeFields(const CheckedSet& set, Problems& problems)
{
    QSet<int> numbers;
    const CheckedTable& fields = set.table("PIP_SysConfig");
    for (int row = 0; row < fields.size(); ++row)
        numbers.insert(fields.value(row, QStringLiteral("FIELDTYPE")).toInt());
    const CheckedTable& records = set.table("RecordConfig");
    for (int row = 0; row < records.size(); ++row) {
        for (const QString& column : {QStringLiteral("SHOWFIELD"), QStringLiteral("ACTUALFIELD")}) {
            bool isNumber = false;
            const int number = records.text(row, column).toInt(&isNumber);
            if (isNumber && !numbers.contains(number))
                problems.add(rules::kUnknownPipeField, records.place(row, column),
                             QStringLiteral("there is no pipe field %1").arg(number));
        }
    }
}

/// The fields that the conversion tells about: keys of an object, or names in an array.
QStringList convertedFields(const QJsonValue& fieldMap)
{
    if (fieldMap.isObject())
        return fieldMap.toObject().keys();
    QStringList names;
    const QJsonArray fields = fieldMap.toArray();
    for (const auto& field : fields)
        names.append(field[QStringLiteral("FieldName")].toString());
    return names;
}

void checkConversion(const CheckedSet& set, const QJsonObject& document, const Place& place,
                     Problems& problems)
{
    const QJsonValue info = document.value(QStringLiteral("TableInfo"));
    const QString table = info[QStringLiteral("TableName")].toString();
    const auto fields = set.gisTables().constFind(table.toUpper());
    if (fields == set.gisTables().constEnd()) {
        problems.add(rules::kConversionTable, place,
                     QStringLiteral("there is no GIS table ") + quoted(table));
        return;
    }
    const QStringList converted = convertedFields(document.value(QStringLiteral("FieldMap")));
    for (const QString& field : converted) {
        if (!fields->contains(field.toUpper()))
            problems.add(
                rules::kConversionField, place,
                QStringLiteral("table %1 has no field %2").arg(quoted(table), quoted(field)));
    }
}

}  // namespace

void rules::checkReferences(const CheckedSet& set, Problems& problems)
{
    checkTableNames(set, "indexini", "TABLE", kUnknownGisTable, problems);
    checkTableNames(set, "RecordConfigType", "TABLE", kUnknownGisTable, problems);
    checkTableNames(set, "RecordConfig", "WRITETABLE", kUnknownGisTable, problems);
    checkTableNames(set, "Attributefield", "TABLE", kUnknownGisTable, problems);
    checkTableNames(set, "IndexiniExtend", "EXTTABLE", kUnknownExtensionTable, problems);
    checkTableNames(set, "RecordConfigType", "EXTEND", kUnknownExtensionTable, problems);
    checkDictionaries(set, "Attributefield", "DEFAULT", true, problems);
    checkDictionaries(set, "SYS_ATTRIBUTEDEF", "DICTIONARY", false, problems);
    checkPipeFields(set, problems);
}

void rules::checkDocuments(const CheckedSet& set, Problems& problems)
{
    const CheckedTable& defines = set.table("globaldefines");
    for (int row = 0; row < defines.size(); ++row) {
        const QString key = defines.text(row, QStringLiteral("KEY"));
        if (key != QStringLiteral("GlobalParam") && key != QStringLiteral("字段转换")
            && key != QStringLiteral("图属库"))
            continue;
        const Place place = defines.place(row, QStringLiteral("VALUE"));
        QJsonParseError error{};
        const auto document = QJsonDocument::fromJson(place.value.toUtf8(), &error);
        if (error.error != QJsonParseError::NoError)
            problems.add(kJsonSyntax, place,
                         QStringLiteral("%1: %2 at offset %3")
                             .arg(key, error.errorString())
                             .arg(error.offset));
        else if (!document.isObject())
            problems.add(kJsonType, place, key + QStringLiteral(": is to be a JSON object"));
        else if (key == QStringLiteral("字段转换"))
            checkConversion(set, document.object(), place, problems);
    }
}

void rules::checkTextFiles(Problems& problems)
{
    for (const QString& name : {QStringLiteral("index.ini"), QStringLiteral("work.def")}) {
        QFile file(CVelmFindFile::Instance()->findFile(name, true));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        file.readLine();
        if (!file.atEnd())
            problems.add(kTextFileLines, {name, QString(), 2, QString(), QString()},
                         QStringLiteral("has more than one line, so none is read"));
    }
}
