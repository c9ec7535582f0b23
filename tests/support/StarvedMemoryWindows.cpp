// Each module has a table of what it imports from the C library; functions of this program take
// the places of those that serve memory.

#include "support/StarvedMemory.h"

#include <array>

#include <windows.h>

#include <psapi.h>

namespace {

// The functions of the C library itself, whatever stands in the tables.
void* (*g_malloc)(size_t);
void* (*g_calloc)(size_t, size_t);
void* (*g_realloc)(void*, size_t);
void* (*g_alignedMalloc)(size_t, size_t);

void* starvedMalloc(size_t size)
{
    return isStarved(size) ? nullptr : g_malloc(size);
}

void* starvedCalloc(size_t count, size_t size)
{
    return isStarved(count * size) ? nullptr : g_calloc(count, size);
}

void* starvedRealloc(void* memory, size_t size)
{
    return isStarved(size) ? nullptr : g_realloc(memory, size);
}

void* starvedAlignedMalloc(size_t size, size_t alignment)
{
    return isStarved(size) ? nullptr : g_alignedMalloc(size, alignment);
}

template<class Function>
void find(Function*& function, const char* name)
{
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), name);
    function = reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}

void replaceIf(void** import, void* original, void* starved)
{
    DWORD protection = 0;
    if (*import != original
        || !VirtualProtect(import, sizeof original, PAGE_READWRITE, &protection))
        return;
    *import = starved;
    VirtualProtect(import, sizeof original, protection, &protection);
}

template<class Function>
void replace(void** import, Function* original, Function* starved)
{
    replaceIf(import, reinterpret_cast<void*>(original), reinterpret_cast<void*>(starved));
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
             ++import) {
            replace(import, g_malloc, &starvedMalloc);
            replace(import, g_calloc, &starvedCalloc);
            replace(import, g_realloc, &starvedRealloc);
            replace(import, g_alignedMalloc, &starvedAlignedMalloc);
        }
    }
}

bool replaceAllImports()
{
    find(g_malloc, "malloc");
    find(g_calloc, "calloc");
    find(g_realloc, "realloc");
    find(g_alignedMalloc, "_aligned_malloc");
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

std::uintptr_t thisThread()
{
    return GetCurrentThreadId();
}

bool StarvedMemory::isPossible()
{
    static const bool replaced = replaceAllImports();
    return replaced;
}
