#include "common/file/detail/central_directory.h"

#include "common/sys/utf8.h"

#include <algorithm>
#include <array>
#include <span>

namespace lmw::file::detail {

namespace {

// The layout of the records: PKWARE, APPNOTE.TXT (the .ZIP file format), 4.3.7, 4.3.12,
// 4.3.15 and 4.3.16.
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kLocator64Size = 20;
constexpr std::size_t kEntrySize = 46;
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kTailSize = kEndSize + 0xFFFF + kLocator64Size;
constexpr std::uint64_t kLargestDirectory = 64U << 20;
constexpr std::string_view kEndMark("PK\5\6", 4);
constexpr std::string_view kEntryMark("PK\1\2", 4);
constexpr std::string_view kLocator64Mark("PK\6\7", 4);
constexpr std::uint16_t kAesExtra = 0x9901;
constexpr unsigned kDescriptorFlag = 1U << 3;
constexpr unsigned kUtf8Flag = 1U << 11;

unsigned Number16(std::string_view bytes, std::size_t at) noexcept {
    return static_cast<unsigned char>(bytes[at]) |
           (unsigned{static_cast<unsigned char>(bytes[at + 1])} << 8);
}

std::uint32_t Number32(std::string_view bytes, std::size_t at) noexcept {
    return Number16(bytes, at) | (std::uint32_t{Number16(bytes, at + 2)} << 16);
}

bool ReadPiece(const sys::file::IInputStream& stream, std::uint64_t offset, std::size_t size,
               std::vector<char>& piece) {
    piece.resize(size);
    std::size_t read = 0;
    return stream.ReadAt(offset, std::as_writable_bytes(std::span(piece)), read).Succeeded() &&
           read == size;
}

// How long the directory's first entry is.
std::size_t EntryLength(std::string_view directory) noexcept {
    return kEntrySize + Number16(directory, 28) + Number16(directory, 30) + Number16(directory, 32);
}

// Extra fields must fill their space exactly; those of AES entries have rules of their own.
bool IsOrdinaryExtra(std::string_view extra) noexcept {
    while (!extra.empty()) {
        if (extra.size() < 4 || Number16(extra, 0) == kAesExtra) {
            return false;
        }
        const std::size_t size = 4 + Number16(extra, 2);
        if (size > extra.size()) {
            return false;
        }
        extra.remove_prefix(size);
    }
    return true;
}

bool IsPlainText(std::string_view text) noexcept {
    return std::none_of(text.begin(), text.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20; }) &&
           sys::IsUtf8(text);
}

// Takes one entry off the front of the directory; false where it is not an ordinary one.
bool TakeEntry(std::string_view& directory) noexcept {
    if (directory.size() < kEntrySize || directory.substr(0, 4) != kEntryMark) {
        return false;
    }
    const unsigned flags = Number16(directory, 8);
    const std::size_t name = Number16(directory, 28);
    const std::size_t extra = Number16(directory, 30);
    const std::size_t comment = Number16(directory, 32);
    constexpr std::uint32_t kElsewhere = 0xFFFFFFFF;  // the number stands in a Zip64 field
    if (name == 0 || directory.size() < kEntrySize + name + extra + comment ||
        Number32(directory, 20) == kElsewhere || Number32(directory, 24) == kElsewhere ||
        Number32(directory, 42) == kElsewhere ||
        !IsOrdinaryExtra(directory.substr(kEntrySize + name, extra))) {
        return false;
    }
    if ((flags & kUtf8Flag) != 0 &&
        (!IsPlainText(directory.substr(kEntrySize, name)) ||
         !IsPlainText(directory.substr(kEntrySize + name + extra, comment)))) {
        return false;
    }
    directory.remove_prefix(EntryLength(directory));
    return true;
}

bool IsOrdinaryDirectory(std::string_view directory, unsigned entries) noexcept {
    for (unsigned k = 0; k < entries; ++k) {
        if (!TakeEntry(directory)) {
            return false;
        }
    }
    return directory.empty();
}

}  // namespace

bool OrdinaryDirectory::Read(const sys::file::IInputStream& stream) {
    std::uint64_t size = 0;
    if (stream.Size(size).Failed() || size < kEndSize) {
        return false;
    }
    const auto tail_size = static_cast<std::size_t>(std::min<std::uint64_t>(size, kTailSize));
    const std::uint64_t tail_offset = size - tail_size;
    if (!ReadPiece(stream, tail_offset, tail_size, tail_)) {
        return false;
    }
    const std::string_view tail(tail_.data(), tail_.size());
    const std::size_t end = tail.find(kEndMark);
    if (end == std::string_view::npos || tail.size() - end < kEndSize ||
        tail.find(kEndMark, end + 1) != std::string_view::npos ||
        (end >= kLocator64Size && tail.substr(end - kLocator64Size, 4) == kLocator64Mark)) {
        return false;
    }
    entries_ = Number16(tail, end + 8);
    const std::uint64_t directory_size = Number32(tail, end + 12);
    offset_ = Number32(tail, end + 16);
    const std::size_t comment_size = Number16(tail, end + 20);
    if (Number32(tail, end + 4) != 0 || Number16(tail, end + 10) != entries_ ||
        offset_ + directory_size > tail_offset + end || directory_size > kLargestDirectory ||
        tail.size() - end - kEndSize != comment_size) {
        return false;
    }
    comment_ = tail.substr(end + kEndSize);
    if (offset_ >= tail_offset) {
        directory_ = tail.substr(static_cast<std::size_t>(offset_ - tail_offset),
                                 static_cast<std::size_t>(directory_size));
    } else {
        if (!ReadPiece(stream, offset_, static_cast<std::size_t>(directory_size), apart_)) {
            return false;
        }
        directory_ = std::string_view(apart_.data(), apart_.size());
    }
    return IsOrdinaryDirectory(directory_, entries_);
}

std::uint8_t OrdinaryDirectory::HostSystem() const noexcept {
    return entries_ == 0 ? 0 : static_cast<std::uint8_t>(directory_[5]);
}

bool OrdinaryDirectory::HasGaps(const sys::file::IInputStream& stream) const {
    std::vector<std::pair<std::uint64_t, std::uint64_t>> used;  // from where to where at most
    used.reserve(entries_);
    for (std::string_view rest = directory_; !rest.empty();) {
        const std::uint64_t begin = Number32(rest, 42);
        // The local header's own lengths count: its extra fields may differ from the directory's.
        std::array<char, 4> lengths{};
        std::size_t read = 0;
        if (stream.ReadAt(begin + 26, std::as_writable_bytes(std::span(lengths)), read).Failed() ||
            read != lengths.size()) {
            return false;
        }
        const std::string_view local(lengths.data(), lengths.size());
        constexpr std::uint64_t kLongestDescriptor = 24;
        const std::uint64_t descriptor =
            (Number16(rest, 8) & kDescriptorFlag) != 0 ? kLongestDescriptor : 0;
        used.emplace_back(begin, begin + kLocalSize + Number16(local, 0) + Number16(local, 2) +
                                     Number32(rest, 20) + descriptor);
        rest.remove_prefix(EntryLength(rest));
    }
    std::sort(used.begin(), used.end());
    std::uint64_t reached = 0;
    for (const auto& [begin, end] : used) {
        if (begin > reached) {
            return true;
        }
        reached = std::max(reached, end);
    }
    return offset_ > reached;
}

}  // namespace lmw::file::detail
