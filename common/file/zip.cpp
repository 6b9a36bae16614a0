#include "common/file/zip.h"

#include "common/errors.h"
#include "common/file/detail/archive_summary.h"
#include "common/file/detail/entry_path.h"
#include "common/file/detail/extract_sinks.h"
#include "common/file/detail/guarded.h"
#include "common/file/detail/wildcard.h"
#include "common/file/detail/zip_impl.h"
#include "common/system_error.h"

#include <optional>
#include <unordered_set>
#include <utility>

namespace sys::file {

namespace detail = lmw::file::detail;
using detail::Guarded;

namespace {

gtl::status NotOpen() {
    return gtl::status::FromText(L"The archive is not open.");
}

gtl::status NotFound(Zip::Id id) {
    return ErrorExtracting(std::to_wstring(id), L"file not found");
}

// Runs `work` on the open archive.
template <class Impl, class Work>
gtl::status WithOpen(Impl* impl, Work&& work) {
    return impl == nullptr ? NotOpen() : Guarded([&] { return work(*impl); });
}

// Runs `work`, which changes the archive.
template <class Work>
gtl::status WithWritable(ZipImpl* impl, Work&& work) {
    return WithOpen(impl, [&](ZipImpl& open) {
        return open.IsReadOnly() ? LmwError::File::save_over_readonly(open.ArchiveName())
                                 : work(open);
    });
}

// Asks `question` of a valid entry; the default value for another one, and when it fails.
template <class Question>
auto OfEntry(const ZipImpl* impl, Zip::Id id, Question&& question) {
    decltype(question(*impl)) answer{};
    if (impl != nullptr && impl->IsValid(id)) {
        Guarded([&]() -> gtl::status {
            answer = question(*impl);
            return {};
        }).Ignore();
    }
    return answer;
}

gtl::status CheckIds(const ZipImpl& impl, std::span<const Zip::Id> ids) {
    for (const Zip::Id id : ids) {
        if (!impl.IsValid(id)) {
            return NotFound(id);
        }
    }
    return {};
}

std::uint64_t ExpectedSize(const ZipImpl& impl, std::span<const Zip::Id> ids) {
    std::uint64_t size = 0;
    for (const Zip::Id id : ids) {
        const std::uint64_t entry = impl.Size(id);
        size = size + entry < size ? size : size + entry;  // claims may be absurd
    }
    return size;
}

gtl::status ExtractOne(const ZipImpl& impl, Zip::Id id, const std::wstring& directory,
                       const detail::EntryPath& place, detail::ExtractCount& count,
                       detail::FileSink& sink) {
    const std::wstring name = impl.Name(id);
    const auto failed = [&name](unsigned code) {
        return ErrorExtracting(name, lmw::diag::impl::SysCodeAsString_(code));
    };
    count.BeginEntry(name);
    if (place.is_folder) {
        const unsigned code = MakeContainedFolder(directory, place.parts);
        return code == 0 ? gtl::status() : failed(code);
    }
    ContainedFile file;
    if (const unsigned code = file.Create(directory, place.parts); code != 0) {
        return failed(code);
    }
    sink.Begin(file, name);
    if (gtl::status result = impl.Read(id, sink); result.Failed()) {
        return result;
    }
    const unsigned code = file.Commit();
    return code == 0 ? gtl::status() : failed(code);
}

gtl::status ExtractAll(const ZipImpl& impl, std::span<const Zip::Id> ids,
                       const std::wstring& directory, const zip::IExtractName& extract_name,
                       const zip::ExtractLimits& limits, const zip::Progress& progress) {
    if (gtl::status result = CheckIds(impl, ids); result.Failed()) {
        return result;
    }
    if (ids.size() > limits.count) {
        return ErrorExtracting(
            impl.Name(ids[static_cast<std::size_t>(limits.count)]),
            L"More than the " + std::to_wstring(limits.count) + L" entries allowed.");
    }
    std::vector<detail::EntryPath> places;
    places.reserve(ids.size());
    for (const Zip::Id id : ids) {
        const std::wstring name = impl.Name(id);
        const std::wstring path = extract_name.ExtractName(name);
        std::optional<detail::EntryPath> place = detail::SafeEntryPath(path);
        if (!place.has_value()) {
            return ErrorExtracting(name, LmwError::File::invalid_path(path).as_wstring());
        }
        places.push_back(std::move(*place));
    }
    detail::ExtractCount count(limits, progress, ExpectedSize(impl, ids));
    detail::FileSink sink(count);
    for (std::size_t k = 0; k < ids.size(); ++k) {
        if (gtl::status result = ExtractOne(impl, ids[k], directory, places[k], count, sink);
            result.Failed()) {
            return result;
        }
    }
    return {};
}

gtl::status ExtractToMemory(const ZipImpl& impl, Zip::Id id, Zip::Bytes& bytes,
                            const zip::ExtractLimits& limits) {
    if (!impl.IsValid(id)) {
        return NotFound(id);
    }
    if (limits.count == 0) {
        return ErrorExtracting(impl.Name(id), L"More than the 0 entries allowed.");
    }
    const zip::Progress no_progress;
    detail::ExtractCount count(limits, no_progress, 0);
    count.BeginEntry(impl.Name(id));
    detail::MemorySink sink(bytes, impl.Size(id), count);
    gtl::status result = impl.Read(id, sink);
    sink.Finish();
    return result;
}

gtl::status FindIds(const ZipImpl& impl, const Zip::NamePredicate& predicate, Zip::Ids& ids) {
    for (const Zip::Id id : impl.AllIds()) {
        if (predicate(impl.Name(id))) {
            ids.push_back(id);
        }
    }
    return {};
}

}  // namespace

Zip::Zip() noexcept = default;

Zip::~Zip() {
    Close().Ignore();
}

gtl::status Zip::Open(const std::wstring& path, zip::CompactMode::Type compact_mode) {
    if (gtl::status result = Close(); result.Failed()) {
        return result;
    }
    return Guarded([&] {
        auto opened = std::make_unique<ZipImpl>();
        gtl::status result = opened->OpenFile(path, compact_mode);
        if (result.Succeeded()) {
            impl_ = std::move(opened);
        }
        return result;
    });
}

gtl::status Zip::OpenReadOnly(const InputStream& stream) {
    if (gtl::status result = Close(); result.Failed()) {
        return result;
    }
    return Guarded([&] {
        auto opened = std::make_unique<ZipImpl>();
        gtl::status result = opened->OpenStream(stream);
        if (result.Succeeded()) {
            impl_ = std::move(opened);
        }
        return result;
    });
}

gtl::status Zip::Close() {
    if (impl_ == nullptr) {
        return {};
    }
    gtl::status result = Guarded([&]() -> gtl::status {
        const bool compact = !impl_->IsReadOnly() && impl_->Mode() != zip::CompactMode::Never;
        return impl_->HasChanges() || (compact && impl_->HasGaps()) ? impl_->Write({})
                                                                    : gtl::status();
    });
    if (result.Succeeded()) {
        Discard();
    }
    return result;
}

void Zip::Discard() noexcept {
    impl_.reset();
}

gtl::status Zip::Flush(const zip::Progress& progress) {
    return WithWritable(impl_.get(), [&](ZipImpl& impl) {
        const bool compact = impl.Mode() == zip::CompactMode::OnFlush && impl.HasGaps();
        return impl.HasChanges() || compact ? impl.Write(progress) : gtl::status();
    });
}

gtl::status Zip::Compact(const zip::Progress& progress) {
    return WithWritable(impl_.get(), [&](ZipImpl& impl) { return impl.Write(progress); });
}

bool Zip::IsOpen() const noexcept {
    return impl_ != nullptr;
}

bool Zip::IsOpenReadOnly() const noexcept {
    return impl_ != nullptr && impl_->IsReadOnly();
}

std::uint64_t Zip::Count() const {
    return impl_ != nullptr ? impl_->Count() : 0;
}

Zip::Ids Zip::GetAllFileIDs() const {
    return impl_ != nullptr ? impl_->AllIds() : Ids();
}

bool Zip::IsValidId(Id id) const noexcept {
    return impl_ != nullptr && impl_->IsValid(id);
}

std::wstring Zip::GetName(Id id, const zip::IExtractName& extract_name) const {
    return OfEntry(impl_.get(), id,
                   [&](const ZipImpl& impl) { return extract_name.ExtractName(impl.Name(id)); });
}

std::uint64_t Zip::GetSize(Id id) const {
    return OfEntry(impl_.get(), id, [id](const ZipImpl& impl) { return impl.Size(id); });
}

std::uint64_t Zip::GetPackedSize(Id id) const {
    return OfEntry(impl_.get(), id, [id](const ZipImpl& impl) { return impl.PackedSize(id); });
}

bool Zip::IsEncrypted(Id id) const {
    return OfEntry(impl_.get(), id, [id](const ZipImpl& impl) { return impl.IsEncrypted(id); });
}

gtl::status Zip::Add(const std::wstring& source_path, std::wstring_view name_in_zip) {
    return WithWritable(impl_.get(),
                        [&](ZipImpl& impl) { return impl.Add(source_path, name_in_zip); });
}

gtl::status Zip::ReplaceAt(Id id, const std::wstring& source_path, std::wstring_view name_in_zip) {
    if (source_path.empty()) {
        return LmwError::internal("sys::file::ZipImpl::ReplaceAt", __FILE__, __LINE__);
    }
    return WithWritable(impl_.get(),
                        [&](ZipImpl& impl) { return impl.Replace(id, source_path, name_in_zip); });
}

gtl::status Zip::Delete(const Ids& ids) {
    return WithWritable(impl_.get(), [&](ZipImpl& impl) {
        gtl::status result = CheckIds(impl, ids);
        if (result.Succeeded()) {
            for (const Id id : std::unordered_set<Id>(ids.begin(), ids.end())) {
                impl.Delete(id);
            }
        }
        return result;
    });
}

gtl::status Zip::Delete(const Ids& ids, Ids& other_ids) {
    other_ids.clear();
    gtl::status result = WithWritable(impl_.get(), [&](ZipImpl& impl) {
        std::unordered_set<Id> deleted;
        for (const Id id : ids) {
            if (impl.IsValid(id)) {
                deleted.insert(id);
                impl.Delete(id);
            } else if (!deleted.contains(id)) {
                other_ids.push_back(id);
            }
        }
        return gtl::status();
    });
    if (result.Failed()) {
        other_ids = ids;
    }
    return result;
}

gtl::status Zip::Find(Ids& ids, std::wstring_view pattern, Finder::Filter filter) const {
    ids.clear();
    return WithOpen(impl_.get(), [&](const ZipImpl& impl) {
        for (const Id id : impl.AllIds()) {
            const bool is_folder = impl.IsFolder(id);
            std::wstring name = impl.Name(id);
            if (is_folder) {
                name.pop_back();
            }
            if ((filter & (is_folder ? Finder::kFolders : Finder::kFiles)) != 0 &&
                detail::MatchesWildcard(name, pattern)) {
                ids.push_back(id);
            }
        }
        return gtl::status();
    });
}

gtl::status Zip::FindAllMatching(Ids& ids, const NamePredicate& predicate) const {
    ids.clear();
    return WithOpen(impl_.get(),
                    [&](const ZipImpl& impl) { return FindIds(impl, predicate, ids); });
}

gtl::status Zip::Extract(const Ids& ids, const std::wstring& directory,
                         const zip::IExtractName& extract_name, const zip::ExtractLimits& limits,
                         const zip::Progress& progress) const {
    return WithOpen(impl_.get(), [&](const ZipImpl& impl) {
        return ExtractAll(impl, ids, directory, extract_name, limits, progress);
    });
}

gtl::status Zip::Extract(const Id* first, const Id* last, const std::wstring& directory,
                         const zip::IExtractName& extract_name, const zip::ExtractLimits& limits,
                         const zip::Progress& progress) const {
    return WithOpen(impl_.get(), [&](const ZipImpl& impl) {
        return ExtractAll(impl, {first, last}, directory, extract_name, limits, progress);
    });
}

gtl::status Zip::Extract(Id id, Bytes& bytes, const zip::ExtractLimits& limits) const {
    gtl::status result = WithOpen(
        impl_.get(), [&](const ZipImpl& impl) { return ExtractToMemory(impl, id, bytes, limits); });
    if (result.Failed()) {
        bytes.clear();
    }
    return result;
}

gtl::status Zip::ExtractFirstMatching(Bytes& bytes, const InputStream& stream,
                                      const NamePredicate& predicate,
                                      const zip::ExtractLimits& limits) {
    gtl::status result = Guarded([&] {
        ZipImpl impl;
        gtl::status opened = impl.OpenStream(stream);
        if (opened.Failed()) {
            return opened;
        }
        for (const Id id : impl.AllIds()) {
            if (predicate(impl.Name(id))) {
                return ExtractToMemory(impl, id, bytes, limits);
            }
        }
        return ErrorExtracting(impl.ArchiveName(), L"file not found");
    });
    if (result.Failed()) {
        bytes.clear();
    }
    return result;
}

gtl::status Zip::Test(const Ids& ids, const zip::Progress& progress) const {
    return WithOpen(impl_.get(), [&](const ZipImpl& impl) {
        gtl::status result = CheckIds(impl, ids);
        if (result.Failed()) {
            return result;
        }
        detail::ExtractCount count({}, progress, ExpectedSize(impl, ids));
        detail::NullSink sink(count);
        for (std::size_t k = 0; k < ids.size() && result.Succeeded(); ++k) {
            count.BeginEntry(impl.Name(ids[k]));
            result = impl.Read(ids[k], sink);
        }
        return result;
    });
}

gtl::status Zip::Encrypt(std::wstring_view password) {
    if (impl_ == nullptr) {
        return gtl::status(27578, std::wstring());
    }
    return Guarded([&] { return impl_->SetPassword(password); });
}

std::wstring Zip::GetComment() const {
    return impl_ != nullptr ? impl_->Comment() : std::wstring();
}

gtl::status Zip::SetComment(std::wstring_view text) {
    return WithWritable(impl_.get(), [&](ZipImpl& impl) { return impl.SetComment(text); });
}

std::wstring Zip::GetComment(const InputStream& stream) {
    std::wstring comment;
    GetComment(stream, comment).Ignore();
    return comment;
}

gtl::status Zip::GetComment(const InputStream& stream, std::wstring& comment) {
    detail::ArchiveSummary summary;
    gtl::status result = detail::ReadSummary(stream, summary);
    comment = std::move(summary.comment);
    return result;
}

std::uint8_t Zip::HostSystem() const {
    return impl_ != nullptr ? impl_->HostSystem() : 0;
}

}  // namespace sys::file
