// A program of its own: the diagnostic switch is asked once in the life of a process.

#include "common/app/feature.h"
#include "common/math/fpu.h"
#include "common/sys/floating_point.h"

#include "tests/support/environment.h"

#include <gtest/gtest.h>

namespace {

using namespace math::fpu;

class DiagnosticTraps : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        lmw::test::DefineEnvironmentVariable("LMW_DIAG", "");
        ASSERT_TRUE(lmw::feature::IsDiagnosticFpuTrapsEnabled());
    }
    void SetUp() override { Exception::Off(); }
    void TearDown() override { Exception::Off(); }
};

TEST_F(DiagnosticTraps, AScopeTurnsOnExactlyTheDefaultAndRestoresExactly) {
    for (unsigned before = 0; before <= 31; ++before) {
        Exception::On(before);
        unsigned inside = 0;
        {
            const ScopedEnableExceptionsInDiagnosticMode outer;
            const ScopedEnableExceptionsInDiagnosticMode inner;
            inside = Exception::ControlMask();
        }
        const unsigned after = Exception::Off();  // the comparison itself must not trap
        EXPECT_EQ(inside, 28U);
        EXPECT_EQ(after, before);
    }
}

TEST_F(DiagnosticTraps, EnablingLeavesAThreadAloneThatHasTraps) {
    EnableExceptionsInDiagnosticMode();
    EXPECT_EQ(Exception::Off(), 28U);
    Exception::On(8);
    EnableExceptionsInDiagnosticMode();
    EXPECT_EQ(Exception::Off(), 8U);
}

TEST_F(DiagnosticTraps, AFlagRaisedEarlierDoesNotTrapAtEitherEnd) {
    Exception::On(1);
    sys::SetFloatingPointFlags(8 | 4 | 16);
    { const ScopedEnableExceptionsInDiagnosticMode scope; }
    const unsigned after = Exception::Off();
    EXPECT_EQ(after, 1U);
}

}  // namespace
