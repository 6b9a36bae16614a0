#include "common/file/lwz_version.h"

#include "common/file/detail/archive_summary.h"
#include "common/file/zip.h"

#include <string_view>

namespace doc::file {

namespace {

using Version = lmw::version::NumberKind<0>;

// Reads a part: digits only, at most 65535.
bool ReadPart(std::wstring_view text, std::uint16_t& part) {
    std::uint32_t number = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9') {
            return false;
        }
        number = number * 10 + static_cast<std::uint32_t>(c - L'0');
        if (number > 0xFFFF) {
            return false;
        }
    }
    part = static_cast<std::uint16_t>(number);
    return !text.empty();
}

Version FromComment(std::wstring_view comment) {
    Version version{{Version::kUnset, Version::kUnset, Version::kUnset, Version::kUnset}};
    for (std::size_t k = 0;; ++k) {
        const std::size_t dot = comment.find(L'.');
        if (k == version.parts.size() || !ReadPart(comment.substr(0, dot), version.parts[k])) {
            return {};
        }
        if (dot == std::wstring_view::npos) {
            break;
        }
        comment.remove_prefix(dot + 1);
    }
    return version.IsSet(0) && version.IsSet(1) && !version.IsSet(3) ? version : Version();
}

Version Made(std::wstring_view comment, std::uint8_t host_system) {
    constexpr std::uint8_t kHostOfVersion7 = 10;
    return comment.empty() ? Version::FromFirst(host_system == kHostOfVersion7 ? 7 : 6)
                           : FromComment(comment);
}

}  // namespace

Version GetLwzVersion(const sys::file::Zip& archive) {
    return Made(archive.GetComment(), archive.HostSystem());
}

Version GetLwzVersion(const sys::file::InputStream& stream) {
    lmw::file::detail::ArchiveSummary summary;
    if (lmw::file::detail::ReadSummary(stream, summary).Failed()) {
        return Version::FromFirst(0);
    }
    return Made(summary.comment, summary.host_system);
}

}  // namespace doc::file
