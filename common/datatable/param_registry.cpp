#include "common/datatable/param_registry.h"

#include "common/datatable/custom_params.h"
#include "common/datatable/detail/registry.h"
#include "common/range_error.h"
#include "common/str/number_text.h"
#include "common/undefined.h"

namespace dataparamtype {

using detail::Registry;

const RegistryRow& GetRow(DataParamType param) {
    return Registry::Instance().RowOf(param);
}

Category::Type GetCategory(DataParamType param) {
    return GetRow(param).category;
}

PreferredGraphCalculationMethod::Type GetGraphCalculationMethod(DataParamType param) {
    return GetRow(param).graph_method;
}

const gtl::range<double>& GetRangeChecker(DataParamType param) {
    return GetRow(param).range_checker;
}

bool IsStressParam(DataParamType param) {
    return GetRow(param).quantity_class == QuantityClass::Stress;
}

bool IsRegistered(DataParamType param) {
    return Registry::Instance().Has(param);
}

std::string_view GetName(DataParamType param) {
    return Registry::Instance().DescriptionOf(param).name;
}

std::string_view GetMeaning(DataParamType param) {
    return Registry::Instance().DescriptionOf(param).meaning;
}

UnitKind GetUnitKind(DataParamType param) {
    return Registry::Instance().DescriptionOf(param).unit;
}

DataParamType FindByName(std::string_view name) {
    return Registry::Instance().Find(name);
}

gtl::status IsRangeValid(DataParamType param, double value) {
    if (!lmw::IsDefined(value)) {
        return {};
    }
    const gtl::range<double>& range = GetRangeChecker(param);
    if (range.Contains(value)) {
        return {};
    }
    return gtl::impl::range_error::OutOfBounds(str::DoubleText(value), str::DoubleText(range.lower),
                                               str::DoubleText(range.upper), range.lower_kind,
                                               range.upper_kind);
}

gtl::status RegisterCustomParams(std::span<const CustomParam> params, DataParamList& registered) {
    return Registry::Instance().RegisterCustom(params, registered);
}

gtl::status RegisterCustomParam(const CustomParam& param, DataParamType& registered) {
    DataParamList values;
    gtl::status result = RegisterCustomParams({&param, 1}, values);
    if (result.Succeeded()) {
        registered = values.front();
    }
    return result;
}

DataParamList AllCustomParams() {
    return Registry::Instance().CustomParams();
}

}  // namespace dataparamtype
