#include "common/platform/Terminal.h"

#include <windows.h>

namespace velm::detail::platform {

bool outputTakesEscapes()
{
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(output, &mode) == 0)  // a file, a pipe or nothing
        return false;
    return SetConsoleMode(output,
                          mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING)
           != 0;
}

}  // namespace velm::detail::platform
