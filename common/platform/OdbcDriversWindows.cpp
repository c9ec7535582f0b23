#include "common/platform/OdbcDrivers.h"

#include <array>

#include <windows.h>

#include <sqlext.h>

namespace velm::detail::platform {

namespace {

/// The functions of the driver manager, which is loaded while they are used only: under Wine it
/// cannot be loaded where Linux has none.
class DriverManager
{
public:
    DriverManager()
    {
        resolve(allocate, "SQLAllocHandle");
        resolve(setAttribute, "SQLSetEnvAttr");
        resolve(drivers, "SQLDriversW");
        resolve(free, "SQLFreeHandle");
    }
    ~DriverManager() { FreeLibrary(m_library); }
    DriverManager(const DriverManager&) = delete;
    DriverManager& operator=(const DriverManager&) = delete;

    bool isComplete() const { return allocate && setAttribute && drivers && free; }

    decltype(&SQLAllocHandle) allocate = nullptr;
    decltype(&SQLSetEnvAttr) setAttribute = nullptr;
    decltype(&SQLDriversW) drivers = nullptr;
    decltype(&SQLFreeHandle) free = nullptr;

private:
    template<typename Function>
    void resolve(Function& function, const char* name)
    {
        function =
            reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_library, name)));
    }

    const HMODULE m_library = LoadLibraryW(L"odbc32.dll");
};

QStringList namesOf(const DriverManager& manager, SQLHENV environment)
{
    QStringList names;
    std::array<SQLWCHAR, 256> name{};
    std::array<SQLWCHAR, 1024> attributes{};
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (SQL_SUCCEEDED(manager.drivers(environment, direction, name.data(), name.size(), nullptr,
                                         attributes.data(), attributes.size(), nullptr))) {
        names += QString::fromWCharArray(name.data());
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

}  // namespace

QStringList odbcDrivers()
{
    const DriverManager manager;
    SQLHENV environment = nullptr;
    if (!manager.isComplete()
        || !SQL_SUCCEEDED(manager.allocate(SQL_HANDLE_ENV, nullptr, &environment)))
        return QStringList();
    manager.setAttribute(environment, SQL_ATTR_ODBC_VERSION,
                         reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), SQL_IS_INTEGER);
    QStringList names = namesOf(manager, environment);
    manager.free(SQL_HANDLE_ENV, environment);
    return names;
}

}  // namespace velm::detail::platform
