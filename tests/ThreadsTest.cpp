#include "CVelmConfigManager.h"
#include "CVelmFilePath.h"
#include "CVelmFindFile.h"
#include "CVelmSystemGlobal.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(gather([] { return CVelmFilePath::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmFindFile::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmSystemGlobal::Instance(); }).size(), 1U);
    EXPECT_EQ(gather([] { return CVelmConfigManager::Instance(); }).size(), 1U);
}
