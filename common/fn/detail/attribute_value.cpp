#include "common/fn/detail/attribute_value.h"

#include "common/convert_error.h"
#include "common/datatable/param_registry.h"
#include "common/meta_enum.h"
#include "common/str/meta_convert.h"
#include "common/str/number_text.h"
#include "common/sys/text_encoding.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace lmw::fn::detail {

namespace {

using attribute::storage::Type;
using ::math::fn::TailType;
using PointList = std::vector<FPOINT>;

template <class Value>
const Value& As(const void* in) {
    return *static_cast<const Value*>(in);
}

std::wstring TypeName(Type type) {
    const std::string_view name = attribute::storage::NameOf(type);
    return {name.begin(), name.end()};
}

// Text forms.

std::wstring PointsText(const PointList& points) {
    std::wstring text;
    for (const FPOINT& point : points) {
        text += text.empty() ? L"" : L";";
        text += str::DoubleText(point.x) + L" " + str::DoubleText(point.y);
    }
    return text;
}

std::wstring ParamText(DataParamType param) {
    if (param == DataParamType::Null) {
        return {};
    }
    const std::string_view name = dataparamtype::GetName(param);  // letters, digits, underscores
    return name.empty() ? std::to_wstring(static_cast<std::uint32_t>(param))
                        : std::wstring(name.begin(), name.end());
}

// The text by which a value is stored.
std::wstring StoredText(Type type, const void* in) {
    switch (type) {
        case attribute::storage::Bool:
            return As<bool>(in) ? L"true" : L"false";
        case attribute::storage::Int:
            return std::to_wstring(As<std::int32_t>(in));
        case attribute::storage::UInt:
        case attribute::storage::Gid:
            return std::to_wstring(As<std::uint32_t>(in));
        case attribute::storage::Double:
            return str::DoubleText(As<double>(in));
        case attribute::storage::WString:
            return As<std::wstring>(in);
        case attribute::storage::Tail:
            return str::as_wstring(As<TailType>(in));
        case attribute::storage::Points:
            return PointsText(As<PointList>(in));
        case attribute::storage::DataParam:
            return ParamText(As<DataParamType>(in));
        default:
            return {};
    }
}

// The text of a value as a number, for another type of number to be read from: a double that is
// whole is written without an exponent.
std::wstring NumberText(Type type, const void* in) {
    constexpr double kWholeLimit = 0x1p53;
    double number = 0.0;
    switch (type) {
        case attribute::storage::Bool:
            return As<bool>(in) ? L"1" : L"0";
        case attribute::storage::DataParam:
            return std::to_wstring(static_cast<std::uint32_t>(As<DataParamType>(in)));
        case attribute::storage::Double:
            number = As<double>(in);
            break;
        case attribute::storage::Tail:
            number = As<TailType>(in).value;
            break;
        default:
            return StoredText(type, in);
    }
    return std::fabs(number) < kWholeLimit && number == std::trunc(number)
               ? std::to_wstring(static_cast<std::int64_t>(number))
               : str::DoubleText(number);
}

// Reading, one routine for each type that a dictionary may have registered.

std::wstring_view Trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos
               ? std::wstring_view()
               : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

gtl::status ReadPoints(std::wstring_view text, PointList& out) {
    PointList points;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L';'), text.size());
        const std::wstring_view pair = Trimmed(text.substr(0, end));
        const std::size_t blank = std::min(pair.find(L' '), pair.size());
        FPOINT point;
        gtl::status result = str::ParseDouble(pair.substr(0, blank), point.x);
        if (result.Succeeded()) {
            result = str::ParseDouble(Trimmed(pair.substr(blank)), point.y);
        }
        if (result.Failed()) {
            return result;
        }
        points.push_back(point);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    out = std::move(points);
    return {};
}

gtl::status ReadParam(const std::wstring& text, DataParamType& out) {
    if (text.empty()) {
        out = DataParamType::Null;
        return {};
    }
    // No parameter's name has a letter beyond ASCII, so what is lost here matches nothing.
    const DataParamType named = dataparamtype::FindByName(sys::Narrow(text));
    if (named != DataParamType::Null) {
        out = named;
        return {};
    }
    std::uint32_t number = 0;
    gtl::status result = str::ParseUInt(text, number);
    if (result.Succeeded() && number >= dataparamtype::kParamCount) {
        return gtl::Convert_error_status::OverflowStatus(
            text, gtl::Convert_error_status::WholeNumberString());
    }
    if (result.Succeeded()) {
        out = DataParamType{number};
    }
    return result;
}

gtl::status ReadDouble(Type from, const void* in, const std::wstring& text, double& out) {
    if (from == attribute::storage::Tail) {
        out = As<TailType>(in).value;
        return {};
    }
    return str::ParseDouble(text, out);
}

gtl::status ReadTail(Type from, const void* in, const std::wstring& text, TailType& out) {
    if (from == attribute::storage::Double) {
        out = TailType::Slope(As<double>(in));
        return {};
    }
    return str::from_wstring(text, out);
}

gtl::status ReadBool(const std::wstring& text, bool& out) {
    return meta::MetaConvertSrcDestFmtString<std::wstring, bool>::Convert(
        text, out, meta::MetaFormatType::kKey, 0);
}

void Copy(Type type, const void* in, void* out) {
    switch (type) {
        case attribute::storage::Bool:
            *static_cast<bool*>(out) = As<bool>(in);
            break;
        case attribute::storage::Int:
            *static_cast<std::int32_t*>(out) = As<std::int32_t>(in);
            break;
        case attribute::storage::UInt:
        case attribute::storage::Gid:
            *static_cast<std::uint32_t*>(out) = As<std::uint32_t>(in);
            break;
        case attribute::storage::Double:
            *static_cast<double*>(out) = As<double>(in);
            break;
        case attribute::storage::WString:
            *static_cast<std::wstring*>(out) = As<std::wstring>(in);
            break;
        case attribute::storage::Tail:
            *static_cast<TailType*>(out) = As<TailType>(in);
            break;
        case attribute::storage::Points:
            *static_cast<PointList*>(out) = As<PointList>(in);
            break;
        case attribute::storage::DataParam:
            *static_cast<DataParamType*>(out) = As<DataParamType>(in);
            break;
        default:
            break;
    }
}

bool AreConvertible(Type from, Type to) {
    if (attribute::storage::NameOf(from).empty() || attribute::storage::NameOf(to).empty() ||
        from == attribute::storage::None || to == attribute::storage::None) {
        return false;
    }
    const bool has_points = from == attribute::storage::Points || to == attribute::storage::Points;
    return !has_points || from == attribute::storage::WString || to == attribute::storage::WString;
}

}  // namespace

gtl::status ConvertValue(Type from, const void* in, Type to, void* out) {
    if (from == to) {
        Copy(to, in, out);
        return {};
    }
    if (!AreConvertible(from, to)) {
        return gtl::Convert_error_status::NotSupportedStatus(StoredText(from, in), TypeName(to));
    }
    const std::wstring text =
        to == attribute::storage::WString ? StoredText(from, in) : NumberText(from, in);
    switch (to) {
        case attribute::storage::Bool:
            return ReadBool(text, *static_cast<bool*>(out));
        case attribute::storage::Int:
            return str::ParseInt(text, *static_cast<std::int32_t*>(out));
        case attribute::storage::UInt:
        case attribute::storage::Gid:
            return str::ParseUInt(text, *static_cast<std::uint32_t*>(out));
        case attribute::storage::Double:
            return ReadDouble(from, in, text, *static_cast<double*>(out));
        case attribute::storage::Tail:
            return ReadTail(from, in, text, *static_cast<TailType*>(out));
        case attribute::storage::Points:
            return ReadPoints(text, *static_cast<PointList*>(out));
        case attribute::storage::DataParam:
            return ReadParam(text, *static_cast<DataParamType*>(out));
        default:
            *static_cast<std::wstring*>(out) = text;
            return {};
    }
}

AttributeValue::AttributeValue(Type type) : type_(type) {
    switch (type) {
        case attribute::storage::Bool:
            value_ = false;
            break;
        case attribute::storage::Int:
            value_ = std::int32_t{0};
            break;
        case attribute::storage::UInt:
        case attribute::storage::Gid:
            value_ = std::uint32_t{0};
            break;
        case attribute::storage::Double:
            value_ = 0.0;
            break;
        case attribute::storage::WString:
            value_ = std::wstring();
            break;
        case attribute::storage::Tail:
            value_ = TailType();
            break;
        case attribute::storage::Points:
            value_ = PointList();
            break;
        case attribute::storage::DataParam:
            value_ = DataParamType::Null;
            break;
        default:
            break;
    }
}

void* AttributeValue::Data() noexcept {
    return std::visit(
        [](auto& value) -> void* {
            return std::is_same_v<std::decay_t<decltype(value)>, std::monostate> ? nullptr : &value;
        },
        value_);
}

bool AttributeValue::Equals(const AttributeValue& other) const {
    if (type_ != other.type_) {
        return false;
    }
    const auto same_number = [](double a, double b) {
        return a == b || (std::isnan(a) && std::isnan(b));
    };
    if (const double* const number = std::get_if<double>(&value_)) {
        return same_number(*number, std::get<double>(other.value_));
    }
    if (const TailType* const tail = std::get_if<TailType>(&value_)) {
        return same_number(tail->value, std::get<TailType>(other.value_).value);
    }
    if (const PointList* const points = std::get_if<PointList>(&value_)) {
        const PointList& others = std::get<PointList>(other.value_);
        return std::equal(points->begin(), points->end(), others.begin(), others.end(),
                          [&](const FPOINT& a, const FPOINT& b) {
                              return same_number(a.x, b.x) && same_number(a.y, b.y);
                          });
    }
    return value_ == other.value_;
}

}  // namespace lmw::fn::detail
