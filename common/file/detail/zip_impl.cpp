#include "common/file/detail/zip_impl.h"

#include "common/errors.h"
#include "common/file/detail/archive_text.h"
#include "common/file/detail/central_directory.h"
#include "common/str/fill_template.h"
#include "common/sys/text_encoding.h"
#include "common/system_error.h"

#include <algorithm>
#include <array>
#include <utility>

namespace sys::file {

namespace detail = lmw::file::detail;

namespace {

constexpr std::size_t kLongestText = 0xFFFF;  // bytes of a name or of the comment

gtl::status InvalidName(std::string_view name) {
    return LmwError::File::invalid_path(detail::ShownName(name));
}

// The archive library refuses control characters in UTF-8 text, but only when it writes.
bool HasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\r' && c != '\n';
    });
}

gtl::status NameIsTaken(const std::wstring& archive, std::string_view name) {
    return LmwError::File::write(
        archive, L"It already holds an entry named \"" + detail::ShownName(name) + L"\".");
}

}  // namespace

gtl::status ErrorExtracting(const std::wstring& name, const std::wstring& cause) {
    const std::array<std::wstring, 2> arguments = {name, cause};
    return gtl::status::FromText(str::fmt::FillTemplate(
        cause.empty() ? L"Error extracting file: %s" : L"Error extracting file: %s. Cause: %s",
        arguments));
}

gtl::status ZipImpl::OpenFile(const std::wstring& path, zip::CompactMode::Type compact_mode) {
    compact_mode_ = compact_mode;
    const std::wstring real_path = ResolvedPath(path);
    if (KindOfPath(real_path) == PathKind::kNothing) {
        // An archive that comes into being, or into sight, meanwhile stays and is opened.
        if (gtl::status result = detail::MakeEmptyArchive(real_path);
            result.Failed() && KindOfPath(real_path) == PathKind::kNothing) {
            return result;
        }
    }
    if (IsMarkedReadOnly(real_path)) {
        return gtl::status(20537, path);
    }
    file_ = new FileInputStream(real_path, Sharing::kReaders);
    stream_ = InputStream(file_);
    if (gtl::status result = file_->OpenStatus(); result.Failed()) {
        return result;
    }
    contents_.emplace(real_path);
    return Load_();
}

gtl::status ZipImpl::OpenStream(const InputStream& stream) {
    stream_ = stream;
    return Load_();
}

gtl::status ZipImpl::Load_() {
    reader_.Close();
    plan_ = {};
    ids_by_name_.clear();
    changed_ = false;
    count_ = 0;
    if (file_ != nullptr) {
        contents_.emplace(file_->Name());
        if (gtl::status result = file_->State(state_); result.Failed()) {
            return result;
        }
    }
    if (gtl::status result = reader_.Open(stream_); result.Failed()) {
        return result;
    }
    count_ = reader_.Count();
    plan_.comment = reader_.Comment();
    plan_.entries.resize(static_cast<std::size_t>(count_));
    ids_by_name_.reserve(plan_.entries.size());
    for (Id id = 0; id < count_; ++id) {
        detail::EntryPlan& entry = plan_.entries[static_cast<std::size_t>(id)];
        entry.in_archive = true;
        entry.name = reader_.Name(id);
        ids_by_name_.emplace(detail::WrittenName(detail::WideFromArchive(entry.name)), id);
    }
    return {};
}

ZipImpl::Ids ZipImpl::AllIds() const {
    Ids ids;
    ids.reserve(static_cast<std::size_t>(count_));
    for (Id id = 0; id < plan_.entries.size(); ++id) {
        if (IsValid(id)) {
            ids.push_back(id);
        }
    }
    return ids;
}

std::wstring ZipImpl::Name(Id id) const {
    return detail::ShownName(Entry_(id).name);
}

bool ZipImpl::IsFolder(Id id) const {
    const std::string& name = Entry_(id).name;
    return !name.empty() && (name.back() == '/' || name.back() == '\\');
}

std::uint64_t ZipImpl::Size(Id id) const {
    const detail::EntryPlan& entry = Entry_(id);
    if (!entry.content.has_value()) {
        return reader_.ClaimedSize(id);
    }
    std::uint64_t size = 0;
    entry.content->stream->Size(size).Ignore();
    return size;
}

std::uint64_t ZipImpl::PackedSize(Id id) const {
    return Entry_(id).content.has_value() ? 0 : reader_.PackedSize(id);
}

bool ZipImpl::IsEncrypted(Id id) const {
    const detail::EntryPlan& entry = Entry_(id);
    return entry.content.has_value() ? entry.password != nullptr : reader_.IsEncrypted(id);
}

std::wstring ZipImpl::Comment() const {
    return detail::WideFromArchive(plan_.comment);
}

gtl::status ZipImpl::CheckName_(const std::string& name) const {
    if (name.empty() || name.size() > kLongestText || name.back() == '/' ||
        HasControlCharacter(name)) {
        return InvalidName(name);
    }
    return {};
}

gtl::status ZipImpl::Add(const std::wstring& source_path, std::wstring_view name) {
    detail::EntryPlan entry;
    entry.name = detail::WrittenName(name);
    if (gtl::status result = CheckName_(entry.name); result.Failed()) {
        return result;
    }
    if (ids_by_name_.contains(entry.name)) {
        return NameIsTaken(ArchiveName(), entry.name);
    }
    if (gtl::status result = contents_->Take(source_path, entry.content.emplace());
        result.Failed()) {
        return result;
    }
    entry.password = password_;
    const Id id = plan_.entries.size();
    ids_by_name_.emplace(entry.name, id);
    plan_.entries.push_back(std::move(entry));
    ++count_;
    changed_ = true;
    return {};
}

gtl::status ZipImpl::Replace(Id id, const std::wstring& source_path, std::wstring_view name) {
    if (!IsValid(id)) {
        return ErrorExtracting(std::to_wstring(id), L"file not found");
    }
    const std::string old_key = detail::WrittenName(detail::WideFromArchive(Entry_(id).name));
    const std::string new_name = name.empty() ? old_key : detail::WrittenName(name);
    if (gtl::status result = CheckName_(new_name); result.Failed()) {
        return result;
    }
    const auto same_name = ids_by_name_.find(new_name);
    if (same_name != ids_by_name_.end() && same_name->second != id && new_name != old_key) {
        return NameIsTaken(ArchiveName(), new_name);
    }
    detail::TakenContent content;
    if (gtl::status result = contents_->Take(source_path, content); result.Failed()) {
        return result;
    }
    detail::EntryPlan& entry = plan_.entries[static_cast<std::size_t>(id)];
    if (new_name != old_key) {
        const auto old = ids_by_name_.find(old_key);
        if (old != ids_by_name_.end() && old->second == id) {
            ids_by_name_.erase(old);
        }
        ids_by_name_.emplace(new_name, id);
        entry.renamed = entry.renamed || entry.in_archive;
        entry.name = new_name;
    }
    entry.content = std::move(content);
    entry.password = password_;
    changed_ = true;
    return {};
}

void ZipImpl::Delete(Id id) {
    detail::EntryPlan& entry = plan_.entries[static_cast<std::size_t>(id)];
    const auto named = ids_by_name_.find(detail::WrittenName(detail::WideFromArchive(entry.name)));
    if (named != ids_by_name_.end() && named->second == id) {
        ids_by_name_.erase(named);
    }
    entry.deleted = true;
    entry.content.reset();
    --count_;
    changed_ = true;
}

gtl::status ZipImpl::SetComment(std::wstring_view text) {
    std::string comment = detail::ArchiveText(text);
    if (comment.size() > kLongestText) {
        return LmwError::File::write(ArchiveName(), L"The comment is longer than 65535 bytes.");
    }
    if (HasControlCharacter(comment)) {
        return LmwError::File::write(ArchiveName(), L"The comment holds a control character.");
    }
    if (comment != plan_.comment) {
        plan_.comment = std::move(comment);
        plan_.comment_changed = true;
        changed_ = true;
    }
    return {};
}

gtl::status ZipImpl::SetPassword(std::wstring_view password) {
    std::string narrow = Narrow(password);
    std::wstring back = Widen(narrow);
    const bool is_usable = back == password && narrow.find('\0') == std::string::npos;
    detail::Wipe(back);
    if (!is_usable) {
        detail::Wipe(narrow);
        return gtl::status(27578, ArchiveName());
    }
    password_ = narrow.empty() ? nullptr : std::make_shared<const detail::Secret>(narrow);
    return {};
}

gtl::status ZipImpl::Read(Id id, detail::IByteSink& sink) const {
    const detail::EntryPlan& entry = Entry_(id);
    if (entry.content.has_value()) {
        return detail::CopyStream(*entry.content->stream, sink);
    }
    std::wstring cause;
    gtl::status result =
        reader_.Read(id, password_ != nullptr ? password_->Text() : nullptr, sink, cause);
    return result.Succeeded() || cause.empty() ? result : ErrorExtracting(Name(id), cause);
}

bool ZipImpl::HasGaps() const {
    detail::OrdinaryDirectory directory;
    return directory.Read(*stream_) && directory.HasGaps(*stream_);
}

// What may stand at the path by now. The empty text: the archive that was read, or nothing.
std::wstring ZipImpl::WhyNotToReplace_() const {
    DiskFile now;
    FileState state;
    unsigned code = DiskFile::OpenForReading(file_->Name(), Sharing::kEveryone, now);
    if (code == 0) {
        code = now.State(state);
    }
    if (code != 0) {
        return KindOfPath(file_->Name()) == PathKind::kNothing
                   ? std::wstring()
                   : lmw::diag::impl::SysCodeAsString_(code);
    }
    return state == state_ ? std::wstring() : L"Another program has changed it meanwhile.";
}

gtl::status ZipImpl::Write(const zip::Progress& progress) {
    if (!reader_.IsOpen()) {  // it was written, but could not be opened again
        return file_->OpenStatus().Failed()
                   ? file_->OpenStatus()
                   : LmwError::File::write(ArchiveName(), L"It must be opened again first.");
    }
    // Once more when the new archive is complete, which may take its time.
    if (const std::wstring refusal = WhyNotToReplace_(); !refusal.empty()) {
        return LmwError::File::write(ArchiveName(), refusal);
    }
    const auto let_go = [this] {
        std::wstring refusal = WhyNotToReplace_();
        if (refusal.empty()) {
            file_->Close();
        }
        return refusal;
    };
    bool replaced = false;
    gtl::status result = detail::WriteArchive(plan_, stream_, let_go, progress, replaced);
    if (!replaced) {
        if (file_->OpenStatus().Failed()) {
            file_->Reopen();
        }
        return result;
    }
    file_->Reopen();
    gtl::status loaded = Load_();
    return result.Failed() ? result : loaded;
}

}  // namespace sys::file
