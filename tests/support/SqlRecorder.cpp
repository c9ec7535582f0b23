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

SqlRecorder* recorder = nullptr;

class RecordingResult : public QSqlResult
{
public:
    explicit RecordingResult(const QSqlDriver* driver) : QSqlResult(driver) {}

protected:
    bool savePrepare(const QString& statement) override { return reset(statement); }
    bool exec() override { return true; }
    bool reset(const QString& statement) override
    {
        const bool accepted = recorder->ask(statement);
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
};

class RecordingDriver : public QSqlDriver
{
public:
    bool hasFeature(DriverFeature) const override { return false; }
    QSqlResult* createResult() const override { return new RecordingResult(this); }
    bool open(const QString& name, const QString&, const QString&, const QString&, int,
              const QString&) override
    {
        setOpen(recorder->ask(QStringLiteral("open ") + name));
        return isOpen();
    }
    void close() override
    {
        if (isOpen())  // Qt closes again when the last handle goes
            recorder->ask(QStringLiteral("close"));
        setOpen(false);
    }
};

constexpr const char* kDrivers[] = {"QSQLITE", "QODBC"};

}  // namespace

SqlRecorder::SqlRecorder()
{
    recorder = this;
    for (const char* name : kDrivers)
        QSqlDatabase::registerSqlDriver(QLatin1String(name),
                                        new QSqlDriverCreator<RecordingDriver>);
}

SqlRecorder::~SqlRecorder()
{
    for (const char* name : kDrivers)
        QSqlDatabase::registerSqlDriver(QLatin1String(name), nullptr);
    recorder = nullptr;
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
