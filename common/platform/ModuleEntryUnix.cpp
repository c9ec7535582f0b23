#include "common/host/Module.h"

#include <QCoreApplication>

namespace {

/// Runs with every application object, when a Qt process is ready for it. The library is linked so
/// that it stays loaded, because Qt keeps the address of this function.
void startWithApplication()
{
    using namespace velm::detail;
    if (!module::hostStarts())
        module::start();
    qAddPostRoutine(&module::stop);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(startWithApplication)
