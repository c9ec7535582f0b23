#include "check/Snapshot.h"

#include "check/Quoted.h"
#include "check/SqlCause.h"
#include "set/Readable.h"

#include "CVelmString.h"

#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QTextCodec>

namespace {

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

    bool isSound(const QByteArray& bytes) const { return !m_isUtf8 || CVelmString::IsUTF8(bytes); }

    QString read(const QByteArray& bytes) const
    {
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        return m_codec->toUnicode(bytes.constData(), bytes.size(), &state);
    }

private:
    QTextCodec* m_codec;
    bool m_isUtf8;
};

/// Empty if the bytes are no GBK.
QString asGbk(const QByteArray& bytes)
{
    static QTextCodec* const codec = QTextCodec::codecForName("GB18030");
    return CVelmString::IsGBK(bytes) ? codec->toUnicode(bytes) : QString();
}

constexpr int kGreatestCellMiB = 64;  // in memory it takes four times as much

/// A column as it is read: a text as its bytes, and in the place of what is too large a text.
QString readable(const QString& column)
{
    constexpr int kBytes = kGreatestCellMiB * 1024 * 1024;
    return QStringLiteral(
               "case typeof(%1) when 'text' then "
               "case when length(cast(%1 as blob)) > %2 then 'large' else cast(%1 as blob) end "
               "when 'blob' then case when length(%1) > %2 then 'large' else %1 end else %1 end")
        .arg(quoted(column), QString::number(kBytes));
}

QString selectOf(const HeldDatabase::Entry& stored, const QString& rowNumber)
{
    QStringList columns{rowNumber};
    for (const QString& column : stored.columns)
        columns.append(readable(column));
    return QStringLiteral("select ") + columns.join(QStringLiteral(", ")) + QStringLiteral(" from ")
           + quoted(stored.name);
}

/// Why a row cannot be read; empty if it can.
QString tooLarge(const QSqlQuery& rows, const QStringList& columns)
{
    for (int i = 0; i < columns.size(); ++i) {
        const QVariant value = rows.value(i + 1);
        if (value.userType() == QMetaType::QString && !value.isNull())
            return QStringLiteral("row %1, column %2 holds more than %3 MiB")
                .arg(rows.value(0).toString(), columns.at(i), QString::number(kGreatestCellMiB));
    }
    return QString();
}

CheckedRow rowOf(const QSqlQuery& rows, int columns, const TextReader& reader, qint64& budget)
{
    CheckedRow row{rows.value(0).toLongLong(), {}, {}};
    for (int i = 0; i < columns; ++i) {
        QVariant value = rows.value(i + 1);
        if (value.userType() == QMetaType::QByteArray) {
            const QByteArray bytes = value.toByteArray();
            value = reader.read(bytes);
            if (!reader.isSound(bytes))
                row.damaged.insert(i, asGbk(bytes));
        }
        budget -= sizeOf(value);
        row.cells.append(value);
    }
    return row;
}

/// What tells apart what two lists hold, whatever their order.
class ValuesInAnyOrder
{
public:
    void add(const QString& value)
    {
        ++m_count;
        m_sum += qHash(value);
    }

    bool operator!=(const ValuesInAnyOrder& other) const
    {
        return m_count != other.m_count || m_sum != other.m_sum;
    }

private:
    qint64 m_count = 0;
    quint64 m_sum = 0;
};

}  // namespace

Snapshot::Snapshot(const QString& fileName, const QString& path)
    : m_fileName(fileName), m_database(path), m_exists(QFileInfo::exists(path))
{
    if (!m_exists)
        return;
    QString problem = whyNoFile(path);
    if (problem.isEmpty())
        problem = m_database.hold();
    if (problem.isEmpty())
        readSchema();
    else
        m_problem = fileName + QStringLiteral(": ") + sqlCause(problem);
}

void Snapshot::fail(const QString& what, const QString& problem)
{
    if (m_problem.isEmpty() && !problem.isEmpty())
        m_problem = QStringLiteral("%1, %2: %3").arg(m_fileName, what, sqlCause(problem));
}

void Snapshot::readSchema()
{
    const QString what = QStringLiteral("its list of tables");
    QSqlQuery encoding = m_database.query();
    fail(what, HeldDatabase::run(encoding, QStringLiteral("pragma encoding")));
    m_encoding = encoding.value(0).toString();
    QSqlQuery entry = m_database.query();
    fail(what, HeldDatabase::run(entry,
                                 QStringLiteral("select type, name, tbl_name from sqlite_master")));
    for (; m_problem.isEmpty() && entry.isValid(); entry.next()) {
        const QString type = entry.value(0).toString();
        if (type == QLatin1String("trigger"))
            m_triggers.append({entry.value(1).toString(), entry.value(2).toString()});
        else if (type == QLatin1String("table") || type == QLatin1String("view"))
            m_tables.append(entry.value(1).toString());
    }
    fail(what, entry.lastError().databaseText());
}

void Snapshot::read(CheckedTable& table, qint64& budget)
{
    if (!m_exists || !m_problem.isEmpty())
        return;
    HeldDatabase::Entry stored;
    fail(QStringLiteral("table ") + table.name(), m_database.find(table.name(), stored));
    if (!m_problem.isEmpty() || stored.name.isEmpty())
        return;
    if (!stored.kind.isEmpty())
        return table.setReplacedBy(stored.kind);
    readTypes(table, stored.name);
    readRows(table, stored, budget);
}

void Snapshot::readTypes(CheckedTable& table, const QString& name)
{
    QSqlQuery column = m_database.query();
    fail(QStringLiteral("table ") + name,
         HeldDatabase::run(column, QStringLiteral("select name, type from pragma_table_info(?)"),
                           {name}));
    for (; column.isValid(); column.next())
        table.setType(column.value(0).toString(), column.value(1).toString());
}

void Snapshot::readRows(CheckedTable& table, const HeldDatabase::Entry& stored, qint64& budget)
{
    const QString what = QStringLiteral("table ") + stored.name;
    table.setColumns(stored.columns);
    QSqlQuery rows = m_database.query();
    // A column of that name hides the number of the row, and some tables have none.
    const bool isHidden = stored.columns.contains(QLatin1String("rowid"), Qt::CaseInsensitive);
    if ((isHidden || !rows.exec(selectOf(stored, QStringLiteral("rowid"))))
        && !rows.exec(selectOf(stored, QStringLiteral("0"))))
        return fail(what, rows.lastError().databaseText());
    const TextReader reader(m_encoding);
    while (m_problem.isEmpty() && budget >= 0 && rows.next()) {
        fail(what, tooLarge(rows, stored.columns));
        if (m_problem.isEmpty())
            table.append(rowOf(rows, stored.columns.size(), reader, budget));
    }
    fail(what, rows.lastError().databaseText());
    if (budget < 0)
        fail(what, QStringLiteral("the tables hold more than 512 MiB"));
}

bool Snapshot::isSearched(const QString& table, const QString& column)
{
    QSqlQuery step = m_database.query();
    fail(
        QStringLiteral("table ") + table,
        HeldDatabase::run(step, QStringLiteral("explain query plan select * from %1 where %2 = 'x'")
                                    .arg(quoted(table), quoted(column))));
    for (; step.isValid(); step.next()) {
        if (step.value(QStringLiteral("detail")).toString().startsWith(QLatin1String("SEARCH")))
            return true;
    }
    return false;
}

void Snapshot::readIndexes(const CheckedTable& table)
{
    for (const QString& column : table.schema().key) {
        QSqlQuery index = m_database.query();
        if (!table.has(column) || !m_problem.isEmpty())
            continue;
        // A partial one holds some rows only.
        fail(QStringLiteral("table ") + table.name(),
             HeldDatabase::run(index,
                               QStringLiteral("select l.name from pragma_index_list(?) l, "
                                              "pragma_index_info(l.name) i where not l.partial and "
                                              "i.name = ? collate nocase"),
                               {table.name(), column}));
        for (; m_problem.isEmpty() && index.isValid(); index.next())
            readIndex(table, column, index.value(0).toString());
    }
}

void Snapshot::readIndex(const CheckedTable& table, const QString& column, const QString& index)
{
    const QString what = QStringLiteral("table %1, index %2").arg(table.name(), index);
    QSqlQuery entries = m_database.query();
    if (!entries.exec(QStringLiteral("select 0, %1 from %2 indexed by %3")
                          .arg(readable(column), quoted(table.name()), quoted(index))))
        return fail(what, entries.lastError().databaseText());
    const TextReader reader(m_encoding);
    qint64 unlimited = 0;  // what is not kept needs no budget
    ValuesInAnyOrder inIndex, inTable;
    while (entries.next())
        inIndex.add(rowOf(entries, 1, reader, unlimited).cells.first().toString());
    fail(what, entries.lastError().databaseText());
    for (int row = 0; row < table.size(); ++row)
        inTable.add(table.text(row, column));
    if (inIndex != inTable)
        fail(what, QStringLiteral("it is damaged, and does not hold what the table holds"));
}
