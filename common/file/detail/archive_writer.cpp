#include "common/file/detail/archive_writer.h"

#include "common/errors.h"
#include "common/file/detail/archive_reader.h"
#include "common/system_error.h"

#include <zip.h>

#include <algorithm>
#include <ctime>
#include <exception>

namespace lmw::file::detail {

namespace {

using sys::file::zip::Progress;

// zlib's default. The library's own is 9, which takes up to half as long again and saves next to
// nothing.
constexpr zip_uint32_t kUsualLevel = 6;

// How often progress is told, as a part of the whole.
constexpr double kProgressStep = 0.001;

struct ArchiveDiscarder {
    void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, ArchiveDiscarder>;

// Hands the library's progress to the caller's function, which may cancel or throw.
struct ProgressRelay {
    const Progress* progress = nullptr;
    bool cancelled = false;
    std::exception_ptr failure;

    static void Tell(zip_t* /*archive*/, double part_done, void* user) {
        auto* const relay = static_cast<ProgressRelay*>(user);
        if (relay->cancelled) {
            return;
        }
        try {
            relay->cancelled = !(*relay->progress)(part_done);
        } catch (...) {
            relay->failure = std::current_exception();
            relay->cancelled = true;
        }
    }
    static int IsCancelled(zip_t* /*archive*/, void* user) {
        return static_cast<ProgressRelay*>(user)->cancelled ? 1 : 0;
    }
};

// The zip format counts from 1980 to 2107, and the conversion of the runtime beneath the library
// gives nothing for a time before 1970, which a file may well bear.
std::time_t EntryTime(std::int64_t modified) {
    constexpr std::int64_t kFirst = 315'619'200;   // 1980-01-02, in every time zone after the start
    constexpr std::int64_t kLast = 4'354'732'800;  // 2107-12-31, in every time zone before the end
    return static_cast<std::time_t>(std::clamp(modified, kFirst, kLast));
}

// Puts one added or replaced entry into the archive; false where the library refuses.
bool PutContent(zip_t* archive, const EntryPlan& plan, std::uint64_t index,
                const SourceFailure& failure) {
    zip_source_t* const source =
        MakeReadingSource(plan.content->stream, failure, zip_get_error(archive));
    if (source == nullptr) {
        return false;
    }
    if (plan.in_archive) {
        if (zip_file_replace(archive, index, source, 0) != 0) {
            zip_source_free(source);
            return false;
        }
    } else {
        const zip_int64_t added =
            zip_file_add(archive, plan.name.c_str(), source, ZIP_FL_ENC_UTF_8);
        if (added < 0) {
            zip_source_free(source);
            return false;
        }
        index = static_cast<std::uint64_t>(added);
    }
    if (plan.renamed && zip_file_rename(archive, index, plan.name.c_str(), ZIP_FL_ENC_UTF_8) != 0) {
        return false;
    }
    const bool encrypted = plan.password != nullptr;
    return zip_set_file_compression(archive, index, ZIP_CM_DEFLATE, kUsualLevel) == 0 &&
           zip_file_set_mtime(archive, index, EntryTime(plan.content->modified), 0) == 0 &&
           zip_file_set_encryption(archive, index, encrypted ? ZIP_EM_AES_256 : ZIP_EM_NONE,
                                   encrypted ? plan.password->Text() : nullptr) == 0;
}

// The library writes only what it takes for changed: setting an entry's own time makes it so.
bool MakeChanged(zip_t* archive, std::uint64_t index) {
    zip_stat_t stat;
    zip_stat_init(&stat);
    return zip_stat_index(archive, index, 0, &stat) == 0 &&
           zip_file_set_mtime(archive, index, stat.mtime, 0) == 0;
}

// Tells the library about every change; false where it refuses one. Deletions come first, so that
// the name of a deleted entry is free again.
bool ApplyPlan(zip_t* archive, const ArchivePlan& plan, const SourceFailure& failure) {
    bool changed = false;
    for (std::size_t k = 0; k < plan.entries.size(); ++k) {
        if (plan.entries[k].in_archive && plan.entries[k].deleted) {
            changed = true;
            if (zip_delete(archive, k) != 0) {
                return false;
            }
        }
    }
    std::optional<std::uint64_t> first_kept;
    for (std::size_t k = 0; k < plan.entries.size(); ++k) {
        const EntryPlan& entry = plan.entries[k];
        if (entry.deleted) {
            continue;
        }
        if (entry.content.has_value()) {
            changed = true;
            if (!PutContent(archive, entry, k, failure)) {
                return false;
            }
        } else if (!first_kept.has_value()) {
            first_kept = k;
        }
    }
    if (plan.comment_changed &&
        zip_set_archive_comment(archive, plan.comment.c_str(),
                                static_cast<zip_uint16_t>(plan.comment.size())) != 0) {
        return false;
    }
    return changed || !first_kept.has_value() || MakeChanged(archive, *first_kept);
}

bool HasEntries(const ArchivePlan& plan) {
    for (const EntryPlan& entry : plan.entries) {
        if (!entry.deleted) {
            return true;
        }
    }
    return false;
}

std::string EndRecord(const std::string& comment) {
    std::string record("PK\5\6", 4);
    record.append(16, '\0');  // no disks, no entries, no directory
    record += static_cast<char>(comment.size() & 0xFF);
    record += static_cast<char>((comment.size() >> 8) & 0xFF);
    return record + comment;
}

gtl::status FailedToWrite(const std::wstring& path, unsigned code) {
    return LmwError::File::write(path, lmw::diag::impl::SysCodeAsString_(code));
}

// Writes an archive without entries, which the library would delete instead.
gtl::status WriteEmptyArchive(const std::wstring& path, const std::string& comment,
                              const BeforeCommit& before_commit, sys::Existing existing,
                              bool& replaced) {
    sys::ReplacementFile file;
    const std::string record = EndRecord(comment);
    unsigned code = file.Create(path);
    if (code == 0) {
        code = file.File().WriteAt(0, record.data(), record.size());
    }
    if (code == 0) {
        if (const std::wstring refusal = before_commit(); !refusal.empty()) {
            return LmwError::File::write(path, refusal);
        }
        code = file.Commit(existing);
    }
    replaced = file.IsInPlace();
    return code == 0 ? gtl::status() : FailedToWrite(path, code);
}

}  // namespace

gtl::status MakeEmptyArchive(const std::wstring& path) {
    bool made = false;
    return WriteEmptyArchive(
        path, {}, [] { return std::wstring(); }, sys::Existing::kKeep, made);
}

gtl::status WriteArchive(const ArchivePlan& plan, const sys::file::InputStream& old,
                         const BeforeCommit& before_commit, const Progress& progress,
                         bool& replaced) {
    replaced = false;
    const std::wstring path = old->Name();
    if (!HasEntries(plan)) {
        return WriteEmptyArchive(path, plan.comment, before_commit, sys::Existing::kReplace,
                                 replaced);
    }
    const auto failure = std::make_shared<std::wstring>();
    Replacement replacement;
    replacement.path = path;
    replacement.before_commit = before_commit;

    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = MakeReplacingSource(old, replacement, failure, &error);
    Archive archive(source != nullptr ? zip_open_from_source(source, 0, &error) : nullptr);
    if (archive == nullptr) {
        zip_source_free(source);
        gtl::status result = LmwError::File::open(path, CauseOf(&error, failure));
        zip_error_fini(&error);
        return result;
    }
    zip_error_fini(&error);

    ProgressRelay relay;
    relay.progress = &progress;
    if (progress) {
        zip_register_progress_callback_with_state(archive.get(), kProgressStep,
                                                  &ProgressRelay::Tell, nullptr, &relay);
        zip_register_cancel_callback_with_state(archive.get(), &ProgressRelay::IsCancelled, nullptr,
                                                &relay);
    }
    if (ApplyPlan(archive.get(), plan, failure) && zip_close(archive.get()) == 0) {
        static_cast<void>(archive.release());  // closing has freed it
        replaced = true;
        return {};
    }
    replaced = replacement.file.IsInPlace();
    if (relay.failure != nullptr) {
        std::rethrow_exception(relay.failure);
    }
    return relay.cancelled
               ? Cancelled()
               : LmwError::File::write(path, CauseOf(zip_get_error(archive.get()), failure));
}

gtl::status Cancelled() {
    return gtl::status::FromText(L"The operation was cancelled.");
}

}  // namespace lmw::file::detail
