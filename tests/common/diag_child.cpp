// The program that the process tests start: what diagnostics do depends on how a process is started
// and on what it uses first, so each answer needs a process of its own.

#include "tests/common/diag_child.h"

#include "common/app/feature.h"
#include "common/catch_error_sink.h"
#include "common/diag.h"
#include "common/event_sink.h"
#include "common/log.h"

#include "tests/support/threads.h"
#include "tests/sys/child_process.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using namespace lmw::diag;

class LogsWhenDestroyed {
 public:
    LogsWhenDestroyed(bool enabled, const char* name) : enabled_(enabled), name_(name) {}
    LogsWhenDestroyed(const LogsWhenDestroyed&) = delete;
    LogsWhenDestroyed& operator=(const LogsWhenDestroyed&) = delete;
    ~LogsWhenDestroyed() {
        if (enabled_) {
            const DeclareCategoryMask category("late");
            LMW_LOG(kError, category.Mask() | kEveryFilter, "%s destroyed", name_);
        }
    }

    void Enable() { enabled_ = true; }

 private:
    bool enabled_;
    const char* name_;
};

LogsWhenDestroyed before_everything(false, "first static object");

int PrintSettings() {
    std::cout << "level=" << LogFilter::MinLevel() << " mask=" << LogFilter::CategoryMask()
              << " names=" << CategoryNames(LogFilter::CategoryMask()) << " safe=" << IsSafeMode()
              << " interactive=" << IsAssertInteractive()
              << " diagnostic=" << lmw::feature::IsDiagnosticMode()
              << " traps=" << lmw::feature::IsDiagnosticFpuTrapsEnabled() << '\n';
    return EXIT_SUCCESS;
}

struct FirstAnswers {
    int level = 0;
    int mask = 0;
    bool safe = false;
    const void* catcher = nullptr;
    const void* standard = nullptr;

    bool operator==(const FirstAnswers&) const = default;
};

int RaceFirstUse() {
    constexpr std::size_t kThreads = 16;
    std::atomic<std::size_t> waiting = 0;
    std::vector<FirstAnswers> answers(kThreads);
    lmw::test::InThreads(kThreads, [&](std::size_t t) {
        ++waiting;
        while (waiting < kThreads) {  // so that all start together
            std::this_thread::yield();
        }
        LMW_LOG(kVerbose, kEveryFilter, "filtered by the command line");
        answers[t] = {LogFilter::MinLevel(), LogFilter::CategoryMask(), IsSafeMode(),
                      &CatchErrorEventSink::Instance(), EventSinks::Default().get()};
        LMW_LOG(kError, MakeCategoryMask("io"), "error");
    });
    const auto agreed =
        std::count(answers.begin(), answers.end(), answers[0]) == std::ptrdiff_t{kThreads};
    const auto& catcher = CatchErrorEventSink::Instance();
    std::cout << (agreed ? "agreed" : "disagreed") << " on level " << answers[0].level << ", "
              << catcher.Count() << " errors in " << CategoryNames(catcher.LastCategory()) << '\n';
    return EXIT_SUCCESS;
}

int ExhaustCategories() {
    std::set<int> masks;
    int bits = 0;
    for (int index = 0; index < 28; ++index) {
        const int mask = MakeCategoryMask("category" + std::to_string(index));
        masks.insert(mask);
        bits |= mask;
    }
    const bool in_order = MakeCategoryMask("category0") == 8 && MakeCategoryMask("category1") == 16;
    std::cout << masks.size() << " masks, bits " << std::hex << bits << std::dec
              << (in_order ? " in order" : " out of order") << ", further "
              << MakeCategoryMask("further") << ", "
              << (IsLogged(kWarning, MakeCategoryMask("further")) ? "visible" : "invisible")
              << ", known " << MakeCategoryMask("category27") << ", registered "
              << RegisteredCategories().size() << ", name " << CategoryNames(8 | 3) << '\n';
    return EXIT_SUCCESS;
}

int LogUntilTheEnd() {
    before_everything.Enable();
    CatchErrorEventSink::Instance();
    static LogsWhenDestroyed after_the_catcher(true, "last static object");
    for (int level = kVerbose; level <= kCritical; ++level) {
        LogMacroHandler(level, MakeCategoryMask("io"), "folder/child.cpp", 7, "F")(
            L"level %d \u00E4\n", level);
    }
    return EXIT_SUCCESS;
}

int ReportAssertInteractive() {
    // Without the library's and the sanitizers' work at exit, which a debugger would disturb.
    std::_Exit(IsAssertInteractive() ? lmw::test::kYes : lmw::test::kNo);
}

}  // namespace

int main(int argc, char** argv) {
    const std::map<std::string_view, int (*)()> modes = {
        {lmw::test::kPrintSettings, PrintSettings},
        {lmw::test::kRaceFirstUse, RaceFirstUse},
        {lmw::test::kExhaustCategories, ExhaustCategories},
        {lmw::test::kLogUntilTheEnd, LogUntilTheEnd},
        {"report-assert-interactive", ReportAssertInteractive}};
    const auto mode = modes.find(argc > 1 ? argv[1] : "");
    return mode != modes.end() ? mode->second() : EXIT_FAILURE;
}
