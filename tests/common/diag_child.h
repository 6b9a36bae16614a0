#pragma once

// What the program that the process tests start can do (diag_child.cpp). Its first argument says
// which; it answers on its standard streams or by its exit code.

namespace lmw::test {

/// Prints the settings in force as one line.
inline constexpr const char* kPrintSettings = "print-settings";
/// Many threads use everything for the first time at once; prints "agreed" when they all agree.
inline constexpr const char* kRaceFirstUse = "race-first-use";
/// Registers more categories than there are bits; prints what they got.
inline constexpr const char* kExhaustCategories = "exhaust-categories";
/// Logs one message of each level, and again while static objects are destroyed.
inline constexpr const char* kLogUntilTheEnd = "log-until-the-end";
/// Exits with kYes of child_process.h when assertions are interactive, else with kNo.
inline constexpr const wchar_t* kReportAssertInteractive = L"report-assert-interactive";

}  // namespace lmw::test
