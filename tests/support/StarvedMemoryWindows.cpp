// Each module has a table of what it imports from the C library; functions of this program take
// the places of those that serve memory.

#include "support/StarvedMemory.h"

#include <array>

#include <windows.h>

#include <psapi.h>

namespace {

/// A function of the C library itself, whatever stands in the tables.
template<class Function>
Function* original(const char* name)
{
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}

void* starvedMalloc(size_t size)
{
    static auto* const served = original<void*(size_t)>("malloc");
    return isStarved(size) ? nullptr : served(size);
}

void* starvedCalloc(size_t count, size_t size)
{
    static auto* const served = original<void*(size_t, size_t)>("calloc");
    return isStarved(count * size) ? nullptr : served(count, size);
}

void* starvedRealloc(void* memory, size_t size)
{
    static auto* const served = original<void*(void*, size_t)>("realloc");
    return isStarved(size) ? nullptr : served(memory, size);
}

struct Replacement
{
    const char* name;
    void* starved;
};

void replace(void** import)
{
    static const Replacement replacements[] = {
        {"malloc", reinterpret_cast<void*>(&starvedMalloc)},
        {"calloc", reinterpret_cast<void*>(&starvedCalloc)},
        {"realloc", reinterpret_cast<void*>(&starvedRealloc)}};
    for (const Replacement& replacement : replacements) {
        DWORD protection = 0;
        if (*import != reinterpret_cast<void*>(original<void()>(replacement.name))
            || !VirtualProtect(import, sizeof(void*), PAGE_READWRITE, &protection))
            continue;
        *import = replacement.starved;
        VirtualProtect(import, sizeof(void*), protection, &protection);
    }
}

void replaceImports(char* module)
{
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(module + dos->e_lfanew);
    const DWORD place =
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(module + place);
    for (; place != 0 && library->FirstThunk != 0; ++library) {
        for (auto* import = reinterpret_cast<void**>(module + library->FirstThunk); *import;
             ++import)
            replace(import);
    }
}

bool replaceAllImports()
{
    std::array<HMODULE, 256> modules{};
    DWORD bytes = 0;
    if (!EnumProcessModules(GetCurrentProcess(), modules.data(), sizeof modules, &bytes))
        return false;
    for (size_t i = 0; i < modules.size() && i < bytes / sizeof(HMODULE); ++i) {
        if (modules[i] != GetModuleHandleW(L"msvcrt.dll"))
            replaceImports(reinterpret_cast<char*>(modules[i]));
    }
    return true;
}

}  // namespace

bool StarvedMemory::isPossible()
{
    static const bool replaced = replaceAllImports();
    return replaced;
}
