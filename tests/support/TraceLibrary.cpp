// A library that leaves a trace when it is loaded: it makes the file that VELM_TEST_TRACE names.

#include <cstdio>
#include <cstdlib>

namespace {

struct Trace
{
    Trace()
    {
        const char* file = std::getenv("VELM_TEST_TRACE");
        std::FILE* trace = file ? std::fopen(file, "w") : nullptr;
        if (trace)
            std::fclose(trace);
    }
};

const Trace trace;

}  // namespace
