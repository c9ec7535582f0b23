#include "common/platform/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace velm::detail::platform {

namespace {

volatile std::sig_atomic_t notedSignal = 0;

}  // namespace

void noteInterrupts()
{
    struct sigaction note
    {};
    note.sa_handler = [](int signal) { notedSignal = signal; };
    // Without SA_RESTART: a call that waits, for a reader of a pipe say, is to end.
    note.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction usual
        {};
        if (sigaction(signal, nullptr, &usual) == 0 && usual.sa_handler != SIG_IGN)
            sigaction(signal, &note, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

int interruptExitCode()
{
    constexpr int kKilled = 128;
    return notedSignal == 0 ? 0 : kKilled + notedSignal;
}

}  // namespace velm::detail::platform
