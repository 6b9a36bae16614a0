#pragma once

// Starting the test programs' child (child.cpp) in ways that the standard library has no words for.
// One source per platform.

#include <string>
#include <vector>

namespace lmw::test {

/// The first argument of the child: what it does.
inline constexpr const wchar_t* kCompareArguments = L"compare-arguments";
inline constexpr const wchar_t* kReportDebugger = L"report-debugger";

/// Exit codes of the child.
inline constexpr int kYes = 3;
inline constexpr int kNo = 4;

/// The arguments that follow `kCompareArguments`: RunChildWithArguments passes them, the child
/// compares them with what sys::CommandLine says and exits with kYes when they are equal.
inline std::vector<std::wstring> DifficultArguments() {
    return {L"", L"two words", L"say \"so\"", L"end\\", L"a\\\\\"b", L"\u00E4\u20AC\U0001F600"};
}

/// Runs the child and returns its exit code; -1 when it cannot be started or is killed.
int RunChildWithArguments();
int RunChild(const wchar_t* mode);
/// The same, attached to the calling process as its debugger.
int RunChildUnderDebugger(const wchar_t* mode);

}  // namespace lmw::test
