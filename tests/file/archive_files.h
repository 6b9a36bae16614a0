#pragma once

// Folders, files and archives for the tests of this room.

#include "common/file/zip.h"

#include "tests/support/scratch_folder.h"

#include <cstddef>
#include <string>
#include <vector>

namespace lmw::test {

/// The content of an archive of tests/data/archives, by its name without ".zip".
[[nodiscard]] std::string ArchiveData(const std::string& name);
/// The names of all of them.
[[nodiscard]] std::vector<std::string> ArchiveDataNames();

/// A stream over a text, which must outlive it.
[[nodiscard]] sys::file::InputStream StreamOver(const std::string& bytes);

/// Bytes that hardly compress.
[[nodiscard]] std::string Noise(std::size_t size, unsigned seed = 1);

[[nodiscard]] std::string Text(const sys::file::Zip::Bytes& bytes);

/// The content of the entry with that name; the failure's text where there is none.
[[nodiscard]] std::string Content(const sys::file::Zip& zip, const std::wstring& name);

/// The names of all entries, in the order of their identifiers.
[[nodiscard]] std::vector<std::wstring> Names(const sys::file::Zip& zip);

}  // namespace lmw::test

/// Fails the test with the status's text.
#define EXPECT_OK(expression)                                       \
    do {                                                            \
        const gtl::status status_of_it = (expression);              \
        EXPECT_TRUE(status_of_it.Succeeded())                       \
            << ::testing::PrintToString(status_of_it.as_wstring()); \
    } while (false)
#define ASSERT_OK(expression)                                       \
    do {                                                            \
        const gtl::status status_of_it = (expression);              \
        ASSERT_TRUE(status_of_it.Succeeded())                       \
            << ::testing::PrintToString(status_of_it.as_wstring()); \
    } while (false)
