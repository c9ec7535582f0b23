#pragma once

class Arguments;

/// Makes the root that --root or VELM_ROOT names the library's. What goes wrong is told.
/// @return ExitFine; ExitUsage if neither names one; ExitCannotOpen
int selectRoot(const Arguments& arguments);
