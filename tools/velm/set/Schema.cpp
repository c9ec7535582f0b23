#include "set/Schema.h"

#include <algorithm>

namespace schema {

const QString kSystemFile = QStringLiteral("peltaconfig.db");
const QString kPipeFile = QStringLiteral("PipeConfig.db");

namespace {

using Columns = QVector<ColumnSchema>;

ColumnSchema column(const char* name, ColumnType type, const char* meaning)
{
    return {QLatin1String(name), type, QString::fromUtf8(meaning)};
}

ColumnSchema text(const char* name, const char* meaning)
{
    return column(name, ColumnType::Text, meaning);
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

TableSchema optional(TableSchema table)
{
    table.optional = true;
    return table;
}

QVector<TableSchema> symbolTables()
{
    const QStringList code{QStringLiteral("CODE")};
    return {
        queried(inSystem(
            "indexini", code, KeyRule::Exact,
            {text("CODE", "feature code, exact and case-sensitive; of several rows the last one "
                          "counts"),
             text("NAME", "feature name"),
             text("LTYPE", "line type; `text` makes text entities, `gc...` special lines"),
             real("WIDTH", "line width; a negative one makes special lines too"),
             text("TABLE", "GIS table of the attributes"),
             text("USECODE", "user code, an alternative that users type")})),
        inSystem("IndexiniExtend", code, KeyRule::Exact,
                 {text("CODE", "feature code"), text("EXTTABLE", "table names separated by `;`")}),
        queried(inSystem(
            "Workdef", code, KeyRule::Exact,
            {text("CODE", "feature code"), text("LAYER", "layer"),
             integer("ENTTYPE", "entity type: 1 general, 3 text, 5 special line"),
             text("PAR1", "drawing parameter"), text("PAR2", "drawing parameter"),
             text("TEXT", "short description"),
             optional(integer("COLOR", "colour index; -1 or no such column: not given"))})),
        queried(inSystem(
            "QuobAreaLine", code, KeyRule::Exact,
            {text("CODE", "feature code, exact; of several rows the last one counts"),
             text("ENTTYPE", "entity type of the boundary"),
             real("LINEWIDTH", "width of the boundary"), real("LINETYPESCALE", "line type scale"),
             integer("HATCHCOLOR", "colour index of the hatch; 7 for a code without a row"),
             integer("HATCHBKCOLOR", "colour index of its background; 7 for a code without a row"),
             text("ANNRULE", "annotation rule"), text("AREARULE", "area rule"),
             text("GROUPNAME", "group")})),
        queried(inSystem("VelmAnnotate", code, KeyRule::Exact,
                         {text("CODE", "feature code, exact"), text("FONT", "font"),
                          text("PLACE", "placement"), integer("DECIMAL", "digits behind the point"),
                          text("TEXT", "text"), object("EXTDATA", "JSON object, free data"),
                          real("HEIGHT", "height"), real("ROTATE", "rotation"),
                          real("FACTOR", "width factor"), real("LINETYPE", "line type"),
                          integer("INPUT", "how the value is entered, 0 to 2"),
                          integer("ANNTYPE", "annotation type, 0 to 5"),
                          integer("ENTTYPE", "entity type, 0 to 8")})),
    };
}

QVector<TableSchema> attributeTables()
{
    return {
        inSystem("Attributetable", {QStringLiteral("TABLE")}, KeyRule::IgnoringCase,
                 {text("TABLE", "name, found in any letter case"), text("TEXT", "display text"),
                  text("GISTABLE", "name in GIS databases"),
                  integer("TYPE", "0 point, 1 line, 2 area, 3 annotation, 4 pipe point, 5 pipe "
                                  "line")}),
        inSystem(
            "Attributefield", {QStringLiteral("TABLE"), QStringLiteral("NAME")},
            KeyRule::IgnoringCase,
            {text("TABLE", "table that owns the field; a row of an unknown table is left out"),
             text("NAME", "field name"), text("TEXT", "display text"),
             integer("TYPE", "0 text, 1 integer, 2 long, 3 real, 4 date; from 10 on the field is "
                             "not shown"),
             integer("LENGTH", "characters or digits"),
             integer("DECIMAL", "digits behind the point"),
             text("DEFAULT", "default value, or a dictionary: `TBL_...` in any letter case"),
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
            {text("ConfigName", "name of the configuration"),
             text("FRAMENAME", "name of the frame"),
             object("FRAMEMODE",
                    "JSON object of integers: `SelMode`, `TrimMode`, `FrameStyle`, `FrameSave`, "
                    "`FrameScaleType`, `FrameSizeType` (128 if absent)"),
             object("FRAMETAG", "JSON object: tag to an object"),
             object("ENTDEPLOY", "JSON object: how entities are deployed"),
             object("EXTAND", "JSON object: extension data")})),
        queried(
            inSystem("VelmCmdSetting", {QStringLiteral("CmdName")}, KeyRule::Exact,
                     {text("CmdName", "command, exact"), json("CmdText", "its setting in JSON")})),
        inSystem("RecordConfigType", code, KeyRule::Exact,
                 {text("CODE", "feature code"), text("NAME", "name of the record type"),
                  text("EXTEND", "extension"), text("TABLE", "table"), text("TYPE", "type")}),
        inSystem("RecordConfig", code, KeyRule::Repeated,
                 {text("CODE", "feature code; `[Default]` for codes without rows of their own"),
                  text("SHOWFIELD", "field shown; a whole number stands for a pipe field"),
                  text("WRITETABLE", "table written"),
                  text("ACTUALFIELD", "field written; a whole number stands for a pipe field")}),
        queried(inSystem("globaldefines", {QStringLiteral("key")}, KeyRule::Exact,
                         {text("key", "key, unique by use"),
                          text("value", "value; a JSON object where a map is stored")})),
    };
}

QVector<TableSchema> pipeTables()
{
    return {
        inPipe("SYS_DICTIONARY", {QStringLiteral("NAME")}, KeyRule::Exact,
               {text("NAME", "name of the dictionary"),
                text("LISTVALUE", "values separated by `;`; their positions, from 0, are the "
                                  "codes")}),
        inPipe("SYS_GISTABLE", {QStringLiteral("LAYERNAME")}, KeyRule::IgnoringCase,
               {text("LAYERNAME", "name, found in any letter case"),
                text("ALIASNAME", "display text"),
                integer("LAYERTYPE", "as `TYPE` of `Attributetable`")}),
        inPipe("SYS_ATTRIBUTEDEF", {QStringLiteral("TABLENAME"), QStringLiteral("FIELDNAME")},
               KeyRule::IgnoringCase,
               {text("TABLENAME", "table that owns the field; it is made if it is missing"),
                text("FIELDNAME", "field name"), text("FIELDTEXT", "display text"),
                integer("FIELDTYPE", "as `TYPE` of `Attributefield`"),
                integer("FIELDLENGTH", "characters or digits"),
                integer("FIELDDECIMAL", "digits behind the point"),
                text("DEFAULTVALUE", "default value"), text("DICTIONARY", "dictionary"),
                integer("NOTNULL", "not 0: must be filled")}),
        inPipe("PIP_SysConfig", {QStringLiteral("FIELDTYPE")}, KeyRule::Exact,
               {integer("FIELDTYPE", "number of a pipe field"), text("FIELDNAME", "its name")}),
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
    return name.startsWith(QLatin1String("TBL_"), Qt::CaseInsensitive)
           || name.startsWith(QLatin1String("TB_"), Qt::CaseInsensitive);
}

TableSchema dictionary(const QString& name)
{
    TableSchema table = inSystem("", {QStringLiteral("code")}, KeyRule::Exact,
                                 {text("code", "code"), text("value", "what it stands for")});
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
