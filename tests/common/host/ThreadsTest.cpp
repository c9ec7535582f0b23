#include "CVelmCalculate.h"
#include "CVelmConfigManager.h"
#include "CVelmDatabase.h"
#include "CVelmEvent.h"
#include "CVelmFilePath.h"
#include "CVelmFindFile.h"
#include "CVelmObjectManager.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmSaveUserData.h"
#include "CVelmSystemGlobal.h"

#include "support/TemporaryRoot.h"

#include <QDebug>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

namespace {

/// Runs @p work in so many threads, each with its number.
template<class Work>
void inThreads(int count, const Work& work)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
}

/// What 64 threads get that ask at the same moment.
template<class Get>
std::set<void*> gather(Get get)
{
    constexpr int kThreads = 64;
    std::vector<void*> seen(kThreads);
    std::atomic<int> ready{0};
    inThreads(kThreads, [&](int i) {
        for (++ready; ready < kThreads;)
            std::this_thread::yield();
        seen[static_cast<size_t>(i)] = get();
    });
    return {seen.begin(), seen.end()};
}

}  // namespace

TEST(Threads, MeetAtOneInstance)
{
    EXPECT_EQ(gather([] { return CVelmCalculate::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmFilePath::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmFindFile::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmSystemGlobal::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmConfigManager::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmEvent::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmObjectManager::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmReadGlobaldefinesTable::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmSaveUserData::Instance(); }).size(), 1U);
}

namespace {

constexpr char16_t kCreate[] = u"create table T (a integer primary key, b text)";

/// Replaces, inserts and updates the rows of a file of its own again and again.
int failuresOnOwnFile(const QString& file)
{
    CVelmDatabase database;
    int failures = database.initDatabase(file, QString()) == Velm::VelmOk ? 0 : 1;
    failures += database.executeSql(QString::fromUtf16(kCreate)) == Velm::VelmOk ? 0 : 1;
    QVector<QMap<QString, QVariant>> rows;
    for (int i = 0; i < 100; ++i)
        rows.append({{u"a"_s, i}, {u"b"_s, u"测绘"_s}});
    for (int round = 0; round < 10; ++round) {
        failures += database.writeTable(u"T"_s, rows) == Velm::VelmOk ? 0 : 1;
        for (int i = 0; i < 100; ++i)
            failures += database.updataRecord(u"T"_s, {{u"b"_s, i}}, {{u"a"_s, 50 + i}}) ? 1 : 0;
    }
    return failures + (database.recordCount(u"T"_s, {}) == 150 ? 0 : 1);
}

/// Meets the lock of another connection, and tables that are missing, without end.
void failUntil(const std::atomic<bool>& ended, const QString& file)
{
    CVelmDatabase owner;
    CVelmDatabase database;
    owner.initDatabase(file, QString());
    owner.executeSql(QString::fromUtf16(kCreate));
    owner.executeSql(u"begin exclusive"_s);
    database.initDatabase(file, QString());
    database.executeSql(u"pragma busy_timeout = 0"_s);
    while (!ended) {
        database.writeTable(u"T"_s, {{{u"a"_s, 1}}});
        database.updataRecord(u"none"_s, {{u"b"_s, 1}}, {{u"a"_s, 1}});
    }
}

using ThreadsOnFiles = TemporaryRoot;

}  // namespace

TEST_F(ThreadsOnFiles, AreNotDisturbedByFailuresOnAnotherFile)
{
    runSql({created(u"globaldefines"_s)});
    std::atomic<bool> ended{false};
    std::thread failing([&] { failUntil(ended, path(u"locked.db"_s)); });
    std::atomic<int> failures{0};
    inThreads(3, [&](int i) {
        for (int k = 0; i == 2 && k < 200; ++k)
            failures += CVelmReadGlobaldefinesTable::Instance()->set_value(u"k%1"_s.arg(k % 50),
                                                                           QString::number(k))
                            ? 1
                            : 0;
        failures += i < 2 ? failuresOnOwnFile(path(u"own%1.db"_s.arg(i))) : 0;
    });
    ended = true;
    failing.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(querySql(u"select count(*) || ' ' || sum(value) from globaldefines"_s),
              QStringList{u"50 8725"_s});  // 150 + ... + 199
}

namespace {

QMap<QString, int> lineCounts;  // on purpose without a lock: the handler has one
std::atomic<int> inCallback{0};
std::atomic<bool> alone{true};

void count(const QString& line)
{
    if (++inCallback != 1)
        alone = false;
    std::this_thread::yield();
    ++lineCounts[line];
    --inCallback;
}

}  // namespace

TEST(Threads, LogOneLineAtATime)
{
    constexpr int kThreads = 8;
    constexpr int kLines = 500;
    CVelmSystemGlobal::Instance()->installMessageHandler(count);
    inThreads(kThreads, [](int i) {
        for (int k = 0; k < kLines; ++k)
            QMessageLogger("a.cpp", i, "f").debug("%s", "测绘");
    });
    CVelmSystemGlobal::Instance()->installMessageHandler(nullptr);
    EXPECT_TRUE(alone);
    EXPECT_EQ(lineCounts.size(), kThreads);
    for (int i = 0; i < kThreads; ++i)
        EXPECT_EQ(lineCounts[u"Debug: File:a.cpp Function:f Line:%1 Content:测绘"_s.arg(i)],
                  kLines);
}
