#include "common/version.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <winver.h>

#include <string>
#include <vector>

namespace {

TEST(VersionResource, NamesTheVersionOfTheLibrary) {
    const wchar_t* const file = L"lmwcommon.dll";
    DWORD unused = 0;
    std::vector<unsigned char> block(GetFileVersionInfoSizeW(file, &unused));
    ASSERT_FALSE(block.empty());
    ASSERT_NE(GetFileVersionInfoW(file, 0, static_cast<DWORD>(block.size()), block.data()), FALSE);

    void* found = nullptr;
    UINT size = 0;
    ASSERT_NE(VerQueryValueW(block.data(), L"\\", &found, &size), FALSE);
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    EXPECT_EQ(fixed->dwFileVersionMS,
              static_cast<DWORD>(MAKELONG(LMW_VERSION_MINOR, LMW_VERSION_MAJOR)));
    EXPECT_EQ(fixed->dwFileVersionLS, static_cast<DWORD>(MAKELONG(0, LMW_VERSION_PATCH)));

    ASSERT_NE(
        VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\ProductVersion", &found, &size),
        FALSE);
    const std::string expected = LMW_VERSION_STRING;
    EXPECT_EQ(std::wstring(static_cast<const wchar_t*>(found)),
              std::wstring(expected.begin(), expected.end()));
}

}  // namespace
