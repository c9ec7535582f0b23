#include "common/MessageHandler.h"
#include "common/Module.h"
#include "common/Singleton.h"
#include "CVelmSystemGlobal.h"

#include <QCoreApplication>

#include <atomic>

#include <windows.h>

namespace {

using namespace velm::detail;

std::atomic<int> startedThreads{0};  // since the library is in the process, less those that ended
bool loadedWithProcess = false;

/// While all threads still run, unlike later in DllMain.
void saveWithApplication()
{
    saveParametersAtEnd();
}

void enter(HINSTANCE library, bool withProcess)
{
    loadedWithProcess = withProcess;
    module::setHandle(library);
    if (!module::hostStarts())
        module::start();
    qAddPostRoutine(saveWithApplication);
}

/// FreeLibrary: the process goes on, so nothing may lead into the library any more.
void leave()
{
    qRemovePostRoutine(saveWithApplication);
    module::stop();
    const QtMessageHandler current = qInstallMessageHandler(nullptr);
    if (current != handleMessage)
        qInstallMessageHandler(current);
}

/// The system has ended all other threads by now, with whatever locks they held. Only if there
/// never was another thread are all locks known to be free.
void endWithProcess()
{
    const bool alone = loadedWithProcess && startedThreads == 0;
    if (alone)
        module::stop();
    silenceMessages();
    leaveSingletonsToSystem = !alone;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID reserved)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        enter(library, reserved != nullptr);
        break;
    case DLL_THREAD_ATTACH:
        ++startedThreads;
        break;
    case DLL_THREAD_DETACH:
        --startedThreads;
        break;
    case DLL_PROCESS_DETACH:
        reserved ? endWithProcess() : leave();
        break;
    default:
        break;
    }
    return TRUE;
}
