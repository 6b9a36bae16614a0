#pragma once

// The parameter types of data tables: the numbers that name a column. What the registry knows of
// each is in param_registry.h; the built-in ones stand, one row each, in param_table.inc.

#include <cstddef>
#include <cstdint>
#include <vector>

/// A parameter type. The enumerators are the built-in ones, 1 to 643; values from 644 up are given
/// to custom parameters (custom_params.h), so not every value has an enumerator.
enum class DataParamType : std::uint32_t {
    Null = 0,  ///< no parameter
#define LMW_PARAM(value, name, kind, quantity, range, category, graph, unit, meaning) \
    name = (value),
#include "common/datatable/param_table.inc"
#undef LMW_PARAM
};

/// Parameters in an order, repeats allowed.
using DataParamList = std::vector<DataParamType>;

namespace dataparamtype {

/// Values run from 0 to one below this: the registry's room.
inline constexpr std::size_t kParamCount = 745;

/// The last built-in value; custom parameters lie above.
inline constexpr std::uint32_t kLastBuiltIn = 643;

/// The value as an index, for tables with one entry for each parameter.
[[nodiscard]] constexpr std::size_t IndexOf(DataParamType param) noexcept {
    return static_cast<std::size_t>(param);
}

}  // namespace dataparamtype
