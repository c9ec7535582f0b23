#include "common/host/MessageBox.h"
#include "common/host/MessageHandler.h"
#include "common/host/Module.h"
#include "common/host/Singleton.h"

#include <windows.h>

namespace {

using namespace velm::detail;

void enter()
{
    if (!module::hostStarts())
        module::start();
    module::saveWithApplication();
}

/// FreeLibrary: the process goes on, so nothing may lead into the library any more. Under the
/// loader's lock no code of the host is called: a box, or a log that another thread is in, would
/// keep threads waiting that this one waits for.
void leave()
{
    silenceMessageBoxes();
    silenceMessages();
    module::forgetApplication();
    module::stop();
    const QtMessageHandler current = qInstallMessageHandler(nullptr);
    if (current != handleMessage)
        qInstallMessageHandler(current);
}

/// The system has ended all other threads by now, with whatever locks they held, and let go of the
/// libraries that were loaded after this one, the database driver among them. So nothing is saved,
/// and what is there is left to the system.
void endWithProcess()
{
    silenceMessageBoxes();
    silenceMessages();
    leaveSingletonsToSystem = true;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        enter();
        break;
    case DLL_PROCESS_DETACH:
        reserved ? endWithProcess() : leave();
        break;
    default:
        break;
    }
    return TRUE;
}
