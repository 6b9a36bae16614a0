#include "common/file/detail/text_order.h"

#include <cstddef>

namespace lmw::file::detail {

namespace {

// The UTF-16 code units of a wide text, one after the other; -1 at its end.
class UnitCursor {
 public:
    explicit UnitCursor(std::wstring_view text) noexcept : text_(text) { Load_(); }

    [[nodiscard]] long Unit() const noexcept { return unit_; }
    [[nodiscard]] long Folded() const noexcept {
        return unit_ >= L'A' && unit_ <= L'Z' ? unit_ - L'A' + L'a' : unit_;
    }
    [[nodiscard]] bool IsDigit() const noexcept { return unit_ >= L'0' && unit_ <= L'9'; }

    void Advance() noexcept {
        if (pending_ >= 0) {
            unit_ = pending_;
            pending_ = -1;
        } else {
            Load_();
        }
    }

 private:
    void Load_() noexcept {
        if (at_ == text_.size()) {
            unit_ = -1;
            return;
        }
        const auto c = static_cast<char32_t>(text_[at_++]);
        if (c < 0x10000) {
            unit_ = static_cast<long>(c);
        } else if (c <= 0x10FFFF) {
            const long above = static_cast<long>(c) - 0x10000;
            unit_ = 0xD800 + (above >> 10);
            pending_ = 0xDC00 + (above & 0x3FF);
        } else {
            unit_ = 0xFFFD;
        }
    }

    std::wstring_view text_;
    std::size_t at_ = 0;
    long unit_ = -1;
    long pending_ = -1;
};

int Sign(long a, long b) noexcept {
    return a < b ? -1 : a > b ? 1 : 0;
}

int CompareRestFolded(UnitCursor a, UnitCursor b) noexcept {
    for (;; a.Advance(), b.Advance()) {
        if (const int order = Sign(a.Folded(), b.Folded()); order != 0) {
            return order;
        }
        if (a.Unit() < 0) {
            return 0;
        }
    }
}

// Compares the digits that both cursors stand at as integers and moves both past them.
int CompareIntegers(UnitCursor& a, UnitCursor& b) noexcept {
    while (a.Unit() == L'0') {
        a.Advance();
    }
    while (b.Unit() == L'0') {
        b.Advance();
    }
    int order = 0;
    while (a.IsDigit() && b.IsDigit()) {
        if (order == 0) {
            order = Sign(a.Unit(), b.Unit());
        }
        a.Advance();
        b.Advance();
    }
    if (a.IsDigit() != b.IsDigit()) {  // one has more digits left
        return a.IsDigit() ? 1 : -1;
    }
    return order;
}

}  // namespace

int CompareUnits(std::wstring_view a, std::wstring_view b) noexcept {
    UnitCursor left(a);
    UnitCursor right(b);
    while (left.Unit() == right.Unit() && left.Unit() >= 0) {
        left.Advance();
        right.Advance();
    }
    return Sign(left.Unit(), right.Unit());
}

int CompareFolded(std::wstring_view a, std::wstring_view b) noexcept {
    return CompareRestFolded(UnitCursor(a), UnitCursor(b));
}

int CompareNumericTail(std::wstring_view a, std::wstring_view b) noexcept {
    UnitCursor left(a);
    UnitCursor right(b);
    int before = 0;
    while (!left.IsDigit() && !right.IsDigit()) {
        if (left.Unit() < 0 || right.Unit() < 0) {
            return CompareFolded(a, b);
        }
        if (before == 0) {
            before = Sign(left.Folded(), right.Folded());
        }
        left.Advance();
        right.Advance();
    }
    if (left.IsDigit() != right.IsDigit()) {
        return CompareFolded(a, b);
    }
    if (before != 0) {
        return before;
    }
    const int number = CompareIntegers(left, right);
    return number != 0 ? number : CompareRestFolded(left, right);
}

}  // namespace lmw::file::detail
