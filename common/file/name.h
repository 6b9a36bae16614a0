#pragma once

// The address of a piece of project data: which project archive on disk, which analysis in it,
// which run and step, which file. Also a selection, by its wildcards. Surprising: analyses are
// told apart by case, everything else is not.

#include "common/export.h"
#include "common/file/step.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace doc::file {

/// A value: copies are deep, nothing is looked up on disk. The project path is that of the suite's
/// projects, with "\" and ":" between its parts on every platform; one with "/" is a file name as a
/// whole. Not shared between threads without a lock; IsEmpty() of different names may be called
/// from any threads.
///
/// 1. Compare is a strict weak order over all names, whatever text they hold, and does not depend
///    on a locale: a map keyed by names keeps its order.
/// 2. Names are equal when Compare gives 0: project paths, file names and extensions are compared
///    with the ASCII letters in lower case, analyses exactly, and the digits of an extension as a
///    number of any length (.r9 < .r10, .R2 == .r02).
/// 3. Setters of one part of the project path leave the other parts as they are.
///
/// Example:
///     doc::file::Name name;
///     name.ProjectPath(L"C:\\work\\dam.lwz").Analysis(L"Rapid drawdown");
///     name.Step(Step::CreateFromInt(12)).FNameExt(L"node.csv");
///     name.Description();  // C:\work\dam.lwz: Rapid drawdown\12\node.csv
class LMW_API Name {
 public:
    enum : std::uint32_t { kNoRun = 0xFFFFFFFF };

    /// Empty: no texts, no run, the step unset.
    Name() = default;

    [[nodiscard]] std::wstring ProjectPath() const { return project_path_; }
    /// The parts of the project path (sys::file::SplitPath).
    [[nodiscard]] std::wstring ProjectDirectory() const;
    [[nodiscard]] std::wstring ProjectFName() const;
    [[nodiscard]] std::wstring ProjectExt() const;
    [[nodiscard]] std::wstring ProjectFNameExt() const;
    [[nodiscard]] std::wstring Analysis() const { return analysis_; }
    [[nodiscard]] std::uint32_t Run() const { return run_; }
    [[nodiscard]] ::Step Step() const { return step_; }
    [[nodiscard]] std::wstring FName() const { return fname_; }
    [[nodiscard]] std::wstring Ext() const { return ext_; }
    [[nodiscard]] std::wstring FNameExt() const { return fname_ + ext_; }
    /// What users read: "<project path>: <analysis>\<step>\<file name><extension>" with the parts
    /// that are there; a run follows its analysis by message 23262.
    [[nodiscard]] std::wstring Description() const;
    /// The same without the project: under this name the piece is kept in its archive. Surprising:
    /// names that are equal by property 2 may have different ones, and with a run it depends on the
    /// language of the host's message 23262. Of a selection it names no entry.
    [[nodiscard]] std::wstring EntryName() const;

    Name& ProjectPath(std::wstring path);
    /// A directory that ends neither in "\" nor in ":" gets a "\", or it would run into the name.
    Name& ProjectDirectory(std::wstring_view directory);
    Name& ProjectFName(std::wstring_view fname);
    Name& ProjectExt(std::wstring_view ext);
    Name& Analysis(std::wstring name);
    Name& Run(std::uint32_t run);
    Name& Step(::Step step);
    Name& FName(std::wstring fname);
    Name& Ext(std::wstring ext);
    /// Cuts `text` at its last "." into file name and extension; the empty text empties both, "*"
    /// selects all files.
    /// By design: any other text without a "." throws std::out_of_range ("invalid string position")
    /// and changes nothing. Callers always have an extension here; guessing one for them would
    /// address another file.
    Name& FNameExt(std::wstring_view text);

    /// File name "*" and no extension.
    Name& AllFiles();
    Name& AllAnalyses();
    Name& AllSteps();
    /// Extension ".*".
    Name& AllExt();
    Name& ClearAnalysis();
    /// Empties file name and extension.
    Name& ClearFile();
    void Clear();

    [[nodiscard]] bool IsMultiSelectAnalyses() const { return analysis_ == L"*"; }
    [[nodiscard]] bool IsMultiSelectStep() const { return step_ == lmw::step::All(); }
    /// By design: false for "*" with the extension ".*". That pair selects by file name, and is
    /// answered by the entry list; this test is for the selection of everything.
    [[nodiscard]] bool IsMultiSelectAllFiles() const { return fname_ == L"*" && ext_.empty(); }
    /// Whether it compares equal to a default-constructed name.
    [[nodiscard]] bool IsEmpty() const;

    /// Below, at or above zero. The first difference decides: project path, analysis (by UTF-16
    /// code units), run (unsigned: no run comes last), step (by its signed code: all steps, the
    /// older initial step, 0, the ordinary ones, the last, unset), file name, extension. Where the
    /// first decimal digits of both extensions stand at the same position, what is before them
    /// decides, then the digits as an integer, then the rest; otherwise the whole texts.
    /// By design: analyses are told apart by case and nothing else is. Analyses are keyed by their
    /// exact names; folding them would make one entry of "Stage" and "stage".
    [[nodiscard]] int Compare(const Name& other) const;

    friend bool operator==(const Name& a, const Name& b) { return a.Compare(b) == 0; }
    friend bool operator!=(const Name& a, const Name& b) { return a.Compare(b) != 0; }
    friend bool operator<(const Name& a, const Name& b) { return a.Compare(b) < 0; }
    friend bool operator>(const Name& a, const Name& b) { return a.Compare(b) > 0; }

 private:
    std::wstring project_path_;
    std::wstring analysis_;
    std::uint32_t run_ = kNoRun;
    ::Step step_;
    std::wstring fname_;
    std::wstring ext_;
};

}  // namespace doc::file
