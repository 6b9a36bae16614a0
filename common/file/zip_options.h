#pragma once

// What goes with the operations of sys::file::Zip: how it compacts, how entries are named when they
// are extracted, limits against hostile archives, and progress.

#include "common/export.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>

namespace sys::file::zip {

struct CompactMode {
    /// When gaps that other programs left in an archive are removed. Every writing of this library
    /// writes the whole archive anew and so without gaps, whatever the mode; the modes differ for
    /// an archive that has gaps and no changes, which Never leaves as it is.
    enum Type {
        Never = 0,    ///< only Zip::Compact
        OnClose = 1,  ///< Zip::Close and the destructor
        OnFlush = 2,  ///< these and Zip::Flush
    };
};

/// How entries are named when they are extracted.
class LMW_API IExtractName {
 public:
    virtual ~IExtractName();

    /// The path, below the target folder, of the entry with that name ("\" between its parts). What
    /// it returns is checked like a name from the archive.
    [[nodiscard]] virtual std::wstring ExtractName(const std::wstring& entry_name) const = 0;

 protected:
    IExtractName() = default;
    IExtractName(const IExtractName&) = default;
    IExtractName& operator=(const IExtractName&) = default;
};

/// The entry's own name.
class LMW_API ExtractNameSame final : public IExtractName {
 public:
    [[nodiscard]] std::wstring ExtractName(const std::wstring& entry_name) const override;
};

/// The entry's name with another file name; directory and extension stay: with "model", data\a.xml
/// becomes data\model.xml. A folder's name (it ends in a separator) has no file name and stays.
class LMW_API ExtractNameFName final : public IExtractName {
 public:
    explicit ExtractNameFName(std::wstring fname) : fname_(std::move(fname)) {}
    [[nodiscard]] std::wstring ExtractName(const std::wstring& entry_name) const override;

 private:
    std::wstring fname_;
};

/// Called now and then during a long operation with the part done, from 0 to 1; returning false
/// cancels it. An exception cancels as well and becomes the operation's status.
using Progress = std::function<bool(double part_done)>;

/// How much an extraction may yield. Counted while it is unpacked, so that an entry that lies about
/// its size is stopped all the same.
struct ExtractLimits {
    static constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t entry_size = kUnlimited;  ///< bytes of one entry
    std::uint64_t total_size = kUnlimited;  ///< bytes of one call
    std::uint64_t count = kUnlimited;       ///< entries of one call
};

}  // namespace sys::file::zip
