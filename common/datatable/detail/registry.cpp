#include "common/datatable/detail/registry.h"

#include "common/app/feature.h"
#include "common/errors.h"
#include "common/range_error.h"

#include <algorithm>
#include <optional>

namespace dataparamtype::detail {

namespace {

using Method = PreferredGraphCalculationMethod::Type;

struct BuiltIn {
    Registry::Description description;
    gtl::range<double> range;
    std::uint32_t value = 0;
    Kind kind = Kind::None;
    QuantityClass quantity_class = QuantityClass::None;
    Category::Type category = Category::General;
    std::optional<Method> graph_method;  // none: the stress group's
};

// The words of the table's range and graph columns.
namespace ranges {
constexpr auto kIn = gtl::bound_kind::inclusive;
constexpr auto kEx = gtl::bound_kind::exclusive;
constexpr auto kNo = gtl::bound_kind::none;
using Range = gtl::range<double>;
constexpr Range Any = {0.0, kNo, 0.0, kNo};
constexpr Range NonNegative = {0.0, kIn, 0.0, kNo};
constexpr Range Positive = {0.0, kEx, 0.0, kNo};
constexpr Range AtLeastOne = {1.0, kIn, 0.0, kNo};
constexpr Range Fraction = {0.0, kIn, 1.0, kIn};
constexpr Range SignedFraction = {-1.0, kIn, 1.0, kIn};
constexpr Range Percent = {0.0, kIn, 100.0, kIn};
constexpr Range AcuteAngle = {0.0, kIn, 90.0, kEx};
constexpr Range RightAngle = {-90.0, kIn, 90.0, kIn};
constexpr Range Turn = {-180.0, kIn, 180.0, kIn};
constexpr Range LodeRange = {-30.0, kIn, 30.0, kIn};
constexpr Range DilationRange = {-90.0, kEx, 90.0, kEx};
constexpr Range PoissonRange = {0.0, kIn, 0.5, kIn};
constexpr Range AboveAbsoluteZero = {-273.15, kIn, 0.0, kNo};  // degrees Celsius
}  // namespace ranges

namespace graphs {
constexpr Method AsStored = PreferredGraphCalculationMethod::AsStored;
constexpr Method FromGaussPoints = PreferredGraphCalculationMethod::FromGaussPoints;
constexpr Method FromNodes = PreferredGraphCalculationMethod::FromNodes;
constexpr Method PerElement = PreferredGraphCalculationMethod::PerElement;
constexpr Method Accumulated = PreferredGraphCalculationMethod::Accumulated;
constexpr Method FromComponents = PreferredGraphCalculationMethod::FromComponents;
constexpr std::optional<Method> StressGroup = std::nullopt;
}  // namespace graphs

constexpr BuiltIn kBuiltIns[] = {
#define LMW_PARAM(value, name, kind, quantity, range, category, graph, unit, meaning) \
    {{#name, meaning, UnitKind::unit}, ranges::range,      (value),      Kind::kind,  \
     QuantityClass::quantity,          Category::category, graphs::graph},
#include "common/datatable/param_table.inc"
#undef LMW_PARAM
};

bool IsPart(Kind kind) {
    return kind == Kind::X || kind == Kind::Y || kind == Kind::Z;
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsName(std::string_view text) {
    return !text.empty() && IsLetter(text.front()) &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '_'; });
}

bool HasKnownProperties(const CustomParam& param) {
    return param.kind != Kind::None && !NameOf(param.kind).empty() &&
           !NameOf(param.quantity_class).empty() && !NameOf(param.category).empty() &&
           !NameOf(param.graph_method).empty() && !NameOf(param.unit).empty();
}

gtl::status Refused(const std::string& what, int line) {
    return LmwError::internal(what.c_str(), "common/datatable/detail/registry.cpp",
                              static_cast<unsigned>(line));
}

}  // namespace

Registry::Registry(Method stress_group_method) : end_(kLastBuiltIn + 1) {
    for (const BuiltIn& row : kBuiltIns) {
        Register_(row.value,
                  {{},
                   row.kind,
                   row.quantity_class,
                   row.range,
                   row.category,
                   row.graph_method.value_or(stress_group_method)},
                  row.description);
        built_in_by_name_.emplace_back(row.description.name, DataParamType{row.value});
    }
    std::sort(built_in_by_name_.begin(), built_in_by_name_.end());
}

Registry& Registry::Instance() {
    static Registry registry(lmw::feature::IsNewSolverEnabled(AnalysisKind::Deform)
                                 ? PreferredGraphCalculationMethod::FromRecoveredNodes
                                 : PreferredGraphCalculationMethod::FromGaussPoints);
    return registry;
}

bool Registry::Has(DataParamType param) const noexcept {
    const std::size_t index = IndexOf(param);
    return index != 0 && (index <= kLastBuiltIn || index < end_.load(std::memory_order_acquire));
}

const RegistryRow& Registry::RowOf(DataParamType param) const noexcept {
    return rows_[Has(param) ? IndexOf(param) : 0];
}

const Registry::Description& Registry::DescriptionOf(DataParamType param) const noexcept {
    return descriptions_[Has(param) ? IndexOf(param) : 0];
}

DataParamType Registry::Find(std::string_view name) const noexcept {
    const auto found = std::lower_bound(
        built_in_by_name_.begin(), built_in_by_name_.end(), name,
        [](const auto& row, std::string_view sought) { return row.first < sought; });
    if (found != built_in_by_name_.end() && found->first == name) {
        return found->second;
    }
    return FindCustom_(name, end_.load(std::memory_order_acquire));
}

DataParamType Registry::FindCustom_(std::string_view name, std::uint32_t end) const noexcept {
    for (std::uint32_t value = kLastBuiltIn + 1; value < end; ++value) {
        if (descriptions_[value].name == name) {
            return DataParamType{value};
        }
    }
    return DataParamType::Null;
}

// Writes the row in place. What a Composed parameter is made of is read from the rows registered
// before it, so rows registered later, even at lower values, do not belong to it.
void Registry::Register_(std::uint32_t value, RegistryRow row, const Description& description) {
    if (row.kind == Kind::Composed) {
        std::uint32_t first = value;
        while (first > 1 && IsPart(rows_[first - 1].kind)) {
            --first;
        }
        for (std::uint32_t part = first; part < value; ++part) {
            row.components.push_back(DataParamType{part});
        }
    }
    rows_[value] = std::move(row);
    descriptions_[value] = description;
}

gtl::status Registry::CheckCustom_(std::span<const CustomParam> params) const {
    for (std::size_t k = 0; k < params.size(); ++k) {
        const CustomParam& param = params[k];
        if (!IsName(param.name)) {
            return Refused("no parameter name: " + param.name, __LINE__);
        }
        const auto earlier = params.first(k);
        const bool repeated =
            std::any_of(earlier.begin(), earlier.end(),
                        [&param](const CustomParam& other) { return other.name == param.name; });
        if (repeated || Find(param.name) != DataParamType::Null) {
            return Refused("parameter name in use: " + param.name, __LINE__);
        }
        if (!HasKnownProperties(param)) {
            return Refused("parameter with a property that is unknown: " + param.name, __LINE__);
        }
    }
    return {};
}

gtl::status Registry::RegisterCustom(std::span<const CustomParam> params,
                                     DataParamList& registered) {
    const std::lock_guard lock(custom_mutex_);
    if (gtl::status invalid = CheckCustom_(params); invalid.Failed()) {
        return invalid;
    }
    const std::uint32_t first = end_.load(std::memory_order_relaxed);
    if (params.size() > kParamCount - first) {
        return gtl::impl::range_error::OutOfBounds(
            std::to_wstring(first + params.size() - 1), std::to_wstring(kLastBuiltIn + 1),
            std::to_wstring(kParamCount - 1), gtl::bound_kind::inclusive,
            gtl::bound_kind::inclusive);
    }
    DataParamList values;
    for (const CustomParam& param : params) {
        const auto value = static_cast<std::uint32_t>(first + values.size());
        const std::string& name = custom_texts_.emplace_back(param.name);
        const std::string& meaning = custom_texts_.emplace_back(param.meaning);
        Register_(value,
                  {{},
                   param.kind,
                   param.quantity_class,
                   param.range_checker,
                   param.category,
                   param.graph_method},
                  {name, meaning, param.unit});
        values.push_back(DataParamType{value});
    }
    end_.store(static_cast<std::uint32_t>(first + values.size()), std::memory_order_release);
    registered = std::move(values);
    return {};
}

DataParamList Registry::CustomParams() const {
    DataParamList custom;
    const std::uint32_t end = end_.load(std::memory_order_acquire);
    for (std::uint32_t value = kLastBuiltIn + 1; value < end; ++value) {
        custom.push_back(DataParamType{value});
    }
    return custom;
}

}  // namespace dataparamtype::detail
