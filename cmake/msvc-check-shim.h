// What scripts/check-msvc puts before every source: the headers of MinGW-w64 take these from GCC,
// and clang in the form of Microsoft's compiler does not set them.
#pragma once

#define _X86_

#include <_mingw.h>

#undef __MINGW_IMPORT
#define __MINGW_IMPORT extern __declspec(dllimport)
