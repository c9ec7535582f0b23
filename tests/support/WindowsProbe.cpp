// What only a program of Windows can see of the library: how it is loaded and unloaded, its message
// boxes, and what the system says of its file. It loads the library itself:
//     probe load LIBRARY         loads and frees it, then logs a line
//     probe ask LIBRARY          asks a question with a real message box
//     probe version FILE         prints the Chinese part of the file's version resource
// Each runs in a child process, while the parent answers its message boxes and prints what they
// look like: a thread of the same process could not while the library is being loaded.

#include "support/Values.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QLoggingCategory>
#include <QProcess>
#include <QVersionNumber>

#include <cstdio>
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
    const auto iconOf = [box](int item) {
        return SendDlgItemMessageW(box, item, STM_GETICON, 0, 0);
    };
    return iconOf(0x14) != 0 || iconOf(0x440) != 0;  // of Windows and of Wine
}

void answer(HWND box)
{
    constexpr int kTextItem = 0xFFFF;
    Sleep(300);  // it is visible before it is complete
    print(u"box, %1, %2: %3"_s.arg(hasIcon(box) ? u"icon"_s : u"no icon"_s, textOf(box),
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
void openInVain(QLibrary& library)
{
    void* database[4] = {};
    reinterpret_cast<Plain>(library.resolve("_ZN13CVelmDatabaseC1Ev"))(database);
    reinterpret_cast<Open>(library.resolve("_ZN13CVelmDatabase12initDatabaseERK7QStringS2_"))(
        database, u"Z:/no such folder/a.db"_s, QString());
    reinterpret_cast<Plain>(library.resolve("_ZN13CVelmDatabaseD1Ev"))(database);
}

int loadAndFree(const QString& file)
{
    QLibrary library(file);
    if (!library.load())
        return 1;
    openInVain(library);
    if (!library.unload() || GetModuleHandleW(wide(file)))
        return 1;
    qWarning("the library is gone");
    print(u"done"_s);
    return 0;
}

int ask(const QString& library)
{
    // static int CVelmMessage::question(const QString& text, const QString& title, HWND parent)
    using Question = int (*)(const QString&, const QString&, HWND);
    const auto question = reinterpret_cast<Question>(
        QLibrary::resolve(library, "_ZN12CVelmMessage8questionERK7QStringS2_P6HWND__"));
    if (!question)
        return 1;
    print(u"answer %1"_s.arg(question(u"删除要素？"_s, u"测试"_s, nullptr)));
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
        const QString path = u"\\StringFileInfo\\080404B0\\"_s + QLatin1String(name);
        VerQueryValueW(resource.data(), wide(path), &value, &size);
        print(QString::fromWCharArray(static_cast<const wchar_t*>(value)));
    }
    VerQueryValueW(resource.data(), L"\\", &value, &size);
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
    const DWORD version = fixed->dwFileVersionMS;
    print(QVersionNumber(HIWORD(version), LOWORD(version), HIWORD(fixed->dwFileVersionLS))
              .toString());
    return 0;
}

/// Runs this program as a child that does the work. @return its exit code
int watchChild()
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                QCoreApplication::arguments().mid(1) + QStringList{u"child"_s});
    if (!child.waitForStarted())
        return 98;
    while (!child.waitForFinished(20) && child.state() == QProcess::Running)
        EnumWindows(visit, static_cast<LPARAM>(child.processId()));
    return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : 97;
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.last() != QLatin1String("child"))
        return watchChild();
    const QString verb = arguments.value(1), file = arguments.value(2);
    if (verb == u"version"_s)
        return showVersion(file);
    return verb == u"ask"_s ? ask(file) : loadAndFree(file);
}
