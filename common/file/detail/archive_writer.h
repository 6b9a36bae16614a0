#pragma once

// The writing half of the archive: makes the new archive from the old one and the changes, durably.

#include "common/file/detail/content_store.h"
#include "common/file/detail/secret.h"
#include "common/file/detail/zip_source.h"
#include "common/file/input_stream.h"
#include "common/file/zip_options.h"
#include "common/status.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lmw::file::detail {

/// What is to become of one entry. Entries of the old archive come first, in its order.
struct EntryPlan {
    std::string name;  ///< as it is written (WrittenName)
    bool in_archive = false;
    bool deleted = false;
    bool renamed = false;
    std::optional<TakenContent> content = {};     ///< new or replacing
    std::shared_ptr<const Secret> password = {};  ///< encrypts the content; none leaves it plain
};

struct ArchivePlan {
    std::vector<EntryPlan> entries;
    std::string comment;
    bool comment_changed = false;
};

/// Writes the archive that `plan` asks for and puts it in the place of the one that `old` reads.
/// `replaced` tells whether the new archive is in place: then only flushing its folder can have
/// failed. Otherwise the old archive is untouched and no other file is left.
gtl::status WriteArchive(const ArchivePlan& plan, const sys::file::InputStream& old,
                         const BeforeCommit& before_commit,
                         const sys::file::zip::Progress& progress, bool& replaced);

/// Makes an archive without entries at `path`, where nothing is yet: what is there all the same
/// stays.
gtl::status MakeEmptyArchive(const std::wstring& path);

/// The status of an operation that its progress function has cancelled.
[[nodiscard]] gtl::status Cancelled();

}  // namespace lmw::file::detail
