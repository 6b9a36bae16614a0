#include "common/str/meta_convert.h"

#include "common/str/number_text.h"

#include <array>

namespace meta {

gtl::status MetaConvertSrcDestFmtString<int, std::wstring>::Convert(const int& from,
                                                                    std::wstring& to,
                                                                    MetaFormatType /*format*/,
                                                                    int /*context*/) {
    to = std::to_wstring(from);
    return {};
}

gtl::status MetaConvertSrcDestFmtString<double, std::wstring>::Convert(const double& from,
                                                                       std::wstring& to,
                                                                       MetaFormatType /*format*/,
                                                                       int /*context*/) {
    to = str::DoubleText(from);
    return {};
}

gtl::status MetaConvertSrcDestFmtString<bool, std::wstring>::Convert(const bool& from,
                                                                     std::wstring& to,
                                                                     MetaFormatType /*format*/,
                                                                     int /*context*/) {
    to = from ? L"true" : L"false";
    return {};
}

gtl::status MetaConvertSrcDestFmtString<std::wstring, int>::Convert(const std::wstring& from,
                                                                    int& to,
                                                                    MetaFormatType /*format*/,
                                                                    int /*context*/) {
    return str::ParseInt(from, to);
}

gtl::status MetaConvertSrcDestFmtString<std::wstring, double>::Convert(const std::wstring& from,
                                                                       double& to,
                                                                       MetaFormatType /*format*/,
                                                                       int /*context*/) {
    return str::ParseDouble(from, to);
}

gtl::status MetaConvertSrcDestFmtString<std::wstring, bool>::Convert(const std::wstring& from,
                                                                     bool& to,
                                                                     MetaFormatType /*format*/,
                                                                     int /*context*/) {
    const std::array<std::wstring, 4> allowed = {L"true", L"1", L"false", L"0"};
    for (std::size_t k = 0; k < allowed.size(); ++k) {
        if (from == allowed[k]) {
            to = k < 2;
            return {};
        }
    }
    return ErrConvertOneOf(from, allowed);
}

}  // namespace meta
