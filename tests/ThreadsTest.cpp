#include "CVelmCalculate.h"
#include "CVelmConfigManager.h"
#include "CVelmEvent.h"
#include "CVelmFilePath.h"
#include "CVelmFindFile.h"
#include "CVelmObjectManager.h"
#include "CVelmReadGlobaldefinesTable.h"
#include "CVelmSaveUserData.h"
#include "CVelmSystemGlobal.h"

#include "support/Text.h"

#include <gtest/gtest.h>

#include <QDebug>
#include <QMap>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

namespace {

/// What 64 threads get that ask at the same moment.
template<class Get>
std::set<void*> gather(Get get)
{
    constexpr size_t kThreads = 64;
    std::vector<void*> seen(kThreads);
    std::atomic<size_t> ready{0};
    std::vector<std::thread> threads;
    for (size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            for (++ready; ready < kThreads;)
                std::this_thread::yield();
            seen[i] = get();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
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
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([i] {
            for (int k = 0; k < kLines; ++k)
                QMessageLogger("a.cpp", i, "f").debug("%s", "测绘");
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    CVelmSystemGlobal::Instance()->installMessageHandler(nullptr);
    EXPECT_TRUE(alone);
    EXPECT_EQ(lineCounts.size(), kThreads);
    for (int i = 0; i < kThreads; ++i)
        EXPECT_EQ(lineCounts[u"Debug: File:a.cpp Function:f Line:%1 Content:测绘"_s.arg(i)],
                  kLines);
}
