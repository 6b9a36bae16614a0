#include "common/file/name.h"

#include "common/file/mark_step.h"
#include "common/file/step.h"

#include "tests/support/property_random.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

using doc::file::Name;
using namespace lmw::test;
using namespace doc::file::mark;

TEST(Name, EmptinessFollowsTheFields) {
    Name name;
    EXPECT_FALSE(name.Run(0).IsEmpty());
    EXPECT_FALSE(Name().Step(lmw::step::Init()).IsEmpty());
    name.Clear();
    EXPECT_TRUE(name.IsEmpty());
    name.Analysis(L"a").FNameExt(L"b.c").ClearFile();
    EXPECT_EQ(name.FNameExt(), L"");
    EXPECT_TRUE(name.ClearAnalysis().IsEmpty());
}

TEST(Name, PartsOfTheProjectPath) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*, const wchar_t*> rows[] = {
        {L"C:\\work\\dam.lwz", L"C:\\work\\", L"dam", L".lwz"},
        {L"C:dam.lwz", L"C:", L"dam", L".lwz"},
        {L"dam", L"", L"dam", L""},
        {L"C:\\a.b\\dam", L"C:\\a.b\\", L"dam", L""},
        {L"dam.v2.lwz", L"", L"dam.v2", L".lwz"},
        {L"\\.lwz", L"\\", L"", L".lwz"},
        {L"a.", L"", L"a", L"."},
        {L"/site/a.b/dam", L"", L"/site/a", L".b/dam"},  // "/" is no separator
        {L"", L"", L"", L""},
    };
    for (const auto& [path, directory, fname, ext] : rows) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(path)));
        const Name name = Name().ProjectPath(path);
        EXPECT_EQ(name.ProjectDirectory(), directory);
        EXPECT_EQ(name.ProjectFName(), fname);
        EXPECT_EQ(name.ProjectExt(), ext);
        EXPECT_EQ(name.ProjectFNameExt(), std::wstring(fname) + ext);
    }
}

TEST(Name, SettersOfOnePartKeepTheOthers) {
    Name name = Name().ProjectPath(L"C:\\work\\dam.lwz");
    EXPECT_EQ(name.ProjectDirectory(L"D:\\new\\").ProjectPath(), L"D:\\new\\dam.lwz");
    EXPECT_EQ(name.ProjectDirectory(L"E:\\other").ProjectPath(), L"E:\\other\\dam.lwz");
    EXPECT_EQ(name.ProjectDirectory(L"E:").ProjectPath(), L"E:dam.lwz");
    EXPECT_EQ(name.ProjectFName(L"levee").ProjectPath(), L"E:levee.lwz");
    EXPECT_EQ(name.ProjectExt(L".bak").ProjectPath(), L"E:levee.bak");
    EXPECT_EQ(name.ProjectDirectory(L"").ProjectPath(), L"levee.bak");
}

TEST(Name, FNameExtCutsAtTheLastDotAndWithoutOneThrowsAndChangesNothing) {
    Name name = Name().FNameExt(L"a.b.c");
    EXPECT_EQ(name.FName(), L"a.b");
    EXPECT_EQ(name.Ext(), L".c");
    try {
        name.FNameExt(L"node");
        FAIL();
    } catch (const std::out_of_range& failure) {
        EXPECT_STREQ(failure.what(), "invalid string position");
    }
    EXPECT_EQ(name.FNameExt(), L"a.b.c");
    EXPECT_EQ(name.FNameExt(L"").FNameExt(), L"");
}

TEST(Name, StarWithAllExtensionsDoesNotSelectAllFiles) {
    EXPECT_TRUE(Name().FNameExt(L"*").IsMultiSelectAllFiles());
    EXPECT_FALSE(Name().AllFiles().AllExt().IsMultiSelectAllFiles());
    EXPECT_TRUE(Name().AllExt().AllFiles().IsMultiSelectAllFiles());
    EXPECT_TRUE(Name().AllAnalyses().IsMultiSelectAnalyses());
    EXPECT_FALSE(Name().Analysis(L"**").IsMultiSelectAnalyses());
    EXPECT_FALSE(Name().Step(lmw::step::Last()).IsMultiSelectStep());
}

TEST(Name, DescriptionNamesWhatIsThere) {
    const TestHost host;
    Name name = Name().ProjectPath(L"C:\\work\\dam.lwz").FNameExt(L"node.csv");
    EXPECT_EQ(name.Step(Step::CreateFromInt(12)).Description(), L"C:\\work\\dam.lwz: node.csv");
    name.Analysis(L"Rapid drawdown");
    EXPECT_EQ(name.Description(), L"C:\\work\\dam.lwz: Rapid drawdown\\12\\node.csv");
    EXPECT_EQ(Name(name).AllExt().Description(), L"C:\\work\\dam.lwz: Rapid drawdown\\node.*");
    EXPECT_EQ(Name(name).AllExt().AllSteps().Description(),
              L"C:\\work\\dam.lwz: Rapid drawdown\\*\\node.*");
    EXPECT_EQ(Name(name).Step(lmw::step::Last()).Description(),
              L"C:\\work\\dam.lwz: Rapid drawdown\\node.csv");
    EXPECT_EQ(Name(name).Step(lmw::step::deprecated::Init()).Description(),
              L"C:\\work\\dam.lwz: Rapid drawdown\\0\\node.csv");
    EXPECT_EQ(Name(name).Run(4294967294U).Description(),
              L"C:\\work\\dam.lwz: 23262[Rapid drawdown|4294967294|||]\\12\\node.csv");
}

TEST(Name, PercentSignsSurviveDescription) {
    Name name = Name().ProjectPath(L"50%s.lwz").Analysis(L"100%d %%").FNameExt(L"%n.%s").Run(3);
    EXPECT_EQ(name.Description(), L"50%s.lwz: 100%d %% (run 3)\\%n.%s");
}

struct OrderRow {
    const char* reason;
    Name smaller;
    Name larger;
};

TEST(Name, FirstDifferenceDecidesTheOrder) {
    const auto ext = [](const wchar_t* text) { return Name().Ext(text); };
    const auto step = [](Step value) { return Name().Step(value); };
    const auto analysis = [](const wchar_t* text) { return Name().Analysis(text); };
    const OrderRow rows[] = {
        {"path before analysis", Name().ProjectPath(L"a").Analysis(L"z"),
         Name().ProjectPath(L"B").Analysis(L"a")},
        {"analysis before run", analysis(L"a").Run(9), analysis(L"b").Run(1)},
        {"analyses tell case apart", analysis(L"Stage"), analysis(L"stage")},
        {"analyses by code units: a surrogate pair before U+E000", analysis(L"\U0001F600"),
         analysis(L"\xE000")},
        {"code units inside pairs", analysis(L"\U0001F600"), analysis(L"\U0001F601")},
        {"no run is last", Name().Run(0xFFFFFFFE), Name()},
        {"run before step", Name().Run(1).AllFiles(), Name().Run(2).AllSteps()},
        {"all steps is first", step(lmw::step::All()), step(lmw::step::deprecated::Init())},
        {"older initial step", step(lmw::step::deprecated::Init()), step(lmw::step::Init())},
        {"ordinary steps", step(Step::CreateFromInt(9)), step(Step::CreateFromInt(10))},
        {"last", step(Step::CreateFromInt(0x7FFFFFFD)), step(lmw::step::Last())},
        {"unset is last", step(lmw::step::Last()), step(Step())},
        {"step before file name", Name().Step(lmw::step::Init()).FName(L"b"),
         Name().Step(Step::CreateFromInt(1)).FName(L"a")},
        {"file name before extension", Name().FName(L"a").Ext(L".z"),
         Name().FName(L"B").Ext(L".a")},
        {"numbers", ext(L".r9"), ext(L".r10")},
        {"numbers of any length", ext(L".r99999999999999999999"), ext(L".R100000000000000000000")},
        {"then the rest", ext(L".r10"), ext(L".r10x")},
        {"no cycle through a tail that is no number", ext(L".r1x0"), ext(L".r9")},
        {"rest without case", ext(L".r1A"), ext(L".r1b")},
        {"before the digits", ext(L".a9"), ext(L".B1")},
        {"digits at different places: whole texts", ext(L".x1"), ext(L".xy1")},
        {"digits in one only", ext(L".10"), ext(L".r")},
        {"digits first", ext(L"9"), ext(L"10")},
        {"only ASCII letters fold", Name().FName(L"\xC4"), Name().FName(L"\xE4")},
    };
    for (const OrderRow& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_LT(row.smaller.Compare(row.larger), 0);
        EXPECT_GT(row.larger.Compare(row.smaller), 0);
        EXPECT_TRUE(row.smaller < row.larger && row.larger > row.smaller);
    }
}

TEST(Name, EqualityIgnoresCaseAndLeadingZeros) {
    EXPECT_EQ(Name().ProjectPath(L"C:\\A.lwz"), Name().ProjectPath(L"c:\\a.lwz"));
    EXPECT_EQ(Name().FName(L"NODE").Ext(L".R2"), Name().FName(L"node").Ext(L".r002"));
    EXPECT_EQ(Name().Ext(L".r0"), Name().Ext(L".r00"));
    EXPECT_NE(Name().Ext(L".r0"), Name().Ext(L".r"));
}

// Texts that provoke every branch of the comparison, close to each other: digits, cases, halves of
// pairs.
std::wstring RandomText(PropertyRandom& random) {
    static const std::wstring letters =
        std::wstring(L"aAbrR.01901_[/\xE4\xE000\xFFFF\xD83D\xDE00\U0001F600") + L'\0';
    return random.Text(letters, 5);
}

Name RandomName(PropertyRandom& random) {
    const Step steps[] = {Step(), lmw::step::All(), lmw::step::Init(),
                          lmw::step::deprecated::Init()};
    Name name;
    if (random.Chance(0.2)) {
        name.ProjectPath(RandomText(random)).FName(RandomText(random));
    }
    if (random.Chance(0.3)) {
        name.Analysis(RandomText(random));
    }
    if (random.Chance(0.2)) {
        name.Run(static_cast<std::uint32_t>(random.Integer(-1, 1)));
    }
    if (random.Chance(0.2)) {
        name.Step(random.Pick(steps));
    }
    return name.Ext(RandomText(random));
}

TEST(Name, CompareIsAStrictWeakOrderOverAllTriples) {
    PropertyRandom random;
    std::vector<Name> names;
    for (int k = 0; k < 160; ++k) {
        names.push_back(RandomName(random));
    }
    const std::size_t n = names.size();
    std::vector<std::vector<int>> order(n, std::vector<int>(n));
    for (std::size_t a = 0; a < n; ++a) {
        for (std::size_t b = 0; b < n; ++b) {
            const int compared = names[a].Compare(names[b]);
            order[a][b] = compared < 0 ? -1 : compared > 0 ? 1 : 0;
        }
    }
    int broken = 0;
    for (std::size_t a = 0; a < n; ++a) {
        ASSERT_EQ(order[a][a], 0);
        for (std::size_t b = 0; b < n; ++b) {
            ASSERT_EQ(order[a][b], -order[b][a]) << a << ' ' << b;
            for (std::size_t c = 0; c < n; ++c) {
                // "not above" is transitive: then so are order and equivalence.
                broken += order[a][b] <= 0 && order[b][c] <= 0 && order[a][c] > 0 ? 1 : 0;
            }
        }
    }
    EXPECT_EQ(broken, 0);
}

constexpr std::uint32_t kNone = 0xFFFFFFFF;

TEST(Step, CodesAndNumbers) {
    const std::tuple<Step, std::uint32_t, std::uint32_t, bool> rows[] = {
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
    for (const auto& [step, code, number, special] : rows) {
        SCOPED_TRACE(code);
        EXPECT_EQ(step.raw(), code);
        EXPECT_EQ(step.AsStepNumber(), number);
        EXPECT_EQ(lmw::step::IsSpecialStep(step), special);
    }
}

TEST(MarkStep, CodesNumbersAndTheStepItStandsFor) {
    struct Row {
        MarkStep mark;
        int code;
        std::uint32_t number;
        std::uint32_t step;  // where the last one is 7
    };
    for (const Row& row :
         {Row{MarkStep(), -1, kNone, 0}, Row{AllResults(), 0x7FFFFFFF, kNone, 7},
          Row{MarkStep(kNone), 0x7FFFFFFF, kNone, 7},  // by design: no step marks everything
          Row{MarkStep(9), 9, 9, 9}}) {
        EXPECT_EQ(row.mark.raw_int(), row.code);
        EXPECT_EQ(row.mark.AsStepNumber(), row.number);
        EXPECT_EQ(ConvertToStepNumber(row.mark, 7), row.step);
    }
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
