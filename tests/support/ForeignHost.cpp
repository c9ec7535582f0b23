// A host that has nothing in common with the library: no Qt, no application object, no header and
// no import library. It knows the package's folder and the names that VelmCommon.dll exports.
//     foreign_host LIBRARY ROOT SCRATCH          runs everything in child processes
//     foreign_host LIBRARY ROOT set VALUE END    sets a parameter and ends in one of kEnds' ways
//     foreign_host LIBRARY ROOT show             exit code: the parameter, or kNothing
//     foreign_host LIBRARY ROOT load|use COUNT   loads and frees it, tells what that costs
//     foreign_host LIBRARY ROOT lock EVENT       locks the configuration until it is killed

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <windows.h>

#include <psapi.h>

namespace {

using std::filesystem::path;
using Text = std::wstring;

constexpr int kNothing = 98;    // nothing could be loaded
constexpr int kBoxAtEnd = 77;   // a message box while the library or the process ends
constexpr int kNotLoaded = 99;  // the library does not load, or stays
constexpr DWORD kPatienceMs = 60000;
constexpr long kMostPerRound = 200 * 1024;  // bytes

bool isEnding = false;

int answerBox(const void*, const void*, unsigned int, void*)
{
    if (isEnding)
        TerminateProcess(GetCurrentProcess(), kBoxAtEnd);
    return IDOK;
}

#pragma GCC diagnostic ignored "-Wattributes"  // how members are called, of a class not declared
using Member = bool(__thiscall*)(void* object);

/// The library, and those of its operations that need no class of Qt.
class Library
{
public:
    explicit Library(const path& file) : m_module(LoadLibraryW(file.c_str()))
    {
        if (!m_module)
            std::exit(kNotLoaded);
        using Presenter = int (*)(const void*, const void*, unsigned int, void*);
        get<void (*)(Presenter)>("_ZN12CVelmMessage16installPresenterEPFiRK7QStringS2_jP6HWND__E")(
            answerBox);
    }

    bool loadParameters()
    {
        void* system = get<void* (*)()>("_ZN17CVelmSystemGlobal8InstanceEv")();
        return get<Member>("_ZNK17CVelmSystemGlobal15initGlobalParamEv")(system);
    }
    void loadConfiguration() { get<void* (*)()>("_ZN18CVelmConfigManager8InstanceEv")(); }
    void stop() { get<void (*)()>("_ZN17CVelmSystemGlobal10stopModuleEv")(); }
    void free() { FreeLibrary(m_module); }

    /// The sort mode, the first number of the global parameters.
    int& parameter() { return *get<int*>("g_VelmGlobalParam"); }

private:
    template<class T>
    T get(const char* name)
    {
        void* address = reinterpret_cast<void*>(GetProcAddress(m_module, name));
        if (!address)
            std::exit(kNotLoaded);
        return reinterpret_cast<T>(address);
    }

    HMODULE m_module;
};

DWORD WINAPI sleepForEver(void*)
{
    Sleep(INFINITE);
    return 0;
}

/// The ways to end, and whether what was set is saved. With "unread" it is set before anything was
/// loaded, with "thread" another thread is asleep.
const struct
{
    const wchar_t* name;
    bool saves;
    void (*end)(Library& library);
} kEnds[] = {{L"stop", true, [](Library& library) { library.stop(); }},
             {L"free", true, [](Library& library) { library.free(); }},
             {L"unread+free", true, [](Library& library) { library.free(); }},
             {L"thread+free", true, [](Library& library) { library.free(); }},
             {L"return", false, [](Library&) {}},
             {L"thread+return", false, [](Library&) {}},
             {L"exit", false, [](Library&) { std::exit(0); }},
             {L"quit", false, [](Library&) { ExitProcess(0); }},
             {L"kill", false, [](Library&) { TerminateProcess(GetCurrentProcess(), 0); }}};

int set(const path& file, int value, const Text& name)
{
    Library library(file);
    if (name.find(L"unread") != 0)
        library.loadParameters();
    library.parameter() = value;
    if (name.find(L"thread") == 0)
        CreateThread(nullptr, 0, sleepForEver, nullptr, 0, nullptr);
    isEnding = name != L"stop";
    for (const auto& end : kEnds) {
        if (name == end.name)
            end.end(library);
    }
    return 0;
}

int show(const path& file)
{
    Library library(file);
    return library.loadParameters() ? library.parameter() : kNothing;
}

/// Bytes in use; what Wine does not count is zero there.
long memoryInUse()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return static_cast<long>(counters.PrivateUsage ? counters.PrivateUsage
                                                   : counters.WorkingSetSize);
}

int loadOften(const path& file, int count, bool withConfiguration)
{
    constexpr int kFirst = 5;  // until the system's own caches are warm
    DWORD handlesBefore = 0;
    DWORD handles = 0;
    long before = 0;
    for (int round = 0; round < count; ++round) {
        if (round == kFirst) {
            GetProcessHandleCount(GetCurrentProcess(), &handlesBefore);
            before = memoryInUse();
        }
        Library library(file);
        if (withConfiguration)
            library.loadConfiguration();
        library.free();
        if (GetModuleHandleW(file.c_str()))
            return kNotLoaded;
    }
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    const long perRound = (memoryInUse() - before) / (count - kFirst);
    std::printf("%d rounds%s: %ld kB a round, handles %lu to %lu\n", count,
                withConfiguration ? " with the configuration" : "", perRound / 1024, handlesBefore,
                handles);
    return !withConfiguration && (perRound > kMostPerRound || handles > handlesBefore + 20) ? 1 : 0;
}

/// Locks the bytes by which SQLite locks a file.
int lock(const path& root, const wchar_t* event)
{
    const HANDLE file =
        CreateFileW((root / L"config/peltaconfig.db").c_str(), GENERIC_READ | GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (!LockFile(file, 0x40000000, 0, 512, 0))
        return 1;
    SetEvent(OpenEventW(EVENT_MODIFY_STATE, FALSE, event));
    return static_cast<int>(sleepForEver(nullptr));
}

path moduleFile()
{
    wchar_t self[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    return self;
}

/// Runs copies of this program and tells what comes out otherwise than expected.
class Rounds
{
public:
    Rounds(const path& library, const path& root, const path& scratch)
        : m_library(library), m_root(root), m_scratch(scratch)
    {}

    int run()
    {
        for (const wchar_t* folder : {L"plain", L"中文 与 blank", L"Ω𠮷☃"})
            endInEveryWay(folder);
        endWithoutStore();
        waitForLock();
        expect(L"idle", L"load 50", 0);
        if (exists(m_scratch / L"idle/foreign_host.dat"))
            fail(L"a store is made though nothing was set");
        expect(L"plain", L"use 15", 0);
        return m_failures;
    }

private:
    HANDLE start(const Text& folder, const Text& arguments)
    {
        const path host = m_scratch / folder / L"foreign_host.exe";
        create_directories(host.parent_path());
        if (!exists(host))
            copy_file(m_self, host);
        Text line = L'"' + host.native() + L"\" \"" + m_library.native() + L"\" \""
                    + m_root.native() + L"\" " + arguments;
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION child{};
        CreateProcessW(host.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                       &startup, &child);
        return child.hProcess;
    }

    void expect(const Text& folder, const Text& arguments, DWORD expected)
    {
        const HANDLE child = start(folder, arguments);
        DWORD answer = STILL_ACTIVE;
        if (WaitForSingleObject(child, kPatienceMs) == WAIT_OBJECT_0)
            GetExitCodeProcess(child, &answer);
        if (answer == expected)
            return;
        fail(folder + L": " + arguments + L": " + std::to_wstring(answer) + L", expected "
             + std::to_wstring(expected));
    }

    void fail(const Text& text)
    {
        ++m_failures;
        std::printf("%s\n", path(text).u8string().c_str());
    }

    void endInEveryWay(const Text& folder)
    {
        DWORD saved = 0;
        DWORD value = 10;
        for (const auto& end : kEnds) {
            expect(folder, L"set " + std::to_wstring(++value) + L' ' + end.name, 0);
            saved = end.saves ? value : saved;
            expect(folder, L"show", saved);
        }
    }

    /// A folder stands in the place of the store: as root Wine knows no folder that is read-only.
    void endWithoutStore()
    {
        create_directories(m_scratch / L"none/foreign_host.dat");
        for (const wchar_t* end : {L"stop", L"free", L"unread+free", L"return"})
            expect(L"none", Text(L"set 5 ") + end, 0);
        expect(L"none", L"show", kNothing);
    }

    void waitForLock()
    {
        const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, L"velm foreign host");
        const HANDLE child = start(L"plain", L"lock \"velm foreign host\"");
        if (WaitForSingleObject(event, kPatienceMs) != WAIT_OBJECT_0)
            fail(L"the database cannot be locked");
        expect(L"fresh", L"show", kNothing);
        TerminateProcess(child, 0);
        WaitForSingleObject(child, kPatienceMs);
        expect(L"fresh", L"show", 0);
    }

    path m_self = moduleFile();
    path m_library, m_root, m_scratch;
    int m_failures = 0;
};

}  // namespace

int main()
{
    int count = 0;
    wchar_t** given = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<Text> arguments(given, given + count);
    arguments.resize(6);
    const path library = absolute(path(arguments[1])), root = absolute(path(arguments[2]));
    const Text& command = arguments[3];
    SetDllDirectoryW(library.parent_path().c_str());
    SetEnvironmentVariableW(L"VELM_ROOT", root.c_str());
    const int number = _wtoi(arguments[4].c_str());
    if (command == L"set")
        return set(library, number, arguments[5]);
    if (command == L"show")
        return show(library);
    if (command == L"load" || command == L"use")
        return loadOften(library, number, command == L"use");
    if (command == L"lock")
        return lock(root, arguments[4].c_str());
    return Rounds(library, root, absolute(path(command))).run();
}
