#include "cli/Guard.h"

#include "cli/Console.h"

#include <cstdio>
#include <exception>
#include <new>

namespace {

int failed(const char* cause)
{
    try {
        console::tell(QString::fromUtf8(cause));
    } catch (...) {  // not even for that is there memory
        std::fputs("velm: ", stderr);
        std::fputs(cause, stderr);
        std::fputs("\n", stderr);
    }
    return ExitCannotOpen;
}

}  // namespace

int guarded(const std::function<int()>& run)
{
    try {
        return run();
    } catch (const std::bad_alloc&) {
        return failed("memory ran out; the answer is not whole");
    } catch (const std::exception& exception) {
        return failed(exception.what());
    } catch (...) {
        return failed("something unexpected went wrong; the answer is not whole");
    }
}
