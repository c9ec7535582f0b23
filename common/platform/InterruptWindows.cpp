#include "common/platform/Interrupt.h"

#include <atomic>

#include <windows.h>

namespace velm::detail::platform {

namespace {

std::atomic<bool> isInterrupted{false};

/// Runs in a thread of its own.
BOOL WINAPI note(DWORD event)
{
    constexpr DWORD kPatienceMs = 10000;  // the system waits no longer
    const bool isSecond = isInterrupted.exchange(true);
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)
        return isSecond ? FALSE : TRUE;
    Sleep(kPatienceMs);  // when this ends, the program does
    return TRUE;
}

}  // namespace

void noteInterrupts()
{
    SetConsoleCtrlHandler(&note, TRUE);
}

int interruptExitCode()
{
    constexpr int kCtrlC = 130;
    return isInterrupted ? kCtrlC : 0;
}

}  // namespace velm::detail::platform
