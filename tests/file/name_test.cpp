#include "common/file/name.h"

#include "tests/support/property_random.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using doc::file::Name;
using lmw::test::PropertyRandom;
using lmw::test::TestHost;

std::wstring Path(const Name& name) {
    return name.ProjectPath();
}

TEST(Name, EmptinessFollowsTheFields) {
    Name name;
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_FALSE(name.Run(0).IsEmpty());
    EXPECT_FALSE(Name().Step(lmw::step::Init()).IsEmpty());
    name.Clear();
    EXPECT_TRUE(name.IsEmpty());
    EXPECT_EQ(name.Run(), Name::kNoRun);
    EXPECT_EQ(name.Step().raw(), 0x7FFFFFFFU);
    name.Analysis(L"a").FNameExt(L"b.c").ClearFile();
    EXPECT_EQ(name.FNameExt(), L"");
    EXPECT_TRUE(name.ClearAnalysis().IsEmpty());
}

TEST(Name, PartsOfTheProjectPath) {
    struct Row {
        const wchar_t* path;
        const wchar_t* directory;
        const wchar_t* fname;
        const wchar_t* ext;
    };
    const Row rows[] = {
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
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.path)));
        const Name name = Name().ProjectPath(row.path);
        EXPECT_EQ(name.ProjectDirectory(), row.directory);
        EXPECT_EQ(name.ProjectFName(), row.fname);
        EXPECT_EQ(name.ProjectExt(), row.ext);
        EXPECT_EQ(name.ProjectFNameExt(), std::wstring(row.fname) + row.ext);
    }
}

TEST(Name, SettersOfOnePartKeepTheOthers) {
    Name name = Name().ProjectPath(L"C:\\work\\dam.lwz");
    EXPECT_EQ(Path(name.ProjectDirectory(L"D:\\new\\")), L"D:\\new\\dam.lwz");
    EXPECT_EQ(Path(name.ProjectDirectory(L"E:\\other")), L"E:\\other\\dam.lwz");
    EXPECT_EQ(Path(name.ProjectDirectory(L"E:")), L"E:dam.lwz");
    EXPECT_EQ(Path(name.ProjectFName(L"levee")), L"E:levee.lwz");
    EXPECT_EQ(Path(name.ProjectExt(L".bak")), L"E:levee.bak");
    EXPECT_EQ(Path(name.ProjectDirectory(L"")), L"levee.bak");
}

TEST(Name, FNameExtCutsAtTheLastDot) {
    Name name = Name().FNameExt(L"a.b.c");
    EXPECT_EQ(name.FName(), L"a.b");
    EXPECT_EQ(name.Ext(), L".c");
    name.FNameExt(L"*");
    EXPECT_TRUE(name.IsMultiSelectAllFiles());
    name.FNameExt(L"");
    EXPECT_EQ(name.FNameExt(), L"");
}

TEST(Name, FNameExtWithoutDotThrowsAndChangesNothing) {
    Name name = Name().FNameExt(L"a.b");
    try {
        name.FNameExt(L"node");
        FAIL();
    } catch (const std::out_of_range& failure) {
        EXPECT_STREQ(failure.what(), "invalid string position");
    }
    EXPECT_EQ(name.FNameExt(), L"a.b");
}

TEST(Name, StarWithAllExtensionsDoesNotSelectAllFiles) {
    EXPECT_FALSE(Name().AllFiles().AllExt().IsMultiSelectAllFiles());
    EXPECT_TRUE(Name().AllExt().AllFiles().IsMultiSelectAllFiles());
    EXPECT_TRUE(Name().AllAnalyses().IsMultiSelectAnalyses());
    EXPECT_FALSE(Name().Analysis(L"**").IsMultiSelectAnalyses());
    EXPECT_TRUE(Name().AllSteps().IsMultiSelectStep());
    EXPECT_FALSE(Name().Step(lmw::step::Last()).IsMultiSelectStep());
}

TEST(Name, DescriptionNamesWhatIsThere) {
    const TestHost host;
    Name name = Name().ProjectPath(L"C:\\work\\dam.lwz").FNameExt(L"node.csv");
    EXPECT_EQ(name.Step(Step::CreateFromInt(12)).Description(), L"C:\\work\\dam.lwz: node.csv");
    name.Analysis(L"Rapid drawdown");
    EXPECT_EQ(name.Description(), L"C:\\work\\dam.lwz: Rapid drawdown\\12\\node.csv");
    EXPECT_EQ(Name(name).AllSteps().Description(),
              L"C:\\work\\dam.lwz: Rapid drawdown\\*\\node.csv");
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
        const Name& smaller = row.smaller;
        const Name& larger = row.larger;
        EXPECT_LT(smaller.Compare(larger), 0);
        EXPECT_GT(larger.Compare(smaller), 0);
        EXPECT_TRUE(smaller < larger && larger > smaller && smaller != larger);
    }
}

TEST(Name, EqualityIgnoresCaseAndLeadingZeros) {
    EXPECT_EQ(Name().ProjectPath(L"C:\\A.lwz"), Name().ProjectPath(L"c:\\a.lwz"));
    EXPECT_EQ(Name().FName(L"NODE").Ext(L".R2"), Name().FName(L"node").Ext(L".r002"));
    EXPECT_EQ(Name().Ext(L".r0"), Name().Ext(L".r00"));
    EXPECT_NE(Name().Ext(L".r0"), Name().Ext(L".r"));
}

// Texts that provoke every branch of the comparison, close to each other.
std::wstring Text(PropertyRandom& random) {
    static const std::vector<std::wstring> pieces = {L"a",
                                                     L"A",
                                                     L"b",
                                                     L"r",
                                                     L"R",
                                                     L".",
                                                     L"0",
                                                     L"1",
                                                     L"9",
                                                     L"10",
                                                     L"01",
                                                     L"_",
                                                     L"[",
                                                     L"/",
                                                     L"\xE4",
                                                     L"\xE000",
                                                     L"\xFFFF",
                                                     L"\U0001F600",
                                                     std::wstring(1, wchar_t{0xD83D}),
                                                     std::wstring(1, wchar_t{0xDE00}),
                                                     std::wstring(1, L'\0')};
    std::wstring text;
    for (int k = random.Integer(0, 4); k > 0; --k) {
        text += pieces[static_cast<std::size_t>(
            random.Integer(0, static_cast<int>(pieces.size()) - 1))];
    }
    return text;
}

Name RandomName(PropertyRandom& random) {
    const std::vector<Step> steps = {Step(), lmw::step::All(), lmw::step::Init(),
                                     lmw::step::deprecated::Init()};
    Name name;
    if (random.Chance(0.2)) {
        name.ProjectPath(Text(random)).FName(Text(random));
    }
    if (random.Chance(0.3)) {
        name.Analysis(Text(random));
    }
    if (random.Chance(0.2)) {
        name.Run(static_cast<std::uint32_t>(random.Integer(-1, 1)));
    }
    if (random.Chance(0.2)) {
        name.Step(steps[static_cast<std::size_t>(random.Integer(0, 3))]);
    }
    return name.Ext(Text(random));
}

int Sign(int order) {
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

TEST(Name, CompareIsAStrictWeakOrderOverAllTriples) {
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    std::vector<Name> names;
    for (int k = 0; k < 160; ++k) {
        names.push_back(RandomName(random));
    }
    const std::size_t n = names.size();
    std::vector<std::vector<int>> order(n, std::vector<int>(n));
    for (std::size_t a = 0; a < n; ++a) {
        for (std::size_t b = 0; b < n; ++b) {
            order[a][b] = Sign(names[a].Compare(names[b]));
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

}  // namespace
