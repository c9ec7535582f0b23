#include "common/MessageBox.h"
#include "common/MessageHandler.h"
#include "common/Module.h"
#include "common/Singleton.h"
#include "CVelmSystemGlobal.h"

#include <QCoreApplication>

#include <windows.h>

namespace {

using namespace velm::detail;

/// While all threads still run, unlike later in DllMain.
void saveWithApplication()
{
    saveParametersAtEnd();
}

void enter(HINSTANCE library)
{
    module::setHandle(library);
    if (!module::hostStarts())
        module::start();
    qAddPostRoutine(saveWithApplication);
}

/// FreeLibrary: the process goes on, so nothing may lead into the library any more. A box would
/// keep every other thread from starting or ending.
void leave()
{
    silenceMessageBoxes();
    qRemovePostRoutine(saveWithApplication);
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

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID reserved)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        enter(library);
        break;
    case DLL_PROCESS_DETACH:
        reserved ? endWithProcess() : leave();
        break;
    default:
        break;
    }
    return TRUE;
}
