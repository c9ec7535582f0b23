#include "support/SqlRecorder.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlRecord>
#include <QSqlResult>

#include <utility>

namespace {

/// Every statement has one row, and that holds the number 1.
class RecordingResult : public QSqlResult
{
public:
    RecordingResult(const QSqlDriver* driver, SqlRecorder& recorder) : QSqlResult(driver), m_recorder(recorder) {}

protected:
    bool savePrepare(const QString& statement) override { return run(statement); }
    bool exec() override { return true; }
    bool reset(const QString& statement) override { return run(statement); }
    QVariant data(int) override { return 1; }
    bool isNull(int) override { return false; }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(0); }
    int size() override { return -1; }
    int numRowsAffected() override { return 1; }

    bool fetch(int row) override
    {
        setAt(row == 0 ? 0 : static_cast<int>(QSql::AfterLastRow));
        return row == 0;
    }

    QSqlRecord record() const override
    {
        QSqlRecord fields;
        fields.append(m_recorder.column);
        return fields;
    }

private:
    bool run(const QString& statement)
    {
        const bool succeeded = m_recorder.run(statement);
        setSelect(true);
        setActive(succeeded);
        if (!succeeded)
            setLastError(QSqlError(QString(), QStringLiteral("refused"), QSqlError::StatementError));
        return succeeded;
    }

    SqlRecorder& m_recorder;
};

class RecordingDriver : public QSqlDriver
{
public:
    explicit RecordingDriver(SqlRecorder& recorder) : m_recorder(recorder) {}

    bool hasFeature(DriverFeature feature) const override { return feature == Transactions; }
    QSqlResult* createResult() const override { return new RecordingResult(this, m_recorder); }
    bool beginTransaction() override { return m_recorder.happen(QStringLiteral("begin")); }
    bool commitTransaction() override { return m_recorder.happen(QStringLiteral("commit")); }
    bool rollbackTransaction() override { return m_recorder.happen(QStringLiteral("rollback")); }

    bool open(const QString& name, const QString&, const QString&, const QString&, int, const QString&) override
    {
        const bool succeeded = m_recorder.happen(QStringLiteral("open ") + name);
        setOpen(succeeded);
        return succeeded;
    }

    void close() override
    {
        if (isOpen())  // Qt closes again when the last handle goes
            m_recorder.happen(QStringLiteral("close"));
        setOpen(false);
    }

private:
    SqlRecorder& m_recorder;
};

class Creator : public QSqlDriverCreatorBase
{
public:
    explicit Creator(SqlRecorder& recorder) : m_recorder(recorder) {}
    QSqlDriver* createObject() const override { return new RecordingDriver(m_recorder); }

private:
    SqlRecorder& m_recorder;
};

}  // namespace

SqlRecorder::SqlRecorder(const char* driverName) : m_driverName(QString::fromLatin1(driverName))
{
    QSqlDatabase::registerSqlDriver(m_driverName, new Creator(*this));
}

SqlRecorder::~SqlRecorder()
{
    QSqlDatabase::registerSqlDriver(m_driverName, nullptr);
}

QString SqlRecorder::takeStatements()
{
    return std::exchange(m_statements, {}).join(QLatin1Char('\n'));
}

QStringList SqlRecorder::takeEvents()
{
    return std::exchange(m_events, {});
}

bool SqlRecorder::run(const QString& statement)
{
    m_statements.append(statement);
    return refusedStatement.isEmpty() || !statement.startsWith(refusedStatement);
}

bool SqlRecorder::happen(const QString& event)
{
    m_events.append(event);
    return !refusedEvents.contains(event.section(QLatin1Char(' '), 0, 0));
}
