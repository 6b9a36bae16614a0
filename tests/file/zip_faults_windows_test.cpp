// What the archive survives on Windows: readers that hold the old file; and what it keeps.

#include "common/file/zip.h"

#include "tests/file/archive_files.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <sddl.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using namespace lmw::test;
using sys::file::Zip;
using sys::file::zip::CompactMode;

TEST(ZipFaults, ReaderThatHoldsTheArchiveFailsAndCanBeRepeated) {
    const ScratchFolder folder;
    const std::wstring path = folder / "p.lwz";
    Zip zip;
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    ASSERT_OK(zip.Add(folder.Write("source", "1"), L"a"));
    const std::string before = folder.Read("p.lwz");
    {
        const sys::file::InputStream reader = sys::file::MakeFileInputStream(path);
        EXPECT_TRUE(zip.Flush().Failed());
        EXPECT_EQ(folder.Read("p.lwz"), before);
        EXPECT_EQ(folder.Files(), (std::vector<std::string>{"p.lwz", "source"}));
        EXPECT_EQ(Content(zip, L"a"), "1");
    }
    ASSERT_OK(zip.Close());
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    EXPECT_EQ(Content(zip, L"a"), "1");
}

// Who may do what with a file, as text.
std::wstring Rights(const std::wstring& path) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> rights(size);
    wchar_t* text = nullptr;
    if (GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) ==
            0 ||
        ConvertSecurityDescriptorToStringSecurityDescriptorW(
            rights.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr) == 0) {
        return L"unknown";
    }
    std::wstring result = text;
    LocalFree(text);
    return result;
}

TEST(ZipFaults, RightsOfTheArchiveAreKept) {
    const ScratchFolder folder;
    const std::wstring path = folder / "p.lwz";
    Zip zip;
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    ASSERT_OK(zip.Close());
    const std::wstring usual = Rights(path);
    // Nobody but the administrators and the system may even read.
    PSECURITY_DESCRIPTOR few = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;BA)(A;;FA;;;SY)",
                                                                   SDDL_REVISION_1, &few, nullptr),
              0);
    ASSERT_NE(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, few), 0);
    LocalFree(few);
    const std::wstring restricted = Rights(path);
    if (restricted == usual) {
        GTEST_SKIP() << "the file system keeps no rights";
    }
    ASSERT_OK(zip.Open(path, CompactMode::Never));
    EXPECT_OK(zip.Add(folder.Write("source", "1"), L"a"));
    ASSERT_OK(zip.Close());
    EXPECT_EQ(Rights(path), restricted);
}

}  // namespace
