#pragma once

#include <functional>

/// Runs a command, or a part of one, and tells what it throws: that memory ran out, mostly.
/// @return its exit code; ExitCannotOpen if it threw
int guarded(const std::function<int()>& run);
