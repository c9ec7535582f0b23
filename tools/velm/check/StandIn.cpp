#include "check/StandIn.h"

#include "CVelmFindFile.h"
#include "CVelmSystemGlobal.h"

#include <QDir>

namespace {

QDir configFolder()
{
    return QFileInfo(CVelmSystemGlobal::Instance()->getSystemConfigDb()).dir();
}

}  // namespace

const QVector<QPair<QString, QString>>& StandIn::files()
{
    static const QVector<QPair<QString, QString>> files{
        {QStringLiteral("index.ini"), QStringLiteral("indexini")},
        {QStringLiteral("work.def"), QStringLiteral("Workdef")},
        {QStringLiteral("attribute.def"), QStringLiteral("Attributetable")}};
    return files;
}

StandIn::StandIn(const QString& name)
    : m_name(name), m_file(CVelmFindFile::Instance()->findFile(name, true))
{
    if (isThere())
        m_problem = m_import.readFile(m_file.path(), name);
    else if (configFolder().exists(name))  // the search passes it by
        m_problem = configFolder().filePath(name) + QStringLiteral(": it is no file");
}

Place StandIn::place(int line) const
{
    Place place;
    place.database = configFolder().relativeFilePath(m_file.filePath());
    place.row = line;
    return place;
}

CheckedTable StandIn::table(const QString& name) const
{
    const SetTable read = m_import.database().table(name);
    TableSchema schema = read.schema;
    schema.database = place(0).database;
    CheckedTable table(schema);
    table.setColumns(schema.columnNames());
    for (int row = 0; row < read.rows.size(); ++row) {
        CheckedRow checked{m_import.lineOf(name, row), {}, {}};
        for (const QString& cell : read.rows.at(row))
            checked.cells.append(cell);
        table.append(checked);
    }
    return table;
}
