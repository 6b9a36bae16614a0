#include "common/log.h"

#include "common/catch_error_sink.h"
#include "common/diag.h"
#include "common/event_sink.h"
#include "common/file_sink.h"
#include "common/log_category.h"
#include "common/sys/last_error.h"
#include "common/sys/text_encoding.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/recording_sink.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_host.h"
#include "tests/support/threads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace lmw::diag;
using namespace lmw::test;

class LogTest : public ::testing::Test {
 protected:
    LogTest() { LogFilter::Set(kInformation, kDefaultCategories); }
    ~LogTest() override { LogFilter::Set(kInformation, kDefaultCategories); }

    // The only message since the last call.
    RecordedMessage Message() {
        const std::vector<RecordedMessage> messages = sink_->Take();
        EXPECT_EQ(messages.size(), 1U);
        return messages.size() == 1 ? messages[0] : RecordedMessage{};
    }
    std::wstring Text() { return Message().text; }

    ScopedRecordingSink sink_;
};

TEST_F(LogTest, MacroPassesTheMessageAndItsPlace) {
    const int line = __LINE__ + 1;
    LMW_LOG(kError, 1, L"%d of %s", 3, L"five");
    const RecordedMessage message = Message();
    EXPECT_EQ(message.level, kError);
    EXPECT_EQ(message.category, 1);
    EXPECT_EQ(message.text, L"3 of five");
    EXPECT_NE(message.file.find("log_test.cpp"), std::string::npos);
    EXPECT_EQ(message.line, line);
    EXPECT_EQ(message.function, static_cast<const char*>(__func__));
}

TEST_F(LogTest, MacroIsOneStatement) {
    if (sink_->Take().empty())
        LMW_LOG(kError, 1, L"then");
    else
        LMW_LOG(kError, 1, L"else");
    EXPECT_EQ(Text(), L"then");
}

TEST_F(LogTest, FilteredMessagesEvaluateAndAllocateNothing) {
    int evaluated = 0;
    const auto argument = [&evaluated] {
        ++evaluated;
        return std::wstring(100, L'x');
    };
    LogFilter::Set(kWarning, 8);
    const std::size_t allocations = AllocationsOf([&] {
        LMW_LOG(kInformation, 8, L"%s", argument());
        LMW_LOG(kError, 16, L"%s", argument());
        LMW_LOG(kError, 0, L"%s", argument());
        logprintf("%s", "never");
    });
    EXPECT_EQ(evaluated, 0);
    EXPECT_TRUE(sink_->Take().empty());
    EXPECT_EQ(allocations, 0U);  // outside a library that counts for itself this is half a proof
    LMW_LOG(kWarning, 8, L"%s", argument());
    EXPECT_EQ(evaluated, 1);
}

TEST_F(LogTest, FinishedTextIsNeverAFormat) {
    LMW_LOG(kError, 1, std::wstring(L"100%d %n %s"));
    EXPECT_EQ(Text(), L"100%d %n %s");
    LMW_LOG(kError, 1, std::string("100%d %n %s"));
    EXPECT_EQ(Text(), L"100%d %n %s");
    const std::wstring from_outside = L"%s%s%n";
    LMW_LOG(kError, 1, L"file %s", from_outside);
    EXPECT_EQ(Text(), L"file %s%s%n");
}

TEST_F(LogTest, NarrowFormatsAreWidened) {
    const std::wstring umlauts = L"B\u00F6schung";
    const std::string narrow = sys::Narrow(umlauts + L" %s %s");
    LMW_LOG(kError, 1, narrow.c_str(), umlauts, sys::Narrow(umlauts));
    EXPECT_EQ(Text(), umlauts + L" " + umlauts + L" " + umlauts);
    LMW_LOG(kError, 1, static_cast<const char*>(nullptr));
    EXPECT_EQ(Text(), L"");
}

TEST_F(LogTest, PrintfLogsInformationInTheDefaultCategories) {
    logprintf("%s %d%%", "done", 40);
    const RecordedMessage message = Message();
    EXPECT_EQ(message.level, 1);
    EXPECT_EQ(message.category, 3);
    EXPECT_EQ(message.text, L"done 40%");
    LogFilter::Set(kWarning, kAllCategories);
    logprintf("filtered");
    EXPECT_TRUE(sink_->Take().empty());
}

TEST_F(LogTest, HandlerDoesNotAskTheFilter) {
    LogFilter::Set(kNoLevel, 0);
    LogMacroHandler(kVerbose, 0, nullptr, 7, nullptr)(L"anyway");
    const RecordedMessage message = Message();
    EXPECT_EQ(message.file + message.function, "");
    EXPECT_EQ(message.line, 7);
}

TEST_F(LogTest, TheLastErrorSurvivesAMessage) {
    class Spoiler : public IEventSink {
        void Log(int, int, const std::wstring&, const char*, int, const char*) override {
            sys::SetLastError(13);
        }
    };
    const auto spoiler = std::make_shared<Spoiler>();
    EventSinks::Add(spoiler);
    sys::SetLastError(2);
    LMW_LOG(kError, 1, L"between a failure and its report");
    EXPECT_EQ(sys::LastError(), 2U);
    EventSinks::Remove(*spoiler);
}

TEST_F(LogTest, SinksAreCalledOnceEachUntilTheyAreRemoved) {
    const auto second = std::make_shared<RecordingSink>();
    EventSinks::Add(second);
    EventSinks::Add(second);
    EventSinks::Add(nullptr);
    LMW_LOG(kError, 1, L"both");
    EXPECT_EQ(Text(), L"both");
    EXPECT_EQ(second->Take().size(), 1U);
    EXPECT_TRUE(EventSinks::Remove(*second));
    EXPECT_FALSE(EventSinks::Remove(*second));
    LMW_LOG(kError, 1, L"first only");
    EXPECT_TRUE(second->Take().empty());
}

TEST_F(LogTest, ASinkThatThrowsLogsOrRemovesItselfHarmsNobody) {
    class Troublemaker : public IEventSink {
        void Log(int level, int category, const std::wstring&, const char*, int,
                 const char*) override {
            LMW_LOG(level, category, L"without end");
            EventSinks::Remove(*this);
            throw std::runtime_error("no room");
        }
    };
    for (int round = 0; round < 2; ++round) {
        auto troublemaker = std::make_shared<Troublemaker>();
        const std::weak_ptr<Troublemaker> alive = troublemaker;
        // Before the recording sink and without another owner than the registry.
        const auto last = std::make_shared<RecordingSink>();
        EventSinks::Add(std::move(troublemaker));
        EventSinks::Add(last);
        LMW_LOG(kError, 1, L"message");
        EXPECT_EQ(Text(), L"message");
        EXPECT_EQ(last->Take().size(), 1U);
        EXPECT_TRUE(alive.expired());
        EventSinks::Remove(*last);
    }
}

TEST_F(LogTest, CatchErrorSinkKeepsTheLastErrorAndCounts) {
    CatchErrorEventSink& sink = CatchErrorEventSink::Instance();
    sink.Reset();
    LMW_LOG(kCritical, 1, L"first");
    LMW_LOG(kError, 2, L"second");
    LMW_LOG(kWarning, 1, L"no error");
    LMW_LOG(kError, 64, L"filtered");
    EXPECT_EQ(&CatchErrorEventSink::Instance(), &sink);  // added once: each error counts once
    EXPECT_EQ(sink.Count(), 2);
    EXPECT_EQ(sink.LastLevel(), kError);
    EXPECT_EQ(sink.LastCategory(), 2);
    sink.Reset();
    EXPECT_EQ(sink.Count(), 0);
    EXPECT_EQ(sink.LastLevel(), 0);
    EXPECT_EQ(sink.LastCategory(), 0);
}

TEST(Diagnostics, ContextAndValuesAsText) {
    EXPECT_EQ(FormatContext("Refine", 12, "mesh %s.cpp"),
              L"Function: Refine\nLine: 12(mesh %s.cpp)");
    EXPECT_EQ(FormatContext(nullptr, -1, nullptr), L"Function: \nLine: -1()");
    TestHost host;
    host.SetText(4711, L"the host's");
    EXPECT_EQ(to_wstring(4711), L"the host's");
    EXPECT_EQ(to_wstring("narrow"), L"narrow");
    EXPECT_EQ(to_wstring(nullptr), L"");
}

TEST(Diagnostics, FlagsAreSetForTheProcessEachByItself) {
    const bool interactive = IsAssertInteractive();  // true under a debugger
    for (const bool on : {true, false}) {
        SetSafeMode(on);
        SetAssertInteractive(!on);
        EXPECT_EQ(IsSafeMode(), on);
        EXPECT_EQ(IsAssertInteractive(), !on);
    }
    SetAssertInteractive(interactive);
}

// The thread sanitizer watches.
TEST(LogThreads, LogFilterRegisterAndChangeSinksAtOnce) {
    constexpr std::size_t kThreads = 8;
    constexpr std::size_t kRounds = 200;
    const lmw::test::ScopedRecordingSink sink;
    CatchErrorEventSink::Instance().Reset();
    InThreads(kThreads, [](std::size_t t) {
        const auto own = std::make_shared<lmw::test::RecordingSink>();
        const std::string name = "threads." + std::to_string(t % 4);
        for (std::size_t round = 0; round < kRounds; ++round) {
            const int mask = MakeCategoryMask(name + ";threads.all");
            EXPECT_EQ(CategoryNames(mask & MakeCategoryMask(name)), name);
            LogFilter::Set(round % 2 == 0 ? L"warning" : L"error", L"threads.all");
            EventSinks::Add(own);
            LMW_LOG(kError, kEveryFilter, L"%d %s", t * kRounds + round, name);
            LMW_LOG(kInformation, mask, L"filtered");
            EXPECT_TRUE(EventSinks::Remove(*own));
            EXPECT_FALSE(own->Take().empty());
        }
    });
    LogFilter::Set(kInformation, kDefaultCategories);
    EXPECT_EQ(CatchErrorEventSink::Instance().Count(), int{kThreads * kRounds});
    std::vector<bool> seen(kThreads * kRounds);
    for (const auto& message : sink->Take()) {
        const auto number = static_cast<std::size_t>(std::stoi(message.text));
        EXPECT_FALSE(seen.at(number));
        seen.at(number) = true;
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), false), 0);
}

class FileSinkTest : public ::testing::Test {
 protected:
    [[nodiscard]] std::wstring Path() const { return folder_ / "log.txt"; }
    [[nodiscard]] std::vector<std::string> Lines() const {
        std::istringstream file(folder_.Read("log.txt"));
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            EXPECT_FALSE(file.eof()) << "the last line has no end";
            lines.push_back(line);
        }
        return lines;
    }

 private:
    ScratchFolder folder_;
};

TEST_F(FileSinkTest, AppendsOneLineWithTimeLevelCategoryAndPlace) {
    const int category = MakeCategoryMask("file.sink");
    {
        FileSink sink(Path());
        EXPECT_TRUE(sink.Status().Succeeded());
        sink.Log(kError, category, L"one\ntwo", "folder/mesh.cpp", 12, "Refine");
    }
    {
        FileSink again(Path());
        again.Log(7, 3, L"B\u00F6schung", "", 0, "");
    }
    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 2U);
    const std::string time = R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)";
    const std::string place = R"( error \[file\.sink\]: one\\ntwo \(mesh\.cpp:12, Refine\))";
    EXPECT_TRUE(std::regex_match(lines[0], std::regex(time + place))) << lines[0];
    EXPECT_TRUE(std::regex_match(lines[1], std::regex(time + " 7: B\xC3\xB6schung"))) << lines[1];
}

TEST_F(FileSinkTest, LinesOfManyThreadsAndSinksStayWhole) {
    constexpr std::size_t kThreads = 6;
    constexpr std::size_t kMessages = 100;
    FileSink first(Path());
    FileSink second(Path());
    InThreads(kThreads, [&](std::size_t t) {
        for (std::size_t m = 0; m < kMessages; ++m) {
            const std::wstring number = std::to_wstring(t * kMessages + m);
            (t % 2 == 0 ? first : second)
                .Log(kWarning, 3, L"<" + number + std::wstring(2000, L'x') + L">", "", 0, "");
        }
    });
    std::string tail(2000, 'x');
    tail += '>';
    std::set<int> numbers;
    for (const std::string& line : Lines()) {
        const std::size_t begin = line.find('<');
        ASSERT_EQ(line.substr(line.find_last_not_of('x', line.size() - 2) + 1), tail);
        numbers.insert(std::stoi(line.substr(begin + 1)));
    }
    EXPECT_EQ(numbers.size(), kThreads * kMessages);
}

TEST_F(FileSinkTest, ReportsAFileThatCannotBeOpenedAndGoesOn) {
    FileSink sink(Path() + L"/no/such/folder.txt");
    EXPECT_EQ(sink.Status().MessageId(), 20526U);
    sink.Log(kError, 3, L"lost", "", 0, "");
}

TEST_F(FileSinkTest, ReportsAFullDisk) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "this platform has no full device";
    }
    FileSink sink(L"/dev/full");
    EXPECT_TRUE(sink.Status().Succeeded());
    sink.Log(kError, 3, L"lost", "", 0, "");
    EXPECT_EQ(sink.Status().MessageId(), 20541U);
}

}  // namespace
