#include "common/file/name.h"

#include "common/file/detail/text_order.h"
#include "common/file/split_path.h"
#include "common/message_text.h"

#include <stdexcept>
#include <utility>

namespace doc::file {

namespace detail = lmw::file::detail;
using sys::file::PathParts;
using sys::file::SplitPath;

std::wstring Name::ProjectDirectory() const {
    return SplitPath(project_path_).directory;
}

std::wstring Name::ProjectFName() const {
    return SplitPath(project_path_).fname;
}

std::wstring Name::ProjectExt() const {
    return SplitPath(project_path_).ext;
}

std::wstring Name::ProjectFNameExt() const {
    const PathParts parts = SplitPath(project_path_);
    return parts.fname + parts.ext;
}

std::wstring Name::Description() const {
    return project_path_ + L": " + EntryName();
}

std::wstring Name::EntryName() const {
    std::wstring text;
    if (!analysis_.empty()) {
        text += run_ == kNoRun ? analysis_
                               : lmw::MessageText(23262, {analysis_, std::to_wstring(run_)});
        text += L'\\';
        const StepNumber number = step_.AsStepNumber();
        if (number != StepNumber::kNone && ext_.find(L'*') == std::wstring::npos) {
            text += std::to_wstring(number.value) + L'\\';
        } else if (IsMultiSelectStep()) {
            text += L"*\\";
        }
    }
    return text + fname_ + ext_;
}

Name& Name::ProjectPath(std::wstring path) {
    project_path_ = std::move(path);
    return *this;
}

Name& Name::ProjectDirectory(std::wstring_view directory) {
    const PathParts parts = SplitPath(project_path_);
    std::wstring path(directory);
    if (!path.empty() && path.back() != L'\\' && path.back() != L':') {
        path += L'\\';
    }
    return ProjectPath(std::move(path) + parts.fname + parts.ext);
}

Name& Name::ProjectFName(std::wstring_view fname) {
    PathParts parts = SplitPath(project_path_);
    return ProjectPath(std::move(parts.directory.append(fname)) + parts.ext);
}

Name& Name::ProjectExt(std::wstring_view ext) {
    PathParts parts = SplitPath(project_path_);
    return ProjectPath(std::move(parts.directory) + parts.fname + std::wstring(ext));
}

Name& Name::Analysis(std::wstring name) {
    analysis_ = std::move(name);
    return *this;
}

Name& Name::Run(std::uint32_t run) {
    run_ = run;
    return *this;
}

Name& Name::Step(::Step step) {
    step_ = step;
    return *this;
}

Name& Name::FName(std::wstring fname) {
    fname_ = std::move(fname);
    return *this;
}

Name& Name::Ext(std::wstring ext) {
    ext_ = std::move(ext);
    return *this;
}

Name& Name::FNameExt(std::wstring_view text) {
    if (text.empty()) {
        fname_.clear();
        ext_.clear();
        return *this;
    }
    if (text == L"*") {
        return AllFiles();
    }
    const std::size_t dot = text.rfind(L'.');
    if (dot == std::wstring_view::npos) {
        throw std::out_of_range("invalid string position");
    }
    std::wstring ext(text.substr(dot));
    fname_ = text.substr(0, dot);
    ext_ = std::move(ext);
    return *this;
}

Name& Name::AllFiles() {
    ext_.clear();
    return FName(L"*");
}

Name& Name::AllAnalyses() {
    return Analysis(L"*");
}

Name& Name::AllSteps() {
    return Step(lmw::step::All());
}

Name& Name::AllExt() {
    return Ext(L".*");
}

Name& Name::ClearAnalysis() {
    return Analysis({});
}

Name& Name::ClearFile() {
    return FNameExt({});
}

void Name::Clear() {
    *this = Name();
}

bool Name::IsEmpty() const {
    static const Name& empty = *new Name();  // never freed: names may be asked during shutdown
    return Compare(empty) == 0;
}

int Name::Compare(const Name& other) const {
    if (const int order = detail::CompareFolded(project_path_, other.project_path_); order != 0) {
        return order;
    }
    if (const int order = detail::CompareUnits(analysis_, other.analysis_); order != 0) {
        return order;
    }
    if (run_ != other.run_) {
        return run_ < other.run_ ? -1 : 1;
    }
    const auto code = static_cast<std::int32_t>(step_.raw());
    const auto other_code = static_cast<std::int32_t>(other.step_.raw());
    if (code != other_code) {
        return code < other_code ? -1 : 1;
    }
    if (const int order = detail::CompareFolded(fname_, other.fname_); order != 0) {
        return order;
    }
    return detail::CompareNumericTail(ext_, other.ext_);
}

}  // namespace doc::file
