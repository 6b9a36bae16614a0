#include "common/file/step.h"

#include "common/file/mark_step.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using doc::file::mark::AllResults;
using doc::file::mark::ConvertToStepNumber;
using doc::file::mark::IsResultsAvailable;
using doc::file::mark::MarkStep;

constexpr std::uint32_t kNone = 0xFFFFFFFF;

TEST(Step, CodesAndNumbers) {
    struct Row {
        Step step;
        std::uint32_t code;
        std::uint32_t number;
        bool special;
    };
    const Row rows[] = {
        {Step(), 0x7FFFFFFF, kNone, true},
        {lmw::step::Init(), 0, 0, true},  // special although it has a number
        {lmw::step::Last(), 0x7FFFFFFE, kNone, true},
        {lmw::step::All(), 0xFFFFFFFE, kNone, true},
        {lmw::step::deprecated::Init(), 0xFFFFFFFF, 0, true},
        {Step::CreateFromInt(1), 1, 1, false},
        {Step::CreateFromInt(0x7FFFFFFD), 0x7FFFFFFD, 0x7FFFFFFD, false},
        {Step::CreateFromInt(-3), 0xFFFFFFFD, kNone, false},
        {Step::CreateFromInt(INT32_MIN), 0x80000000, kNone, false},
        {Step::CreateFromStepNumber(kNone), 0x7FFFFFFF, kNone, true},
        {Step::CreateFromStepNumber(5), 5, 5, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(row.step.raw(), row.code);
        EXPECT_EQ(row.step.AsStepNumber(), row.number);
        EXPECT_EQ(lmw::step::IsSpecialStep(row.step), row.special);
    }
}

TEST(MarkStep, CodesAndNumbers) {
    EXPECT_EQ(MarkStep().raw_int(), -1);
    EXPECT_EQ(AllResults().raw_int(), 0x7FFFFFFF);
    EXPECT_EQ(MarkStep(kNone), AllResults());  // by design: no step marks everything
    EXPECT_EQ(MarkStep(3).AsStepNumber(), 3U);
    EXPECT_EQ(MarkStep().AsStepNumber(), kNone);
    EXPECT_EQ(AllResults().AsStepNumber(), kNone);
    EXPECT_NE(MarkStep(3), MarkStep(4));
}

TEST(MarkStep, ConvertsToTheStepItStandsFor) {
    EXPECT_EQ(ConvertToStepNumber(AllResults(), 7), 7U);
    EXPECT_EQ(ConvertToStepNumber(MarkStep(), 7), 0U);
    EXPECT_EQ(ConvertToStepNumber(MarkStep(9), 7), 9U);
}

TEST(MarkStep, ResultsAreAvailableAtOrAfterTheMark) {
    for (const MarkStep available : {MarkStep(), AllResults(), MarkStep(0), MarkStep(5)}) {
        EXPECT_TRUE(IsResultsAvailable(AllResults(), available));
        EXPECT_FALSE(IsResultsAvailable(MarkStep(), available));
    }
    EXPECT_FALSE(IsResultsAvailable(MarkStep(5), AllResults()));
    EXPECT_FALSE(IsResultsAvailable(MarkStep(5), MarkStep()));
    EXPECT_FALSE(IsResultsAvailable(MarkStep(3), MarkStep(5)));
    EXPECT_TRUE(IsResultsAvailable(MarkStep(5), MarkStep(5)));
    EXPECT_TRUE(IsResultsAvailable(MarkStep(5), MarkStep(3)));
    // Unsigned: a mark with the highest bit is larger than every ordinary one.
    EXPECT_TRUE(IsResultsAvailable(MarkStep(0x80000000), MarkStep(5)));
}

}  // namespace
