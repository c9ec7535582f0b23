// What only a program of Windows can see of the library: how it is loaded and unloaded, its message
// boxes, and what the system says of its file. It loads the library itself:
//     probe load LIBRARY         loads and frees it, then logs a line
//     probe ask LIBRARY          asks a question with a real message box
//     probe version FILE         prints the Chinese part of the file's version resource
// Each runs in a child process, while the parent answers its message boxes and prints what they
// look like: a thread of the same process could not while the library is being loaded.

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QString>

#include <cstdio>
#include <string>
#include <vector>

#include <windows.h>

namespace {

LPCWSTR wide(const QString& text)
{
    return reinterpret_cast<LPCWSTR>(text.utf16());
}

QString textOf(HWND window)
{
    wchar_t text[256] = {};
    // Not GetWindowText(), which would not ask a window of this process from another thread.
    SendMessageTimeoutW(window, WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text), SMTO_NORMAL, 5000,
                        nullptr);
    return QString::fromWCharArray(text);
}

void print(const QString& line)
{
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

bool hasIcon(HWND box)
{
    constexpr int kIconItems[] = {0x14, 0x440};  // of Windows and of Wine
    return SendDlgItemMessageW(box, kIconItems[0], STM_GETICON, 0, 0) != 0
           || SendDlgItemMessageW(box, kIconItems[1], STM_GETICON, 0, 0) != 0;
}

void answer(HWND box)
{
    constexpr int kTextItem = 0xFFFF;
    Sleep(300);  // it is visible before it is complete
    print(QStringLiteral("box, %1, %2: %3")
              .arg(hasIcon(box) ? QStringLiteral("icon") : QStringLiteral("no icon"), textOf(box),
                   textOf(GetDlgItem(box, kTextItem))));
    PostMessageW(box, WM_COMMAND, GetDlgItem(box, IDCANCEL) ? IDCANCEL : IDOK, 0);
    while (IsWindow(box))
        Sleep(5);
}

BOOL CALLBACK visit(HWND window, LPARAM child)
{
    wchar_t name[16] = {};
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    GetClassNameW(window, name, 16);
    if (process == static_cast<DWORD>(child) && wcscmp(name, L"#32770") == 0
        && IsWindowVisible(window))
        answer(window);
    return TRUE;
}

#pragma GCC diagnostic ignored "-Wattributes"  // how members are called, of a class not declared
using Plain = void(__thiscall*)(void* database);
using Open = int(__thiscall*)(void* database, const QString& file, const QString& options);

/// Leaves a connection behind that never opened: Qt keeps it until the application object goes.
void openInVain(HMODULE module)
{
    const auto find = [module](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(module, name));
    };
    void* database[4] = {};
    reinterpret_cast<Plain>(find("_ZN13CVelmDatabaseC1Ev"))(database);
    reinterpret_cast<Open>(find("_ZN13CVelmDatabase12initDatabaseERK7QStringS2_"))(
        database, QStringLiteral("Z:/no such folder/a.db"), QString());
    reinterpret_cast<Plain>(find("_ZN13CVelmDatabaseD1Ev"))(database);
}

int loadAndFree(const QString& library)
{
    const HMODULE module = LoadLibraryW(wide(library));
    if (module)
        openInVain(module);
    if (!module || !FreeLibrary(module) || GetModuleHandleW(wide(library)))
        return 1;
    qWarning("the library is gone");
    print(QStringLiteral("done"));
    return 0;
}

int ask(const QString& library)
{
    // static int CVelmMessage::question(const QString& text, const QString& title, HWND parent)
    using Question = int (*)(const QString&, const QString&, HWND);
    const HMODULE module = LoadLibraryW(wide(library));
    const auto question = reinterpret_cast<Question>(reinterpret_cast<void*>(
        GetProcAddress(module, "_ZN12CVelmMessage8questionERK7QStringS2_P6HWND__")));
    if (!question)
        return 1;
    const int button = question(QStringLiteral("删除要素？"), QStringLiteral("测试"), nullptr);
    print(QStringLiteral("answer %1").arg(button));
    return 0;
}

int showVersion(const QString& file)
{
    std::vector<char> resource(GetFileVersionInfoSizeW(wide(file), nullptr));
    if (!GetFileVersionInfoW(wide(file), 0, static_cast<DWORD>(resource.size()), resource.data()))
        return 1;
    void* value = nullptr;
    UINT size = 0;
    for (const char* name : {"FileDescription", "OriginalFilename", "ProductVersion"}) {
        const QString path = QStringLiteral("\\StringFileInfo\\080404B0\\") + QLatin1String(name);
        VerQueryValueW(resource.data(), wide(path), &value, &size);
        print(QString::fromWCharArray(static_cast<const wchar_t*>(value)));
    }
    VerQueryValueW(resource.data(), L"\\", &value, &size);
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
    print(QStringLiteral("%1.%2.%3")
              .arg(HIWORD(fixed->dwFileVersionMS))
              .arg(LOWORD(fixed->dwFileVersionMS))
              .arg(HIWORD(fixed->dwFileVersionLS)));
    return 0;
}

/// Runs this program as a child that does the work. @return its exit code
int watchChild()
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    std::wstring line = std::wstring(GetCommandLineW()) + L" child";
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &child))
        return 98;
    while (WaitForSingleObject(child.hProcess, 20) == WAIT_TIMEOUT)
        EnumWindows(visit, static_cast<LPARAM>(child.dwProcessId));
    DWORD result = 97;
    GetExitCodeProcess(child.hProcess, &result);
    return static_cast<int>(result);
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.last() != QLatin1String("child"))
        return watchChild();
    const QString verb = arguments.value(1), file = arguments.value(2);
    if (verb == QLatin1String("version"))
        return showVersion(file);
    return verb == QLatin1String("ask") ? ask(file) : loadAndFree(file);
}
