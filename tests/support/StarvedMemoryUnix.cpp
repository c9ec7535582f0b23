// The functions of the system's library, whose place those of a program take everywhere in it.

#include "support/StarvedMemory.h"

#include <pthread.h>

std::uintptr_t thisThread()
{
    return static_cast<std::uintptr_t>(pthread_self());
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

bool StarvedMemory::isPossible()
{
    return false;
}

#else

#include <cstdlib>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are given
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

extern "C" {

void* malloc(std::size_t size)
{
    return isStarved(size) ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    return isStarved(count * size) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size)
{
    return isStarved(size) ? nullptr : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return isStarved(size) ? nullptr : __libc_memalign(alignment, size);
}

}  // extern "C"

bool StarvedMemory::isPossible()
{
    return true;
}

#endif
