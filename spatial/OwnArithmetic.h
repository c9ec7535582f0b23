#pragma once

#include "common/platform/Builtins.h"

#include <emmintrin.h>

namespace velm::detail {

/// While it lives, floating-point arithmetic rounds to the nearest number, keeps the smallest ones
/// and raises no exceptions, whatever the host has set for the thread: rectangles may hold infinity
/// and what is not a number, and empty slots do. Nested ones do no harm.
class OwnArithmetic
{
public:
    OwnArithmetic() : m_hosts(_mm_getcsr())
    {
        if (isForeign())
            set(kOwn);
    }
    ~OwnArithmetic()
    {
        if (isForeign())
            set(m_hosts);
    }
    OwnArithmetic(const OwnArithmetic&) = delete;
    OwnArithmetic& operator=(const OwnArithmetic&) = delete;

    /// Calls a function of the host as the host has set its thread.
    template<class Call>
    auto atHost(const Call& call) const
    {
        const Leave leave(*this);
        return call();
    }

private:
    static constexpr unsigned kOwn = 0x1F80;  // all exceptions masked
    static constexpr unsigned kRaised = 0x3F;

    class Leave
    {
    public:
        explicit Leave(const OwnArithmetic& own) : m_own(own)
        {
            if (m_own.isForeign())
                set(m_own.m_hosts);
        }
        ~Leave()
        {
            if (m_own.isForeign())
                set(kOwn);
        }
        Leave(const Leave&) = delete;
        Leave& operator=(const Leave&) = delete;

    private:
        const OwnArithmetic& m_own;
    };

    bool isForeign() const { return (m_hosts & ~kRaised) != kOwn; }

    /// Numbers are read after it, and results written before it.
    static void set(unsigned control)
    {
        keepOrderOfMemory();
        _mm_setcsr(control);
        keepOrderOfMemory();
    }

    const unsigned m_hosts;
};

}  // namespace velm::detail
