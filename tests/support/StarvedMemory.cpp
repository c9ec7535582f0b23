#include "support/StarvedMemory.h"

#include <cstdint>

namespace {

thread_local std::size_t t_size = SIZE_MAX;
thread_local int t_rest = 0;  // requests up to the one that fails, that one included

}  // namespace

bool isStarved(std::size_t size)
{
    return size > t_size && t_rest > 0 && --t_rest == 0;
}

StarvedMemory::StarvedMemory(std::size_t size, int which)
{
    t_rest = which;
    t_size = size;
}

StarvedMemory::~StarvedMemory()
{
    t_size = SIZE_MAX;
}

bool StarvedMemory::hasFailed() const
{
    return t_rest == 0;
}
