#pragma once

/// What each system does in its own way when the user or the system asks a program to end.
namespace velm::detail::platform {

/// From then on the first such request (Ctrl+C; SIGTERM and SIGHUP; on Windows also Ctrl+Break, the
/// end of the console and of the session) does not end the program but is noted, for it to break
/// off and clean up; the next one ends it. Requests that the program was started to ignore stay
/// ignored. A file that would pass a limit of the process (SIGXFSZ) is an error of the call that
/// writes it.
void noteInterrupts();

/// The exit code that tells who started the program of the request: 128 and the number of the
/// signal, 130 for Ctrl+C; 0 if there was none.
int interruptExitCode();

}  // namespace velm::detail::platform
