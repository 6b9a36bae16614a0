#pragma once

// What can be told about an archive from its end alone: its comment, and the system its first entry
// was made on. Fast, because a list of projects asks it of every file.

#include "common/file/input_stream.h"
#include "common/status.h"

#include <cstdint>
#include <string>

namespace lmw::file::detail {

struct ArchiveSummary {
    std::wstring comment;
    std::uint8_t host_system = 0;  ///< host code of the first entry, 0 without entries
};

/// Reads the summary. Fails exactly where opening the whole archive fails: an ordinary archive is
/// checked by OrdinaryDirectory, every other one opened for good and judged by the archive library.
gtl::status ReadSummary(const sys::file::InputStream& stream, ArchiveSummary& summary);

}  // namespace lmw::file::detail
