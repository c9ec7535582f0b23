#include "set/TextImport.h"

#include "set/OlderSet.h"

#include "common/files/SystemFile.h"
#include "CVelmFindFile.h"
#include "CVelmString.h"

#include <QFileInfo>
#include <QTextCodec>

#include <algorithm>

namespace {

using Codec = QTextCodec*;

Codec utf8()
{
    return QTextCodec::codecForName("UTF-8");
}

Codec gbk()
{
    return QTextCodec::codecForName("GB18030");
}

/// The codec in which the bytes are valid; null if there is none.
Codec codecOf(const QByteArray& bytes)
{
    if (CVelmString::IsUTF8(bytes))
        return utf8();
    return CVelmString::IsGBK(bytes) ? gbk() : nullptr;
}

/// @p fields with those of @p whole that are missing at the end.
QStringList completed(const QStringList& fields, const QStringList& whole)
{
    return fields + whole.mid(fields.size());
}

bool converts(const QString& cell, ColumnType type)
{
    bool isNumber = true;
    if (type == ColumnType::Real && !cell.isEmpty())
        cell.toDouble(&isNumber);
    if (type == ColumnType::Integer && !cell.isEmpty())
        cell.toInt(&isNumber);
    return isNumber;
}

}  // namespace

QString TextImport::read(const QString& folder)
{
    QString problem;
    for (const char* name : {"index.ini", "work.def", "attribute.def"}) {
        if (problem.isEmpty())
            problem = readFile(folder, QLatin1String(name));
    }
    return problem;
}

TextImport::LineUser TextImport::userOf(const QString& name)
{
    if (name == QLatin1String("index.ini"))
        return &TextImport::useIndexLine;
    return name == QLatin1String("work.def") ? &TextImport::useWorkLine
                                             : &TextImport::useAttributeLine;
}

QString TextImport::readFile(const QString& folder, const QString& name)
{
    const LineUser use = userOf(name);
    const QString path = CVelmFindFile::Instance()->findFile(folder, name, false);
    if (path.isEmpty())
        return QString();
    velm::detail::SystemFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return path + QStringLiteral(": ") + file.errorString();
    QByteArray bytes = file.readAll();
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    const Codec ofFile = codecOf(bytes);
    m_file = name;
    m_files.append(name);
    const QList<QByteArray> lines = bytes.split('\n');
    m_lineCount = lines.last().isEmpty() ? lines.size() - 1 : lines.size();
    for (m_line = 1; m_line <= lines.size(); ++m_line) {
        const QByteArray& bytesOfLine = lines.at(m_line - 1);
        const Codec codec = ofFile ? ofFile : codecOf(bytesOfLine);
        if (!codec) {
            reject(m_line, QStringLiteral("is neither UTF-8 nor GBK"));
            continue;
        }
        const QString line = codec->toUnicode(bytesOfLine).trimmed();
        if (line.contains(QChar::Null))
            reject(m_line, QStringLiteral("holds a NUL character, as no text does"));
        else if (!line.isEmpty())
            (this->*use)(line.split(QLatin1Char(',')));
    }
    return QString();
}

void TextImport::useIndexLine(const QStringList& fields)
{
    addRow(QStringLiteral("indexini"), older::indexColumns(), fields, QStringLiteral("CODE"));
}

void TextImport::useWorkLine(const QStringList& fields)
{
    // The type and the colour are -1 where a line ends before them, as the library has them then.
    const QString unset = QStringLiteral("-1");
    addRow(QStringLiteral("Workdef"), older::workColumns(),
           completed(fields, {QString(), QString(), unset, QString(), QString(), QString(), unset}),
           QStringLiteral("CODE"));
}

void TextImport::useAttributeLine(const QStringList& fields)
{
    const QString& kind = fields.first();
    const QString tableKey = QStringLiteral("TABLE");
    if (kind == QLatin1String("T")) {
        addRow(QStringLiteral("Attributetable"), older::attributeTableColumns(), fields.mid(1),
               tableKey);
    } else if (kind != QLatin1String("F")) {
        reject(m_line, QStringLiteral("begins with \"%1\", not with T or F").arg(kind));
    } else if (!m_rowOfKey.contains(QStringLiteral("Attributetable/")
                                    + fields.value(1).toUpper())) {
        reject(m_line,
               QStringLiteral("no line before defines the table \"%1\"").arg(fields.value(1)));
    } else {
        const QStringList columns = older::attributeFieldColumns();
        QStringList whole;
        for (const QString& column : columns)  // editable unless a line says otherwise
            whole.append(column == QLatin1String("ENABLEEDIT") ? QStringLiteral("1") : QString());
        addRow(QStringLiteral("Attributefield"), columns, completed(fields.mid(1), whole),
               QString());
    }
}

void TextImport::addRow(const QString& tableName, const QStringList& columns,
                        const QStringList& fields, const QString& key)
{
    if (fields.size() > columns.size())
        return reject(
            m_line,
            QStringLiteral("has %1 fields, %2 at most").arg(fields.size()).arg(columns.size()));
    if (fields.value(0).isEmpty())
        return reject(m_line, QStringLiteral("has no ") + columns.first().toLower());
    SetTable& target = table(tableName);
    QStringList row;
    for (const ColumnSchema& column : qAsConst(target.schema.columns)) {
        const QString cell = fields.value(columns.indexOf(column.name));
        if (!converts(cell, column.type))
            return reject(m_line, QStringLiteral("%1 is no number: \"%2\"").arg(column.name, cell));
        row.append(cell);
    }
    // Codes are compared exactly, names of tables are not.
    const QString value = key == QLatin1String("TABLE") ? fields.first().toUpper() : fields.first();
    const QString known = tableName + QLatin1Char('/') + value;
    const auto earlier = m_rowOfKey.constFind(known);
    if (!key.isEmpty() && earlier != m_rowOfKey.constEnd()) {
        reject(
            earlier->second,
            QStringLiteral("line %1 has the same %2, and counts").arg(m_line).arg(key.toLower()));
        target.rows[earlier->first] = row;
        m_linesOfRows[tableName][earlier->first] = m_line;
        m_rowOfKey.insert(known, {earlier->first, m_line});
        return;
    }
    if (!key.isEmpty())
        m_rowOfKey.insert(known, {target.rows.size(), m_line});
    target.rows.append(row);
    m_linesOfRows[tableName].append(m_line);
}

SetTable& TextImport::table(const QString& name)
{
    return *std::find_if(m_database.tables.begin(), m_database.tables.end(),
                         [&name](const SetTable& table) { return table.schema.name == name; });
}

void TextImport::reject(int line, const QString& reason)
{
    m_unused.append({m_file, line, reason});
}
