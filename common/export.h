#pragma once

// The one export macro of the library.
// LMW_API stands on classes with a virtual table or out-of-line members and on free functions; not
// on templates, enumerations and plain records. Define LMW_STATIC when the library's objects are
// linked into a program directly instead of through the shared library.

#if defined(LMW_STATIC)
#define LMW_API
#elif defined(_MSC_VER)
#if defined(LMW_BUILDING_LIBRARY)
#define LMW_API __declspec(dllexport)
#else
#define LMW_API __declspec(dllimport)
#endif
#elif defined(_WIN32)
#if defined(LMW_BUILDING_LIBRARY)
#define LMW_API [[gnu::dllexport]]
#else
#define LMW_API [[gnu::dllimport]]
#endif
#else
#define LMW_API [[gnu::visibility("default")]]
#endif
