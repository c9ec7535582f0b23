#include "set/HeldDatabase.h"

#include "common/files/DatabasePath.h"
#include "common/platform/FileSystem.h"
#include "data/sql/Patience.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QUuid>

namespace {

/// As SQLite compares names: only the letters of ASCII have two cases.
QString asciiLower(QString name)
{
    for (QChar& ch : name) {
        if (ch >= QLatin1Char('A') && ch <= QLatin1Char('Z'))
            ch = QChar(ch.unicode() + 'a' - 'A');
    }
    return name;
}

bool tellsReadOnly(const QSqlError& error)
{
    constexpr int kReadOnly = 8;
    return (error.nativeErrorCode().toInt() & 0xFF) == kReadOnly;
}

}  // namespace

HeldDatabase::HeldDatabase(const QString& path)
    : m_path(path), m_connection(QUuid::createUuid().toString())
{}

HeldDatabase::~HeldDatabase()
{
    release();
    QSqlDatabase::removeDatabase(m_connection);
}

QString HeldDatabase::hold()
{
    QString problem = open(true);
    if (!problem.isEmpty() && m_isUnfinished) {
        open(false);
        problem = open(true);
    }
    return problem.isEmpty() ? whyTruncated() : problem;
}

/// Opens the file and begins to read. SQLite undoes what a program that was killed has left half
/// done, but only where it may write.
QString HeldDatabase::open(bool readOnly)
{
    QSqlDatabase::removeDatabase(m_connection);
    m_identity = velm::detail::platform::fileIdentity(m_path);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(velm::detail::databaseName(m_path));
    const QString patience =
        QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(velm::detail::kLockPatienceMs);
    database.setConnectOptions(readOnly ? QStringLiteral("QSQLITE_OPEN_READONLY;") + patience
                                        : patience);
    if (!database.open())
        return textOf(database.lastError());
    QSqlQuery first = query();
    QString problem = run(first, QStringLiteral("pragma trusted_schema=off"));
    if (problem.isEmpty())
        problem = run(first, QStringLiteral("begin"));
    if (problem.isEmpty())  // what is asked first decides which state it is
        problem = run(first, QStringLiteral("select count(*) from sqlite_master"));
    m_isUnfinished = tellsReadOnly(first.lastError());
    m_holds = problem.isEmpty();
    m_isWal = m_holds && isWal();
    m_version = m_isWal ? version() : 0;
    return problem;
}

/// SQLite takes what is missing of the last page for zeros.
QString HeldDatabase::whyTruncated() const
{
    QSqlQuery size = query();
    QString problem = run(size, QStringLiteral("pragma page_size"));
    const qint64 bytes = size.value(0).toLongLong();
    if (problem.isEmpty() && (bytes < 1 || QFileInfo(m_path).size() % bytes != 0))
        problem = QStringLiteral("the file is truncated");
    return problem;
}

QString HeldDatabase::find(const QString& table, Entry& found) const
{
    QString problem = m_entries.isEmpty() ? readEntries() : QString();
    if (!problem.isEmpty())
        return problem;
    found = m_entries.value(asciiLower(table));
    return found.name.isEmpty() || !found.kind.isEmpty() ? QString() : readColumns(found);
}

QString HeldDatabase::readEntries() const
{
    QSqlQuery entry = query();
    QString problem =
        run(entry,
            // A virtual table is a table too, even with a page that its author has given it.
            QStringLiteral("select name, type, rootpage > 0 and sql like 'create table%' from "
                           "sqlite_master where type in ('table', 'view')"));
    for (; entry.isValid(); entry.next()) {
        Entry stored;
        stored.name = entry.value(0).toString();
        if (entry.value(1).toString() == QLatin1String("view"))
            stored.kind = QStringLiteral("a view");
        else if (!entry.value(2).toBool())
            stored.kind = QStringLiteral("a virtual table");
        m_entries.insert(asciiLower(stored.name), stored);
    }
    if (problem.isEmpty())
        problem = textOf(entry.lastError());
    if (!problem.isEmpty())
        m_entries.clear();
    return problem;
}

QString HeldDatabase::readColumns(Entry& table) const
{
    QSqlQuery columns = query();
    QString problem = run(columns, QStringLiteral("select name, hidden from pragma_table_xinfo(?)"),
                          {table.name});
    for (; problem.isEmpty() && columns.isValid(); columns.next()) {
        if (columns.value(1).toInt() > 1)
            table.kind = QStringLiteral("a table with computed columns");
        table.columns.append(columns.value(0).toString());
    }
    return problem.isEmpty() ? textOf(columns.lastError()) : problem;
}

QString HeldDatabase::problemOf(const TableSchema& table) const
{
    Entry found;
    QString problem = find(table.name, found);
    if (!problem.isEmpty())
        return problem;
    if (found.name.isEmpty())
        return QStringLiteral("no such table");
    if (!found.kind.isEmpty())
        return found.kind + QStringLiteral(" in its place");
    for (const ColumnSchema& column : table.columns) {
        if (!column.optional && !found.columns.contains(column.name, Qt::CaseInsensitive))
            return QStringLiteral("no column \"%1\"").arg(column.name);
    }
    return table.queried ? indexProblem(table) : QString();
}

/// Why rows that are there may not be found: an index over the key that has lost some of them.
QString HeldDatabase::indexProblem(const TableSchema& table) const
{
    const QString& key = table.key.first();
    QSqlQuery index = query();
    QString problem = run(index,
                          QStringLiteral("select l.name from pragma_index_list(?) l, "
                                         "pragma_index_info(l.name) i where not l.partial and "
                                         "i.seqno = 0 and i.name = ? collate nocase"),
                          {table.name, key});
    for (; problem.isEmpty() && index.isValid(); index.next()) {
        QSqlQuery counts = query();
        const QString name = index.value(0).toString();
        problem = run(counts, QStringLiteral("select (select count([%1]) from [%2] not indexed), "
                                             "(select count([%1]) from [%2] indexed by [%3])")
                                  .arg(key, table.name, name));
        if (problem.isEmpty() && counts.value(0) != counts.value(1))
            problem = QStringLiteral("its index %1 is damaged").arg(name);
    }
    return problem;
}

QString HeldDatabase::findNames(QStringList& names) const
{
    QString problem = m_entries.isEmpty() ? readEntries() : QString();
    for (const Entry& entry : qAsConst(m_entries))
        names.append(entry.name);
    names.sort();
    return problem;
}

QString HeldDatabase::findCodes(const QString& table, const QSet<QString>& codes,
                                QSet<QString>& found) const
{
    QSqlQuery row = query();
    const QString problem = run(row, QStringLiteral("select [CODE] from [%1]").arg(table));
    for (; row.isValid(); row.next()) {
        const QString code = row.value(0).toString();
        if (codes.contains(code))
            found.insert(code);
    }
    return problem.isEmpty() ? textOf(row.lastError()) : problem;
}

bool HeldDatabase::release()
{
    if (!m_holds)
        return false;
    m_holds = false;
    QSqlQuery end = query();
    const bool ended = run(end, QStringLiteral("commit")).isEmpty();
    const bool isSameFile = velm::detail::platform::fileIdentity(m_path) == m_identity;
    return !ended || !isSameFile || (m_isWal && version() != m_version);
}

QString HeldDatabase::run(QSqlQuery& query, const QString& sql, const QVariantList& values)
{
    bool runs = query.prepare(sql);
    for (const QVariant& value : values)
        query.addBindValue(value);
    runs = runs && query.exec();
    if (runs)
        query.next();
    return textOf(query.lastError());
}

QString HeldDatabase::textOf(const QSqlError& error)
{
    if (!error.isValid())
        return QString();
    return error.databaseText().isEmpty() ? error.text() : error.databaseText();
}

QSqlQuery HeldDatabase::query() const
{
    QSqlQuery query(QSqlDatabase::database(m_connection, false));
    query.setForwardOnly(true);
    return query;
}

bool HeldDatabase::isWal() const
{
    QSqlQuery mode = query();
    // Where it cannot be asked, release() asks for the version, and cannot either.
    return !run(mode, QStringLiteral("pragma journal_mode")).isEmpty()
           || mode.value(0).toString() == QLatin1String("wal");
}

/// 0, which no content has, if it cannot be asked.
int HeldDatabase::version() const
{
    QSqlQuery asked = query();
    return run(asked, QStringLiteral("pragma data_version")).isEmpty() ? asked.value(0).toInt() : 0;
}
