#include "common/detail/log_line.h"
#include "common/detail/process_arguments.h"
#include "common/log_category.h"
#include "common/log_level.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace {

using namespace lmw::detail;

ProcessArguments Read(std::vector<std::wstring> arguments) {
    arguments.insert(arguments.begin(), L"program");
    return ReadProcessArguments(arguments);
}

TEST(ProcessArguments, SwitchesBeginWithOneSlashOrHyphenInAnyCase) {
    for (const wchar_t* argument : {L"/safemode", L"-safemode", L"/SAFEMODE", L"-SafeMode"}) {
        EXPECT_TRUE(Read({L"other", argument}).safe_mode);
    }
    for (const wchar_t* argument : {L"safemode", L"--safemode", L"/safemodes", L"/ safemode",
                                    L"//safemode", L"/safemode=1", L"\u2013safemode", L"/", L""}) {
        EXPECT_FALSE(Read({argument}).safe_mode);
    }
    EXPECT_TRUE(Read({L"-AssertInteractive"}).assert_interactive);
    EXPECT_FALSE(Read({L"-AssertInteractive"}).safe_mode);
    EXPECT_FALSE(Read({L"assertinteractive"}).assert_interactive);
}

TEST(ProcessArguments, SettingsAreExactlyTwoPieces) {
    const ProcessArguments settings = Read({L"LEVEL=Warning", L"category=io;Mesh", L"x=y"});
    EXPECT_EQ(settings.level, L"Warning");
    EXPECT_EQ(settings.category, L"io;Mesh");
    for (const wchar_t* argument :
         {L"level=a=b", L"level==3", L"level=3=", L"-level=3", L"/level=3", L"--level=3", L"level",
          L" level=3", L"level =3", L"levels=3", L"=level=3"}) {
        EXPECT_EQ(Read({argument}).level, L"");
    }
    EXPECT_EQ(Read({L"level=1", L"level=a=b", L"level=2"}).level, L"2");
    EXPECT_EQ(Read({L"level=1", L"level="}).level, L"");
}

TEST(ProcessArguments, TheProgramsOwnNameIsNone) {
    EXPECT_EQ(ReadProcessArguments(std::vector<std::wstring>{L"level=3"}).level, L"");
    EXPECT_FALSE(ReadProcessArguments(std::vector<std::wstring>{L"/safemode"}).safe_mode);
    EXPECT_EQ(ReadProcessArguments({}).level, L"");
}

TEST(LogLine, ShowsLevelCategoriesMessageAndPlace) {
    const std::wstring text = L"text";
    const int mask = lmw::diag::MakeCategoryMask("line.a;line.b");
    EXPECT_EQ(LogLine({lmw::diag::kWarning, mask, text, "C:\\src\\mesh.cpp", 3, "F"}),
              L"warning [line.a;line.b]: text (mesh.cpp:3, F)");
    EXPECT_EQ(LogLine({-1, 3, text, "", 3, "F"}), L"-1: text (F)");
    EXPECT_EQ(LogLine({0, -1, text, "/src/mesh.cpp", 3, ""}), L"verbose [all]: text (mesh.cpp:3)");
    EXPECT_EQ(LogLine({0, 0, text, "", 0, ""}), L"verbose: text");
}

TEST(LogLine, ShowsControlCharactersAsEscapes) {
    const std::wstring text(L"a\r\nb\tc\x1B[2J\0\x7F\x9B\u00A0C:\\new", 20);
    EXPECT_EQ(LogLine({1, 3, text, "", 0, ""}),
              L"information: a\\r\\nb\\tc\\x1b[2J\\x00\\x7f\\x9b\u00A0C:\\new");
}

TEST(TimeStamp, IsUniversalTimeToTheMillisecondBelow) {
    using namespace std::chrono;
    const system_clock::time_point epoch;
    EXPECT_EQ(TimeStamp(epoch), L"1970-01-01T00:00:00.000Z");
    EXPECT_EQ(TimeStamp(epoch + seconds(1709210096) + microseconds(999999)),
              L"2024-02-29T12:34:56.999Z");
    EXPECT_EQ(TimeStamp(epoch - milliseconds(1)), L"1969-12-31T23:59:59.999Z");
}

}  // namespace
