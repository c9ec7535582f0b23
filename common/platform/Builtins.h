#pragma once

#ifdef _MSC_VER
#include <intrin.h>
#endif

/// What every compiler offers under a name of its own. The intrinsics of SSE2 are spelt alike.
namespace velm::detail {

/// The number of the lowest bit that is set. There is one.
inline int lowestBit(unsigned bits)
{
#ifdef _MSC_VER
    unsigned long number = 0;
    _BitScanForward(&number, bits);
    return static_cast<int>(number);
#else
    return __builtin_ctz(bits);
#endif
}

/// Values of memory are read and written on the side of this call where the source has them.
inline void keepOrderOfMemory()
{
#ifdef _MSC_VER
    _ReadWriteBarrier();
#else
    asm volatile("" ::: "memory");
#endif
}

}  // namespace velm::detail
