#include "check/Snapshot.h"

#include "check/Quoted.h"
#include "set/Readable.h"

#include "CVelmString.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QTextCodec>

namespace {

/// What stands under a name in the schema; empty for a table that stores its rows.
QString kindOf(const QString& type, qint64 rootPage, const QString& sql)
{
    if (type == QLatin1String("view"))
        return QStringLiteral("a view");
    const bool isPlain =
        rootPage > 0 && sql.startsWith(QLatin1String("create table"), Qt::CaseInsensitive);
    return isPlain ? QString() : QStringLiteral("a virtual table");
}

/// The name as SQLite compares it: letter case of ASCII does not count, that of others does.
QString folded(QString name)
{
    for (QChar& ch : name) {
        if (ch >= QLatin1Char('A') && ch <= QLatin1Char('Z'))
            ch = ch.toLower();
    }
    return name;
}

qint64 sizeOf(const QVariant& value)
{
    const bool isText = value.userType() == QMetaType::QString;
    return 32 + (isText ? 2 * qint64(value.toString().size()) : 0);
}

/// Texts come as their bytes, since a driver mends what is no UTF-8.
class TextReader
{
public:
    explicit TextReader(const QString& encoding)
        : m_codec(QTextCodec::codecForName(encoding.toLatin1())),
          m_isUtf8(encoding == QLatin1String("UTF-8"))
    {}

    /// @p sound tells whether the bytes are valid.
    QString read(const QByteArray& bytes, bool& sound) const
    {
        sound = !m_isUtf8 || CVelmString::IsUTF8(bytes);
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        return m_codec->toUnicode(bytes.constData(), bytes.size(), &state);
    }

private:
    QTextCodec* m_codec;
    bool m_isUtf8;
};

}  // namespace

Snapshot::Snapshot(const QString& fileName, const QString& path) : m_fileName(fileName)
{
    m_exists = QFileInfo::exists(path);
    if (!m_exists)
        return;
    constexpr qint64 kGreatestFile = 1024 * 1024 * 1024;  // bytes, that the library reads
    m_problem = whyUnreadable(path, {});
    if (QFileInfo(path).size() > kGreatestFile)
        m_problem = QStringLiteral("larger than 1 GiB, which the library does not read");
    if (m_problem.isEmpty() && m_database.initDatabase(path, QString()) != Velm::VelmOk)
        m_problem = QStringLiteral("it cannot be opened as a database");
    if (!m_problem.isEmpty())
        m_problem = fileName + QStringLiteral(": ") + m_problem;
    else
        readSchema();
}

QStringList Snapshot::tableNames() const
{
    QStringList names;
    for (const Entry& entry : m_tables)
        names.append(entry.name);
    return names;
}

void Snapshot::fail(const QString& what, const QSqlError& error)
{
    if (m_problem.isEmpty())
        m_problem =
            QStringLiteral("%1, %2: %3").arg(m_fileName, what, error.databaseText().trimmed());
}

std::optional<QSqlQuery> Snapshot::run(const QString& statement, const QString& what)
{
    QSqlQuery query(m_database.getQSqlDatabase());
    query.setForwardOnly(true);
    if (query.exec(statement))
        return query;
    fail(what, query.lastError());
    return std::nullopt;
}

bool Snapshot::readSchema()
{
    const QString what = QStringLiteral("its list of tables");
    if (!run(QStringLiteral("pragma trusted_schema=off"), what)
        || !run(QStringLiteral("begin"), what))
        return false;
    auto encoding = run(QStringLiteral("pragma encoding"), what);
    if (!encoding || !encoding->next())
        return false;
    m_encoding = encoding->value(0).toString();
    auto schema =
        run(QStringLiteral("select type, name, tbl_name, rootpage, sql from sqlite_master"), what);
    while (schema && schema->next()) {
        const QString type = schema->value(0).toString();
        const QString name = schema->value(1).toString();
        if (type == QLatin1String("trigger"))
            m_triggers.append(name);
        else if (type == QLatin1String("table") || type == QLatin1String("view"))
            m_tables.insert(folded(name), {name, kindOf(type, schema->value(3).toLongLong(),
                                                        schema->value(4).toString())});
    }
    if (schema && schema->lastError().isValid())
        fail(what, schema->lastError());
    return m_problem.isEmpty();
}

QStringList Snapshot::columnsOf(Entry& entry)
{
    QStringList columns;
    auto info = run(QStringLiteral("pragma table_xinfo(%1)").arg(quoted(entry.name)), entry.name);
    while (info && info->next()) {
        if (info->value(QStringLiteral("hidden")).toInt() > 1)
            entry.kind = QStringLiteral("a table with computed columns");
        columns.append(info->value(QStringLiteral("name")).toString());
    }
    return columns;
}

void Snapshot::read(CheckedTable& table, qint64& budget)
{
    const auto found = m_tables.find(folded(table.name()));
    if (!m_problem.isEmpty() || found == m_tables.end())
        return;
    const QStringList columns = found->kind.isEmpty() ? columnsOf(*found) : QStringList();
    if (!found->kind.isEmpty())
        return table.setReplacedBy(found->kind);
    // A column of that name hides the number of the row.
    QStringList wanted{columns.contains(QLatin1String("rowid"), Qt::CaseInsensitive)
                           ? QStringLiteral("0")
                           : QStringLiteral("rowid")};
    for (const QString& column : columns)
        wanted.append(
            QStringLiteral("case typeof(%1) when 'text' then cast(%1 as blob) else %1 end")
                .arg(quoted(column)));
    table.setColumns(columns);
    const QString from = QStringLiteral(" from ") + quoted(found->name);
    QSqlQuery rows(m_database.getQSqlDatabase());
    rows.setForwardOnly(true);
    if (!rows.exec(QStringLiteral("select ") + wanted.join(QStringLiteral(", ")) + from)) {
        wanted[0] = QStringLiteral("0");  // a table without row ids
        if (!rows.exec(QStringLiteral("select ") + wanted.join(QStringLiteral(", ")) + from))
            return fail(QStringLiteral("table ") + found->name, rows.lastError());
    }
    const TextReader reader(m_encoding);
    while (rows.next()) {
        CheckedRow row{rows.value(0).toLongLong(), {}, {}};
        for (int i = 0; i < columns.size(); ++i) {
            QVariant value = rows.value(i + 1);
            if (value.userType() == QMetaType::QByteArray) {
                bool sound = true;
                value = reader.read(value.toByteArray(), sound);
                if (!sound)
                    row.damaged.append(i);
            }
            budget -= sizeOf(value);
            row.cells.append(value);
        }
        table.append(row);
        if (budget < 0) {
            m_problem = QStringLiteral("%1, table %2: the tables hold more than 512 MiB")
                            .arg(m_fileName, found->name);
            return;
        }
    }
    if (rows.lastError().isValid())
        fail(QStringLiteral("table ") + found->name, rows.lastError());
}

bool Snapshot::isSearched(const QString& table, const QString& column)
{
    auto plan = run(QStringLiteral("explain query plan select * from %1 where %2 = 'x'")
                        .arg(quoted(table), quoted(column)),
                    table);
    while (plan && plan->next()) {
        if (plan->value(QStringLiteral("detail")).toString().startsWith(QLatin1String("SEARCH")))
            return true;
    }
    return false;
}
