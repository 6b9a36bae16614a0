#pragma once

// The project archive: a zip file whose entries are added, replaced, deleted, found, tested and
// extracted. Only the version of a project? doc::file::GetLwzVersion (lwz_version.h) is faster.
// Surprising: changes are collected in memory and beside the archive; the archive itself is written
// by Flush, Compact and Close, anew and as a whole.

#include "common/export.h"
#include "common/file/finder.h"
#include "common/file/input_stream.h"
#include "common/file/zip_options.h"
#include "common/status.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sys::file {

class ZipImpl;

/// One open archive, or none.
///
/// 1. After a crash, a full disk or a pulled plug there is one whole archive at the path, the old
///    or the new. Every failure, and cancelling, leaves the old one; the changes stay pending, so
///    that the call can be repeated when the cause is gone, and no other file is left behind.
/// 2. The content of an added file is taken at once: what happens to the file afterwards does not
///    matter, and where it cannot be read Add fails, not Flush.
/// 3. Questions are answered as the caller left the archive, pending changes included.
/// 4. An entry is read to its end and its sum and size are checked before it counts as good. Memory
///    grows with what an entry really yields, never with what it claims.
/// 5. Extraction writes nothing outside the target folder, whatever names the archive holds, makes
///    no links and follows none, and replaces a file only by a complete one.
///
/// Identifiers are indexes into the archive's directory. They stay what they are until Flush,
/// Compact or Close writes: then the entries are numbered anew in the same order, added ones last.
/// Names are written in UTF-8 with "/" and shown with "\"; names of other programs that are not
/// UTF-8 are read as code page 437. Entries are deflated at the usual level; of other programs'
/// entries stored and deflated ones are always read, others as far as the archive library can.
///
/// Every operation fails on a closed Zip, every change on a read-only one. No exception leaves the
/// class, the caller's functions' included. One thread at a time uses a Zip.
///
/// Example:
///     sys::file::Zip zip;
///     gtl::status result = zip.Open(path, sys::file::zip::CompactMode::OnClose);
///     if (result.Succeeded()) result = zip.Add(L"/tmp/node.csv", L"Stage\\12\\node.csv");
///     if (result.Succeeded()) result = zip.SetComment(L"8.1");
///     if (result.Succeeded()) result = zip.Close();
class LMW_API Zip {
 public:
    using Id = std::uint64_t;
    using Ids = std::vector<Id>;
    using Bytes = std::vector<std::byte>;
    using NamePredicate = std::function<bool(const std::wstring& name)>;

    Zip() noexcept;
    Zip(const Zip&) = delete;
    Zip& operator=(const Zip&) = delete;
    /// As Close, dropping its status; what cannot be written is lost.
    ~Zip();

    /// Opens the archive at `path` for update, after closing an open one; where there is none, an
    /// empty one is written first. Fails with message 20537 when the file is marked read-only (also
    /// for a user who could write it all the same), with 20526 or 20541 and the reason otherwise,
    /// and leaves the Zip closed. When an archive is open and cannot be closed, that status is
    /// returned and it stays open with its changes.
    gtl::status Open(const std::wstring& path, zip::CompactMode::Type compact_mode);

    /// Opens an archive for reading. The stream is held by one reference until Close. A stream of
    /// no bytes is an empty archive.
    gtl::status OpenReadOnly(const InputStream& stream);

    /// Flush, then closes. When that fails the archive stays open with its changes: repeat it, or
    /// give the changes up by Discard. The password is wiped. A closed Zip closes without failing.
    gtl::status Close();

    /// Closes without writing: the archive on disk stays as it is.
    void Discard() noexcept;

    /// Writes the pending changes, if any. Fails, too, when another program has written to the
    /// archive since it was opened: one of the two sets of changes would be lost.
    gtl::status Flush(const zip::Progress& progress = {});

    /// Writes the archive anew, without gaps, with the pending changes.
    gtl::status Compact(const zip::Progress& progress = {});

    [[nodiscard]] bool IsOpen() const noexcept;
    [[nodiscard]] bool IsOpenReadOnly() const noexcept;

    /// The number of entries; 0 when closed.
    [[nodiscard]] std::uint64_t Count() const;
    /// Their identifiers, ascending.
    [[nodiscard]] Ids GetAllFileIDs() const;
    [[nodiscard]] bool IsValidId(Id id) const noexcept;

    /// The path under which the entry is extracted; the empty text for an identifier that is not
    /// valid.
    [[nodiscard]] std::wstring GetName(
        Id id, const zip::IExtractName& extract_name = zip::ExtractNameSame()) const;

    /// The size the entry claims to unpack to, and what it takes in the archive (0 while pending);
    /// 0 for an identifier that is not valid.
    [[nodiscard]] std::uint64_t GetSize(Id id) const;
    [[nodiscard]] std::uint64_t GetPackedSize(Id id) const;
    [[nodiscard]] bool IsEncrypted(Id id) const;

    /// Adds a file under a name, which is taken as given ("\" and "/" both separate). Fails when
    /// the archive has an entry of that name, when the name is empty, ends in a separator, holds a
    /// NUL or is longer than 65535 bytes, and when the source is missing, a folder or unreadable.
    gtl::status Add(const std::wstring& source_path, std::wstring_view name_in_zip);

    /// Replaces an entry's content and name (an empty name keeps the old one). An empty source path
    /// is an internal error.
    gtl::status ReplaceAt(Id id, const std::wstring& source_path, std::wstring_view name_in_zip);

    /// Deletes entries: all, or none when one of the identifiers is not valid.
    gtl::status Delete(const Ids& ids);

    /// Deletes the entries whose identifiers are valid; `other_ids` receives the identifiers that
    /// could not be deleted. Fails, with all in `other_ids`, only when nothing may be changed.
    gtl::status Delete(const Ids& ids, Ids& other_ids);

    /// The entries whose whole name fits the pattern: "*" any characters, also across folders, "?"
    /// one, letters (ASCII) in either case, "/" equals "\", "*.*" everything. A folder's name is
    /// compared without its closing separator.
    gtl::status Find(Ids& ids, std::wstring_view pattern,
                     Finder::Filter filter = Finder::kFilesAndFolders) const;

    gtl::status FindAllMatching(Ids& ids, const NamePredicate& predicate) const;

    /// Extracts entries to files below `directory`, making folders as needed. All names are checked
    /// before anything is written; afterwards the first failure ends the work. Files that were
    /// complete by then stay.
    gtl::status Extract(const Ids& ids, const std::wstring& directory,
                        const zip::IExtractName& extract_name,
                        const zip::ExtractLimits& limits = {},
                        const zip::Progress& progress = {}) const;
    gtl::status Extract(const Id* first, const Id* last, const std::wstring& directory,
                        const zip::IExtractName& extract_name,
                        const zip::ExtractLimits& limits = {},
                        const zip::Progress& progress = {}) const;

    /// Extracts one entry into memory; `bytes` is empty after a failure.
    gtl::status Extract(Id id, Bytes& bytes, const zip::ExtractLimits& limits = {}) const;

    /// Extracts the first entry whose name satisfies the predicate.
    static gtl::status ExtractFirstMatching(Bytes& bytes, const InputStream& stream,
                                            const NamePredicate& predicate,
                                            const zip::ExtractLimits& limits = {});

    /// Unpacks entries, keeping nothing: success when all are good.
    gtl::status Test(const Ids& ids, const zip::Progress& progress = {}) const;

    /// The password for entries added from now on (AES-256; the empty one ends encrypting) and for
    /// reading encrypted entries (AES and the older kind). Fails with message 27578 on a closed Zip
    /// and for a password that the default code page cannot hold.
    gtl::status Encrypt(std::wstring_view password);

    /// The archive's comment; the empty text when closed.
    [[nodiscard]] std::wstring GetComment() const;
    /// At most 65535 bytes in UTF-8, without control characters other than tab and line ends.
    gtl::status SetComment(std::wstring_view text);

    /// The comment of the archive on a stream; the empty text when it is not an archive. Reads only
    /// the end of the archive where that is enough.
    [[nodiscard]] static std::wstring GetComment(const InputStream& stream);
    static gtl::status GetComment(const InputStream& stream, std::wstring& comment);

    /// The host code (the zip format's "version made by") of the first entry of the directory of
    /// the archive as it was opened; 0 without entries.
    [[nodiscard]] std::uint8_t HostSystem() const;

 private:
    std::unique_ptr<ZipImpl> impl_;  // null when closed
};

}  // namespace sys::file
