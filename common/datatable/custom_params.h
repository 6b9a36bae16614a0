#pragma once

// Parameters that are defined while the program runs, above the built-in ones. They live as long as
// the process; nothing is ever unregistered, so that a value keeps its meaning.

#include "common/datatable/data_param_type.h"
#include "common/datatable/param_classes.h"
#include "common/export.h"
#include "common/range.h"
#include "common/status.h"

#include <span>
#include <string>

namespace dataparamtype {

/// What to register.
struct CustomParam {
    std::string name;  ///< a letter, then letters, digits and underscores; no parameter's name yet
    std::string meaning;  ///< one line
    Kind kind = Kind::Scalar;
    QuantityClass quantity_class = QuantityClass::None;
    gtl::range<double> range_checker;
    Category::Type category = Category::General;
    PreferredGraphCalculationMethod::Type graph_method = PreferredGraphCalculationMethod::AsStored;
    UnitKind unit = UnitKind::None;
};

/// Registers parameters under the next free values, in the order given; `registered` receives the
/// values. A vector or tensor is registered in one call: its parts, then the Composed parameter.
///
/// 1. All or nothing: on failure no parameter is registered and `registered` stays untouched.
/// 2. The parameters of one call get values that follow each other, whatever other threads
///    register meanwhile.
/// 3. Fails with gtl::impl::range_error::OutOfBounds (the value that would be needed, and the
///    values there are) when the registry has no room for all of them, and with LmwError::internal
///    when a name is taken or no name, or a property is none of its enumeration.
LMW_API gtl::status RegisterCustomParams(std::span<const CustomParam> params,
                                         DataParamList& registered);

/// The same for one parameter.
LMW_API gtl::status RegisterCustomParam(const CustomParam& param, DataParamType& registered);

/// The parameters defined beyond the built-in ones, ascending.
LMW_API DataParamList AllCustomParams();

}  // namespace dataparamtype
