#include "common/file_sink.h"

#include "common/log.h"
#include "common/log_category.h"
#include "common/sys/text_encoding.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace lmw::diag;

class FileSinkTest : public ::testing::Test {
 protected:
    ~FileSinkTest() override {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }

    [[nodiscard]] std::wstring Path() const { return sys::Widen(path_.string()); }

    [[nodiscard]] std::vector<std::string> Lines() const {
        std::ifstream file(path_, std::ios::binary);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            EXPECT_FALSE(file.eof()) << "the last line has no end";
            lines.push_back(line);
        }
        return lines;
    }

    std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                  ("lmw-log-" + std::to_string(std::random_device()()) + ".txt");
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
    EXPECT_TRUE(std::regex_match(
        lines[0],
        std::regex(time + R"( error \[file\.sink\]: one\\ntwo \(mesh\.cpp:12, Refine\))")))
        << lines[0];
    EXPECT_TRUE(std::regex_match(lines[1], std::regex(time + " 7: B\xC3\xB6schung"))) << lines[1];
}

TEST_F(FileSinkTest, LinesOfManyThreadsAndSinksStayWhole) {
    constexpr int kThreads = 6;
    constexpr int kMessages = 100;
    FileSink first(Path());
    FileSink second(Path());
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int m = 0; m < kMessages; ++m) {
                const std::wstring number = std::to_wstring(t * kMessages + m);
                (t % 2 == 0 ? first : second)
                    .Log(kWarning, 3, L"<" + number + std::wstring(2000, L'x') + L">", "", 0, "");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::string tail(2000, 'x');
    tail += '>';
    std::set<int> numbers;
    for (const std::string& line : Lines()) {
        const std::size_t begin = line.find('<');
        ASSERT_EQ(line.substr(line.find_last_not_of('x', line.size() - 2) + 1), tail);
        numbers.insert(std::stoi(line.substr(begin + 1)));
    }
    EXPECT_EQ(numbers.size(), std::size_t{kThreads * kMessages});
}

TEST_F(FileSinkTest, ReportsAFileThatCannotBeOpenedAndGoesOn) {
    FileSink sink(Path() + L"/no/such/folder.txt");
    EXPECT_EQ(sink.Status().MessageId(), 20526U);
    sink.Log(kError, 3, L"lost", "", 0, "");
    EXPECT_EQ(sink.Status().MessageId(), 20526U);
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
