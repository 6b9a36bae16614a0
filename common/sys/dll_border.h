#pragma once

// How a declaration is put on the border of the shared library, for each platform and compiler.
// The library's own export macro (common/export.h) is made of these. A host's plug-in makes its own
// macro of them in the same way.

#if defined(_MSC_VER)
#define LMW_DLL_EXPORT __declspec(dllexport)
#define LMW_DLL_IMPORT __declspec(dllimport)
#elif defined(_WIN32)
#define LMW_DLL_EXPORT [[gnu::dllexport]]
#define LMW_DLL_IMPORT [[gnu::dllimport]]
#else
// Everything else is hidden; a program that uses a class needs its type information visible too.
#define LMW_DLL_EXPORT [[gnu::visibility("default")]]
#define LMW_DLL_IMPORT [[gnu::visibility("default")]]
#endif
