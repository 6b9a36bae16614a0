#pragma once

// What the registry knows of each parameter type, and the check of a value against its range.
// Custom parameters are added by custom_params.h; lists of parameters are combined by
// param_lists.h. Surprising: the registry is built on the first call of any of these functions, and
// the graph method of the stresses is decided then, once, by the solver the process uses.

#include "common/datatable/data_param_type.h"
#include "common/datatable/param_classes.h"
#include "common/export.h"
#include "common/range.h"
#include "common/status.h"

#include <string_view>

namespace dataparamtype {

/// One row of the registry. A default-made row is that of the null parameter and of every value
/// that is not registered: no kind, no class, unbounded, category General.
struct RegistryRow {
    DataParamList components;  ///< of a Composed parameter: its parts, ascending; else empty
    Kind kind = Kind::None;
    QuantityClass quantity_class = QuantityClass::None;
    gtl::range<double> range_checker;
    Category::Type category = Category::General;
    PreferredGraphCalculationMethod::Type graph_method = PreferredGraphCalculationMethod::AsStored;
};

// All functions below accept every value of DataParamType; one that is not registered answers with
// the default-made row and empty texts. References and texts stay valid until the program ends. Any
// number of threads may call, also while custom parameters are being registered. Each costs a table
// access, FindByName a binary search.

LMW_API const RegistryRow& GetRow(DataParamType param);

LMW_API Category::Type GetCategory(DataParamType param);
LMW_API PreferredGraphCalculationMethod::Type GetGraphCalculationMethod(DataParamType param);
LMW_API const gtl::range<double>& GetRangeChecker(DataParamType param);

/// Whether the parameter's quantity class is Stress.
LMW_API bool IsStressParam(DataParamType param);

/// Whether the registry has a row for `param`; false for the null parameter.
LMW_API bool IsRegistered(DataParamType param);

/// The name of the parameter: its enumerator, or the name a custom parameter was registered by.
LMW_API std::string_view GetName(DataParamType param);
/// One line of what the parameter means.
LMW_API std::string_view GetMeaning(DataParamType param);
LMW_API UnitKind GetUnitKind(DataParamType param);

/// The parameter of this exact name; DataParamType::Null when there is none.
LMW_API DataParamType FindByName(std::string_view name);

/// Whether a table may hold `value` for `param`: success, or gtl::impl::range_error::OutOfBounds
/// with the parameter's range.
///
/// 1. The missing value (lmw::kUndefined) is valid for every parameter, and so is NaN.
/// 2. Otherwise the value is valid when the parameter's range contains it (gtl::range::Contains).
/// 3. Success allocates nothing.
LMW_API gtl::status IsRangeValid(DataParamType param, double value);

}  // namespace dataparamtype
