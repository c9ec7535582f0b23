#include "common/platform/Terminal.h"

#include <unistd.h>

namespace velm::detail::platform {

bool outputTakesEscapes()
{
    return isatty(STDOUT_FILENO) != 0;
}

}  // namespace velm::detail::platform
