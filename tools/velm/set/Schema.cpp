#include "set/Schema.h"

#include "common/files/DatabaseNames.h"
#include "data/values/DictionaryName.h"

#include <algorithm>

namespace schema {

const QString kSystemFile = QLatin1String(velm::detail::kSystemDatabaseName);
const QString kPipeFile = QLatin1String(velm::detail::kPipeDatabaseName);

namespace {

using Columns = QVector<ColumnSchema>;

ColumnSchema column(const char* name, ColumnType type, const char* meaning)
{
    return {QLatin1String(name), type, Holds::Values, QString::fromUtf8(meaning)};
}

ColumnSchema text(const char* name, const char* meaning, Holds holds = Holds::Values)
{
    ColumnSchema text = column(name, ColumnType::Text, meaning);
    text.holds = holds;
    return text;
}

ColumnSchema integer(const char* name, const char* meaning)
{
    return column(name, ColumnType::Integer, meaning);
}

ColumnSchema real(const char* name, const char* meaning)
{
    return column(name, ColumnType::Real, meaning);
}

ColumnSchema object(const char* name, const char* meaning)
{
    return column(name, ColumnType::JsonObject, meaning);
}

ColumnSchema annotationData(const char* name, const char* meaning)
{
    ColumnSchema data = object(name, meaning);
    data.holds = Holds::AnnotationData;
    return data;
}

ColumnSchema json(const char* name, const char* meaning)
{
    return column(name, ColumnType::Json, meaning);
}

ColumnSchema optional(ColumnSchema column)
{
    column.optional = true;
    return column;
}

TableSchema inSystem(const char* name, const QStringList& key, KeyRule rule, const Columns& columns)
{
    return {kSystemFile, QLatin1String(name), key, rule, columns};
}

TableSchema inPipe(const char* name, const QStringList& key, KeyRule rule, const Columns& columns)
{
    return {kPipeFile, QLatin1String(name), key, rule, columns};
}

TableSchema queried(TableSchema table)
{
    table.queried = true;
    return table;
}

TableSchema written(TableSchema table)
{
    table.written = true;
    return table;
}

TableSchema optional(TableSchema table)
{
    table.optional = true;
    return table;
}

QVector<TableSchema> symbolTables()
{
    const QStringList code{QStringLiteral("CODE")};
    return {
        written(queried(inSystem(
            "indexini", code, KeyRule::Exact,
            {text("CODE",
                  "feature code, exact and case-sensitive; of several rows the last one "
                  "counts",
                  Holds::FeatureCode),
             text("NAME", "feature name", Holds::Name),
             text("LTYPE", "line type; `text` makes text entities, `gc...` special lines",
                  Holds::LineType),
             real("WIDTH", "line width; a negative one makes special lines too"),
             text("TABLE", "GIS table of the attributes", Holds::TableReference),
             text("USECODE", "user code, an alternative that users type", Holds::UserCode)}))),
        inSystem("IndexiniExtend", code, KeyRule::Exact,
                 {text("CODE", "feature code", Holds::CodeReference),
                  text("EXTTABLE", "table names separated by `;`", Holds::TableReferences)}),
        written(queried(inSystem(
            "Workdef", code, KeyRule::Exact,
            {text("CODE", "feature code", Holds::CodeReference),
             text("LAYER", "layer", Holds::Layer),
             integer("ENTTYPE", "entity type: 1 general, 3 text, 5 special line; -1: not given"),
             text("PAR1", "drawing parameter"), text("PAR2", "drawing parameter"),
             text("TEXT", "short description"),
             optional(integer("COLOR", "colour index; -1 or no such column: not given"))}))),
        written(queried(inSystem(
            "QuobAreaLine", code, KeyRule::Exact,
            {text("CODE", "feature code, exact; of several rows the last one counts",
                  Holds::CodeReference),
             text("ENTTYPE", "entity type of the boundary, 0 to 8, or nothing"),
             real("LINEWIDTH", "width of the boundary"), real("LINETYPESCALE", "line type scale"),
             integer("HATCHCOLOR", "colour index of the hatch; 7 for a code without a row"),
             integer("HATCHBKCOLOR", "colour index of its background; 7 for a code without a row"),
             text("ANNRULE", "annotation rule", Holds::FieldTemplate),
             text("AREARULE", "area rule", Holds::FieldTemplate),
             text("GROUPNAME", "group", Holds::Name)}))),
        queried(inSystem(
            "VelmAnnotate", code, KeyRule::Exact,
            {text("CODE", "feature code, exact", Holds::CodeReference), text("FONT", "font"),
             text("PLACE", "placement"), integer("DECIMAL", "digits behind the point"),
             text("TEXT", "text", Holds::FieldTemplate),
             annotationData("EXTDATA", "JSON object, free data"), real("HEIGHT", "height"),
             real("ROTATE", "rotation"), real("FACTOR", "width factor"),
             real("LINETYPE", "line type"),
             integer("INPUT", "how the value is entered, 0 to 2; the host gives it its meaning"),
             integer("ANNTYPE", "annotation type, 0 to 5; the host gives it its meaning"),
             integer("ENTTYPE", "entity type, 0 to 8: 1 general, 3 text, 5 special line")})),
    };
}

QVector<TableSchema> attributeTables()
{
    return {
        inSystem("Attributetable", {QStringLiteral("TABLE")}, KeyRule::IgnoringCase,
                 {text("TABLE", "name, found in any letter case", Holds::GisTable),
                  text("TEXT", "display text", Holds::Name),
                  text("GISTABLE", "name in GIS databases", Holds::Name),
                  integer("TYPE", "0 point, 1 line, 2 area, 3 annotation, 4 pipe point, 5 pipe "
                                  "line")}),
        inSystem(
            "Attributefield", {QStringLiteral("TABLE"), QStringLiteral("NAME")},
            KeyRule::IgnoringCase,
            {text("TABLE", "table that owns the field; a row of an unknown table is left out",
                  Holds::TableReference),
             text("NAME", "field name", Holds::Field), text("TEXT", "display text", Holds::Name),
             integer("TYPE", "0 text, 1 integer, 2 long, 3 real, 4 date; 10 more and the field is "
                             "not shown"),
             integer("LENGTH", "characters or digits"),
             integer("DECIMAL", "digits behind the point"),
             text("DEFAULT", "default value, or a dictionary: `TBL_...` in any letter case",
                  Holds::Default),
             integer("NOTNULL", "not 0: must be filled"), integer("BEXPORT", "not 0: is exported"),
             optional(integer("ENABLEEDIT",
                              "not 0: may be edited; without the column every field may"))}),
    };
}

QVector<TableSchema> settingTables()
{
    const QStringList code{QStringLiteral("CODE")};
    return {
        queried(inSystem(
            "VelmFrame", {QStringLiteral("ConfigName")}, KeyRule::Exact,
            {text("ConfigName", "name of the configuration", Holds::Name),
             text("FRAMENAME", "name of the frame", Holds::Name),
             object("FRAMEMODE",
                    "JSON object of integers: `SelMode`, `TrimMode`, `FrameStyle`, `FrameSave`, "
                    "`FrameScaleType`, `FrameSizeType` (128 if absent)"),
             object("FRAMETAG", "JSON object: tag to an object"),
             object("ENTDEPLOY", "JSON object: how entities are deployed"),
             object("EXTAND", "JSON object: extension data")})),
        queried(inSystem("VelmCmdSetting", {QStringLiteral("CmdName")}, KeyRule::Exact,
                         {text("CmdName", "command, exact", Holds::Name),
                          json("CmdText", "its setting in JSON")})),
        inSystem("RecordConfigType", code, KeyRule::Exact,
                 {text("CODE", "feature code", Holds::CodeReference),
                  text("NAME", "name of the record type", Holds::Name), text("EXTEND", "extension"),
                  text("TABLE", "table", Holds::TableReference), text("TYPE", "type")}),
        inSystem("RecordConfig", code, KeyRule::Repeated,
                 {text("CODE", "feature code; `[Default]` for codes without rows of their own",
                       Holds::CodeReference),
                  text("SHOWFIELD", "field shown; a whole number stands for a pipe field",
                       Holds::RecordField),
                  text("WRITETABLE", "table written", Holds::TableReference),
                  text("ACTUALFIELD", "field written; a whole number stands for a pipe field",
                       Holds::RecordField)}),
        written(queried(inSystem("globaldefines", {QStringLiteral("key")}, KeyRule::Exact,
                                 {text("key", "key, unique by use", Holds::Name),
                                  text("value", "value; a JSON object where a map is stored")}))),
    };
}

QVector<TableSchema> pipeTables()
{
    return {
        inPipe("SYS_DICTIONARY", {QStringLiteral("NAME")}, KeyRule::Exact,
               {text("NAME", "name of the dictionary", Holds::Dictionary),
                text("LISTVALUE", "values separated by `;`; their positions, from 0, are the "
                                  "codes")}),
        inPipe("SYS_GISTABLE", {QStringLiteral("LAYERNAME")}, KeyRule::IgnoringCase,
               {text("LAYERNAME", "name, found in any letter case", Holds::GisTable),
                text("ALIASNAME", "display text", Holds::Name),
                integer("LAYERTYPE", "as `TYPE` of `Attributetable`")}),
        inPipe("SYS_ATTRIBUTEDEF", {QStringLiteral("TABLENAME"), QStringLiteral("FIELDNAME")},
               KeyRule::IgnoringCase,
               {text("TABLENAME", "table that owns the field; it is made if it is missing",
                     Holds::GisTable),
                text("FIELDNAME", "field name", Holds::Field),
                text("FIELDTEXT", "display text", Holds::Name),
                integer("FIELDTYPE", "as `TYPE` of `Attributefield`"),
                integer("FIELDLENGTH", "characters or digits"),
                integer("FIELDDECIMAL", "digits behind the point"),
                text("DEFAULTVALUE", "default value"),
                text("DICTIONARY", "dictionary", Holds::DictionaryReference),
                integer("NOTNULL", "not 0: must be filled")}),
        inPipe("PIP_SysConfig", {QStringLiteral("FIELDTYPE")}, KeyRule::Exact,
               {integer("FIELDTYPE", "number of a pipe field"),
                text("FIELDNAME", "its name", Holds::Name)}),
        // Where the library looks for a field conversion that the system configuration lacks.
        optional(inPipe("globaldefines", {QStringLiteral("key")}, KeyRule::Exact,
                        {text("key", "key"), text("value", "value")})),
    };
}

}  // namespace

const QVector<TableSchema>& tables()
{
    static const QVector<TableSchema> all =
        symbolTables() + attributeTables() + settingTables() + pipeTables();
    return all;
}

const TableSchema& table(const QString& name)
{
    return *std::find_if(tables().begin(), tables().end(),
                         [&name](const TableSchema& table) { return table.name == name; });
}

bool isDictionary(const QString& name)
{
    return velm::detail::namesDictionary(name);
}

TableSchema dictionary(const QString& name)
{
    TableSchema table =
        inSystem("", {QStringLiteral("code")}, KeyRule::Exact,
                 {text("code", "code", Holds::Name), text("value", "what it stands for")});
    table.name = name;
    return table;
}

}  // namespace schema

QString ColumnSchema::sqlType() const
{
    switch (type) {
    case ColumnType::Integer:
        return QStringLiteral("INT");
    case ColumnType::Real:
        return QStringLiteral("REAL");
    default:
        return QStringLiteral("TEXT");
    }
}

QStringList TableSchema::columnNames() const
{
    QStringList names;
    for (const ColumnSchema& column : columns)
        names.append(column.name);
    return names;
}
