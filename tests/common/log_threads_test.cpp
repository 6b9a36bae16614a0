// Many threads do everything at once; the thread sanitizer watches.

#include "common/catch_error_sink.h"
#include "common/event_sink.h"
#include "common/log.h"

#include "tests/support/recording_sink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace lmw::diag;

TEST(LogThreads, LogFilterRegisterAndChangeSinksAtOnce) {
    constexpr int kThreads = 8;
    constexpr int kRounds = 200;
    const lmw::test::ScopedRecordingSink sink;
    CatchErrorEventSink::Instance().Reset();
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t] {
            const auto own = std::make_shared<lmw::test::RecordingSink>();
            const std::string name = "threads." + std::to_string(t % 4);
            for (int round = 0; round < kRounds; ++round) {
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
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    LogFilter::Set(kInformation, kDefaultCategories);
    EXPECT_EQ(CatchErrorEventSink::Instance().Count(), kThreads * kRounds);
    std::vector<bool> seen(kThreads * kRounds);
    for (const auto& message : sink->Take()) {
        const auto number = static_cast<std::size_t>(std::stoi(message.text));
        EXPECT_FALSE(seen.at(number));
        seen.at(number) = true;
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), false), 0);
}

}  // namespace
