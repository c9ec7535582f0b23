#include "common/platform/Platform.h"

#include "common/platform/FileSystem.h"

#include <QDir>
#include <QSettings>

#include <array>
#include <vector>

#include <windows.h>

namespace velm::detail::platform {

namespace {

constexpr DWORD kLongestPath = 32768;  // characters of an extended-length path, with its end

LPCWSTR wide(const QString& text)
{
    return reinterpret_cast<LPCWSTR>(text.utf16());
}

}  // namespace

QString temporaryFolder()
{
    std::array<wchar_t, 260> buffer{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length > buffer.size())
        return QDir::toNativeSeparators(QDir::tempPath()) + QLatin1Char('\\');
    return QString::fromWCharArray(buffer.data(), static_cast<int>(length));
}

QString environmentVariable(const QString& name)
{
    // Not the copy of our own C run-time, which does not see what others set.
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const auto size = static_cast<DWORD>(buffer.size());
        const DWORD length = GetEnvironmentVariableW(wide(name), buffer.data(), size);
        if (length < size)
            return QString::fromWCharArray(buffer.data(), static_cast<int>(length));
        buffer.resize(length);  // with its end
    }
}

QString modulePath(HINSTANCE module)
{
    std::vector<wchar_t> buffer(kLongestPath);
    const DWORD length = GetModuleFileNameW(module, buffer.data(), kLongestPath);
    if (length == 0 || length >= kLongestPath)
        return QString();
    return QDir::fromNativeSeparators(
        QString::fromWCharArray(buffer.data(), static_cast<int>(length)));
}

QString modulePathByName(const QString& name)
{
    if (name.isEmpty())
        return QString();
    const HMODULE module = GetModuleHandleW(wide(QDir::toNativeSeparators(name)));
    return module ? modulePath(module) : QString();
}

QString libraryPath()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS
                           | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&libraryPath), &module);
    return modulePath(module);
}

bool programExports(const char* name)
{
    return GetProcAddress(GetModuleHandleW(nullptr), name) != nullptr;
}

HMODULE loadModule(const QString& path)
{
    return LoadLibraryW(wide(QDir::toNativeSeparators(longPath(path))));
}

void freeModule(HMODULE module)
{
    FreeLibrary(module);
}

int messageBox(const QString& text, const QString& title, unsigned int style, HWND owner)
{
    return MessageBoxW(owner, wide(text), wide(title), style);
}

HWND foregroundWindow()
{
    return GetForegroundWindow();
}

void useLargePages(void* memory, size_t size)
{
    Q_UNUSED(memory);  // large pages need a privilege there
    Q_UNUSED(size);
}

std::unique_ptr<QSettings> openRegistryKey(const QString& keyPath)
{
    return std::make_unique<QSettings>(keyPath, QSettings::NativeFormat);
}

}  // namespace velm::detail::platform
