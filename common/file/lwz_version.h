#pragma once

// The file-format version of a project archive. A writer of projects sets the archive's comment to
// the dotted version (Zip::SetComment); every reader takes it from there.

#include "common/export.h"
#include "common/file/input_stream.h"
#include "common/file/version_number.h"

namespace sys::file {
class Zip;
}

namespace doc::file {

/// The version in one of four shapes:
/// - the comment holds two or three numbers: these, what is not there unset;
/// - the archive has no comment, so is older than versions: 7 when its first entry was made on a
///   system of host code 10, else 6, three parts unset; also for an archive that is not open;
/// - the comment is anything else (one number, a fourth, blanks, signs, text, a number above
///   65535): 0.0 and two parts unset. The number 65535 counts as a missing part;
/// - the stream cannot be opened as an archive: 0 and three parts unset.
///
/// From a stream only the end of the archive is read where that is enough; what Zip::OpenReadOnly
/// would refuse counts as not openable all the same.
LMW_API lmw::version::NumberKind<0> GetLwzVersion(const sys::file::Zip& archive);
LMW_API lmw::version::NumberKind<0> GetLwzVersion(const sys::file::InputStream& stream);

}  // namespace doc::file
