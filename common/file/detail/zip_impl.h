#pragma once

// The state of one open archive: what was read, and what is to become of it. Zip (zip.h) is the
// interface; it keeps exceptions in.

#include "common/file/detail/archive_reader.h"
#include "common/file/detail/archive_writer.h"
#include "common/file/detail/content_store.h"
#include "common/file/detail/file_input_stream.h"
#include "common/file/zip.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace sys::file {

class ZipImpl {
 public:
    using Id = Zip::Id;
    using Ids = Zip::Ids;

    gtl::status OpenFile(const std::wstring& path, zip::CompactMode::Type compact_mode);
    gtl::status OpenStream(const InputStream& stream);

    [[nodiscard]] bool IsReadOnly() const noexcept { return file_ == nullptr; }
    [[nodiscard]] std::wstring ArchiveName() const { return stream_->Name(); }
    [[nodiscard]] std::uint64_t Count() const noexcept { return count_; }
    [[nodiscard]] Ids AllIds() const;
    [[nodiscard]] bool IsValid(Id id) const noexcept {
        return id < plan_.entries.size() && !plan_.entries[static_cast<std::size_t>(id)].deleted;
    }
    /// The name as it is shown; of a valid identifier, as for all below.
    [[nodiscard]] std::wstring Name(Id id) const;
    [[nodiscard]] bool IsFolder(Id id) const;
    [[nodiscard]] std::uint64_t Size(Id id) const;
    [[nodiscard]] std::uint64_t PackedSize(Id id) const;
    [[nodiscard]] bool IsEncrypted(Id id) const;
    [[nodiscard]] std::wstring Comment() const;
    [[nodiscard]] std::uint8_t HostSystem() const { return reader_.HostSystem(); }

    gtl::status Add(const std::wstring& source_path, std::wstring_view name);
    gtl::status Replace(Id id, const std::wstring& source_path, std::wstring_view name);
    void Delete(Id id);
    gtl::status SetComment(std::wstring_view text);
    gtl::status SetPassword(std::wstring_view password);

    /// Unpacks one entry; the failure is the one users read.
    gtl::status Read(Id id, lmw::file::detail::IByteSink& sink) const;

    gtl::status Write(const zip::Progress& progress);
    [[nodiscard]] bool HasChanges() const noexcept { return changed_; }
    /// Whether the archive on disk has gaps that writing would remove.
    [[nodiscard]] bool HasGaps() const;
    [[nodiscard]] zip::CompactMode::Type Mode() const noexcept { return compact_mode_; }

 private:
    gtl::status Load_();
    [[nodiscard]] std::wstring WhyNotToReplace_() const;
    gtl::status CheckName_(const std::string& name) const;
    [[nodiscard]] const lmw::file::detail::EntryPlan& Entry_(Id id) const {
        return plan_.entries[static_cast<std::size_t>(id)];
    }

    InputStream stream_;
    FileInputStream* file_ = nullptr;  // stream_ when it is a file open for update
    FileState state_;                  // of the file when it was opened
    zip::CompactMode::Type compact_mode_ = zip::CompactMode::Never;
    lmw::file::detail::ArchiveReader reader_;
    lmw::file::detail::ArchivePlan plan_;
    std::unordered_map<std::string, Id> ids_by_name_;  // of entries that are not deleted
    std::uint64_t count_ = 0;
    bool changed_ = false;
    std::optional<lmw::file::detail::ContentStore> contents_;
    std::shared_ptr<const lmw::file::detail::Secret> password_;
};

/// "Error extracting file: <name>. Cause: <cause>", without the cause when it is empty.
[[nodiscard]] gtl::status ErrorExtracting(const std::wstring& name, const std::wstring& cause);

}  // namespace sys::file
