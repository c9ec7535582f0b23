#pragma once

/// What each system does in its own way with a terminal.
namespace velm::detail::platform {

/// Whether standard output is a terminal that takes escape sequences. On Windows a console is told
/// to take them, and one that refuses shows no colours.
bool outputTakesEscapes();

}  // namespace velm::detail::platform
