#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program, which counts as a finding, unless something holds.
inline void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
