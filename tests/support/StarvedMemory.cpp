#include "support/StarvedMemory.h"

#include <atomic>

namespace {

// Not thread_local, which asks for memory itself on Windows.
std::atomic<std::uintptr_t> g_thread{0};
std::size_t g_size = 0;
int g_rest = 0;  // requests up to the one that fails, that one included

}  // namespace

bool isStarved(std::size_t size)
{
    return g_thread != 0 && g_thread == thisThread() && size > g_size && g_rest > 0
           && --g_rest == 0;
}

StarvedMemory::StarvedMemory(std::size_t size, int which)
{
    g_size = size;
    g_rest = which;
    g_thread = thisThread();
}

StarvedMemory::~StarvedMemory()
{
    g_thread = 0;
}

bool StarvedMemory::hasFailed() const
{
    return g_rest == 0;
}
