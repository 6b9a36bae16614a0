#pragma once

// The stream over a block of memory, the caller's or its own.

#include "common/file/input_stream.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace sys::file {

class MemoryInputStream final : public IInputStream {
 public:
    /// `bytes` must outlive the stream.
    MemoryInputStream(std::wstring name, std::span<const std::byte> bytes)
        : name_(std::move(name)), bytes_(bytes) {}
    MemoryInputStream(std::wstring name, std::vector<std::byte> bytes)
        : name_(std::move(name)), owned_(std::move(bytes)), bytes_(owned_) {}

    [[nodiscard]] std::wstring Name() const override { return name_; }

    gtl::status Size(std::uint64_t& size) const override {
        size = bytes_.size();
        return {};
    }

    gtl::status ReadAt(std::uint64_t offset, std::span<std::byte> to,
                       std::size_t& read) const override {
        read = offset < bytes_.size()
                   ? std::min(to.size(), bytes_.size() - static_cast<std::size_t>(offset))
                   : 0;
        if (read > 0) {
            std::memcpy(to.data(), bytes_.data() + offset, read);
        }
        return {};
    }

 private:
    std::wstring name_;
    std::vector<std::byte> owned_;
    std::span<const std::byte> bytes_;
};

}  // namespace sys::file
