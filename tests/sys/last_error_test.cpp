#include "common/sys/last_error.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <thread>

namespace {

TEST(LastError, BelongsToItsThread) {
    sys::SetLastError(5);
    unsigned other_at_start = 5;
    unsigned other = 0;
    std::thread([&] {
        other_at_start = sys::LastError();
        sys::SetLastError(13);
        other = sys::LastError();
    }).join();
    EXPECT_EQ(other_at_start, 0U);
    EXPECT_EQ(other, 13U);

    sys::SetLastError(6);
    EXPECT_EQ(sys::LastError(), 6U);
    EXPECT_EQ(sys::LastError(), 6U) << "asking changes nothing";
}

// The texts themselves are the system's and differ with its version and language.
TEST(ErrorText, IsEmptyForUnknownCodesOnly) {
    EXPECT_NE(sys::SystemErrorText(2), L"");
    EXPECT_NE(sys::SystemErrorText(5), sys::SystemErrorText(2));
    for (const unsigned unknown : {2998U, 987654321U, UINT_MAX}) {  // 2998: of an absent module
        EXPECT_EQ(sys::SystemErrorText(unknown), L"") << unknown;
    }
    EXPECT_NE(sys::RuntimeErrorText(ENOENT), L"");
    EXPECT_NE(sys::RuntimeErrorText(ENOENT), sys::RuntimeErrorText(EACCES));
    for (const int unknown : {-1, 4711, INT_MAX, INT_MIN}) {
        EXPECT_EQ(sys::RuntimeErrorText(unknown), L"") << unknown;
    }
}

}  // namespace
