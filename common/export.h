#pragma once

// The one export macro of the library.
// LMW_API stands on classes with a virtual table or out-of-line members and on free functions; not
// on templates, enumerations and plain records. Define LMW_STATIC when the library's objects are
// linked into a program directly instead of through the shared library.
// Constants of exported classes are enumerators: a constant object would have to be imported, and a
// Windows program that only names it would not link.

#include "common/sys/dll_border.h"

#if defined(LMW_STATIC)
#define LMW_API
#elif defined(LMW_BUILDING_LIBRARY)
#define LMW_API LMW_DLL_EXPORT
#else
#define LMW_API LMW_DLL_IMPORT
#endif
