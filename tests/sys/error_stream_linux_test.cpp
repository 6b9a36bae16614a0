// Standard error as a terminal: a pseudo-terminal takes its place.

#include "common/standard_error_sink.h"
#include "common/sys/error_stream.h"

#include "tests/support/environment.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <string>

namespace {

using namespace lmw::test;

// Standard error is the terminal for the life time of this object.
class TerminalAsErrorStream {
 public:
    TerminalAsErrorStream() {
        EXPECT_TRUE(grantpt(terminal_) == 0 && unlockpt(terminal_) == 0);
        std::array<char, 100> name{};
        EXPECT_EQ(ptsname_r(terminal_, name.data(), name.size()), 0);
        const int user_side = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_GE(dup2(user_side, STDERR_FILENO), 0);
        close(user_side);
    }
    TerminalAsErrorStream(const TerminalAsErrorStream&) = delete;
    TerminalAsErrorStream& operator=(const TerminalAsErrorStream&) = delete;
    ~TerminalAsErrorStream() {
        dup2(saved_, STDERR_FILENO);
        close(saved_);
        close(terminal_);
    }

    // One line as the terminal shows it.
    [[nodiscard]] std::string Line() const {
        std::string line;
        for (char c = '\0'; c != '\n' && read(terminal_, &c, 1) == 1;) {
            line += c;
        }
        return line;
    }

 private:
    int saved_ = dup(STDERR_FILENO);
    int terminal_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
};

TEST(ErrorStream, TerminalsShowTheLevelInColourUnlessToldNotTo) {
    DefineEnvironmentVariable("TERM", "xterm");
    RemoveEnvironmentVariable("NO_COLOR");
    lmw::diag::StandardErrorSink sink(2);
    std::string coloured;
    std::string plain;
    std::string dumb;
    {
        const TerminalAsErrorStream terminal;
        sink.Log(1, 3, L"below the sink's level", "", 0, "");
        sink.Log(2, 3, L"a \u20AC\x1B[2J", "", 0, "");
        coloured = terminal.Line();
        DefineEnvironmentVariable("NO_COLOR", "");
        sink.Log(2, 3, L"b", "", 0, "");
        plain = terminal.Line();
        RemoveEnvironmentVariable("NO_COLOR");
        DefineEnvironmentVariable("TERM", "dumb");
        sink.Log(3, 3, L"c", "", 0, "");
        dumb = terminal.Line();
    }
    EXPECT_EQ(coloured, "\x1B[33mwarning\x1B[0m: a \xE2\x82\xAC\\x1b[2J\r\n");
    EXPECT_EQ(plain, "warning: b\r\n");
    EXPECT_EQ(dumb, "error: c\r\n");
}

}  // namespace
