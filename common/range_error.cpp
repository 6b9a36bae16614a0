#include "common/range_error.h"

#include "common/message_text.h"

namespace gtl {

namespace {

constexpr std::uint32_t kRangeStatus = 24389;

}  // namespace

status RangeStatusFormat() {
    return status(kRangeStatus);
}

namespace impl {

std::wstring range_error::DescGE(const std::wstring& lo) {
    return lmw::MessageText(20551, {lo});
}
std::wstring range_error::DescGT(const std::wstring& lo) {
    return lmw::MessageText(20564, {lo});
}
std::wstring range_error::DescLE(const std::wstring& hi) {
    return lmw::MessageText(20676, {hi});
}
std::wstring range_error::DescLT(const std::wstring& hi) {
    return lmw::MessageText(20692, {hi});
}

std::wstring range_error::DescInclusiveInclusive(const std::wstring& lo, const std::wstring& hi) {
    return lmw::MessageText(20452, {lo, hi});
}

std::wstring range_error::DescInclusiveExclusive(const std::wstring& lo, const std::wstring& hi) {
    return lmw::MessageText(20451, {lo, hi});
}

std::wstring range_error::DescExclusiveInclusive(const std::wstring& lo, const std::wstring& hi) {
    return lmw::MessageText(20450, {lo, hi});
}

std::wstring range_error::DescExclusiveExclusive(const std::wstring& lo, const std::wstring& hi) {
    return lmw::MessageText(20449, {lo, hi});
}

std::wstring range_error::DescNoLimit() {
    return lmw::MessageText(21622);
}

std::wstring range_error::Description(const std::wstring& lo, const std::wstring& hi,
                                      bound_kind lo_kind, bound_kind hi_kind) {
    const bool lo_included = lo_kind == bound_kind::inclusive;
    const bool hi_included = hi_kind == bound_kind::inclusive;
    if (lo_kind == bound_kind::none && hi_kind == bound_kind::none) {
        return DescNoLimit();
    }
    if (hi_kind == bound_kind::none) {
        return lo_included ? DescGE(lo) : DescGT(lo);
    }
    if (lo_kind == bound_kind::none) {
        return hi_included ? DescLE(hi) : DescLT(hi);
    }
    if (lo_included) {
        return hi_included ? DescInclusiveInclusive(lo, hi) : DescInclusiveExclusive(lo, hi);
    }
    return hi_included ? DescExclusiveInclusive(lo, hi) : DescExclusiveExclusive(lo, hi);
}

status range_error::OutOfBounds(const std::wstring& value, const std::wstring& lo,
                                const std::wstring& hi, bound_kind lo_kind, bound_kind hi_kind) {
    return status(kRangeStatus, value, Description(lo, hi, lo_kind, hi_kind));
}

status range_error::ValueIsRequired() {
    return status(20914);
}

}  // namespace impl
}  // namespace gtl
