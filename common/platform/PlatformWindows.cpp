#include "common/platform/Platform.h"

#include <QDir>

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

}  // namespace velm::detail::platform
