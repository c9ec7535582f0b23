#include "set/OlderSet.h"

#include <QTextCodec>

namespace {

/// The cells of @p row under the columns @p names.
QStringList cellsOf(const SetTable& table, const QStringList& row, const QStringList& names)
{
    const QStringList header = table.schema.columnNames();
    QStringList cells;
    for (const QString& name : names)
        cells.append(row.at(header.indexOf(name)));
    return cells;
}

QStringList columns(const char* names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '));
}

QByteArray encode(const QStringList& lines)
{
    const QString text = lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    return QTextCodec::codecForName("GB18030")->fromUnicode(text);
}

QByteArray fileOf(const SetTable& table, const QStringList& names)
{
    QStringList lines;
    for (const QStringList& row : table.rows)
        lines.append(cellsOf(table, row, names).join(QLatin1Char(',')));
    return encode(lines);
}

}  // namespace

QStringList older::indexColumns()
{
    return columns("CODE LTYPE WIDTH NAME USECODE TABLE");
}

QStringList older::workColumns()
{
    return columns("CODE LAYER ENTTYPE PAR1 PAR2 TEXT COLOR");
}

QStringList older::attributeTableColumns()
{
    return columns("TABLE TEXT GISTABLE TYPE");
}

QStringList older::attributeFieldColumns()
{
    return columns("TABLE NAME TEXT TYPE LENGTH DECIMAL DEFAULT NOTNULL BEXPORT ENABLEEDIT");
}

QByteArray older::indexIni(const DatabaseTables& system)
{
    return fileOf(system.table(QStringLiteral("indexini")), indexColumns());
}

QByteArray older::workDef(const DatabaseTables& system)
{
    return fileOf(system.table(QStringLiteral("Workdef")), workColumns());
}

QByteArray older::attributeDef(const DatabaseTables& system)
{
    const SetTable tables = system.table(QStringLiteral("Attributetable"));
    const SetTable fields = system.table(QStringLiteral("Attributefield"));
    QStringList lines;
    for (const QStringList& table : tables.rows) {
        const QStringList tableCells = cellsOf(tables, table, attributeTableColumns());
        lines.append(QStringLiteral("T,") + tableCells.join(QLatin1Char(',')));
        for (const QStringList& field : fields.rows) {
            const QStringList cells = cellsOf(fields, field, attributeFieldColumns());
            if (cells.first() == tableCells.first())
                lines.append(QStringLiteral("F,") + cells.join(QLatin1Char(',')));
        }
    }
    return encode(lines);
}
