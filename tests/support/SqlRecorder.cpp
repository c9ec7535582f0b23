#include "support/SqlRecorder.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>
#include <QSqlResult>

#include <algorithm>
#include <utility>

namespace {

class RecordingResult : public QSqlResult
{
public:
    RecordingResult(const QSqlDriver* driver, SqlRecorder& recorder)
        : QSqlResult(driver), m_recorder(recorder)
    {}

protected:
    bool savePrepare(const QString& statement) override { return reset(statement); }
    bool exec() override { return true; }
    bool reset(const QString& statement) override
    {
        const bool accepted = m_recorder.ask(statement);
        setSelect(true);
        setActive(accepted);
        setLastError(accepted ? QSqlError() : QSqlError(QStringLiteral("refused")));
        return accepted;
    }
    QVariant data(int) override { return 1; }
    bool isNull(int) override { return false; }
    bool fetch(int row) override
    {
        setAt(row == 0 ? 0 : static_cast<int>(QSql::AfterLastRow));
        return row == 0;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(0); }
    int size() override { return -1; }
    int numRowsAffected() override { return 1; }
    QSqlRecord record() const override
    {
        QSqlRecord columns;
        columns.append(QSqlField(QStringLiteral("N"), QVariant::Int));
        return columns;
    }

private:
    SqlRecorder& m_recorder;
};

class RecordingDriver : public QSqlDriver
{
public:
    RecordingDriver(SqlRecorder& recorder, const QString& name) : m_recorder(recorder), m_name(name)
    {}

    bool hasFeature(DriverFeature feature) const override { return feature == Transactions; }
    QSqlResult* createResult() const override { return new RecordingResult(this, m_recorder); }
    bool beginTransaction() override { return m_recorder.ask(QStringLiteral("begin")); }
    bool commitTransaction() override { return m_recorder.ask(QStringLiteral("commit")); }
    bool rollbackTransaction() override { return m_recorder.ask(QStringLiteral("rollback")); }
    bool open(const QString& database, const QString&, const QString&, const QString&, int,
              const QString&) override
    {
        setOpen(m_recorder.ask(m_name + QStringLiteral(" open ") + database));
        return isOpen();
    }
    void close() override
    {
        if (isOpen())  // Qt closes again when the last handle goes
            m_recorder.ask(QStringLiteral("close"));
        setOpen(false);
    }

private:
    SqlRecorder& m_recorder;
    QString m_name;
};

struct Creator : QSqlDriverCreatorBase
{
    Creator(SqlRecorder& r, const QString& n) : recorder(r), name(n) {}
    QSqlDriver* createObject() const override { return new RecordingDriver(recorder, name); }

    SqlRecorder& recorder;
    QString name;
};

const QStringList& drivers()
{
    static const QStringList names{QStringLiteral("QSQLITE"), QStringLiteral("QODBC")};
    return names;
}

}  // namespace

SqlRecorder::SqlRecorder()
{
    for (const QString& name : drivers())
        QSqlDatabase::registerSqlDriver(name, new Creator(*this, name));
}

SqlRecorder::~SqlRecorder()
{
    for (const QString& name : drivers())
        QSqlDatabase::registerSqlDriver(name, nullptr);
}

QString SqlRecorder::take()
{
    return std::exchange(m_requests, {}).join(QLatin1Char('\n'));
}

bool SqlRecorder::ask(const QString& request)
{
    m_requests.append(request);
    return std::none_of(refused.cbegin(), refused.cend(),
                        [&](const QString& start) { return request.startsWith(start); });
}
