#pragma once

// The types in which functions store the values of their attributes. A value travels as an untyped
// pointer beside its storage type; attributes.h converts between the types, so that callers need
// not ask which one a kind of function chose.

#include "common/datatable/data_param_type.h"
#include "common/export.h"
#include "common/gid.h"
#include "common/math/fpoint.h"
#include "common/math/tail_type.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::fn::attribute::storage {

/// The type a pointer to a value points at.
enum Type : std::uint32_t {
    None = 0,   ///< no value: an attribute that is unknown or hidden
    Bool,       ///< bool
    Int,        ///< std::int32_t
    UInt,       ///< std::uint32_t
    Double,     ///< double, in the unit the kind documents
    WString,    ///< std::wstring
    Tail,       ///< math::fn::TailType
    Points,     ///< std::vector<FPOINT>, by increasing x
    DataParam,  ///< DataParamType
    Gid,        ///< GID; the same C++ type as UInt
};

/// The name of the enumerator; empty for a value that has none.
LMW_API std::string_view NameOf(Type type) noexcept;

/// The storage type of a C++ type; a GID has to be named, since its C++ type is that of UInt.
template <class Value>
inline constexpr Type kTypeOf = None;
template <>
inline constexpr Type kTypeOf<bool> = Bool;
template <>
inline constexpr Type kTypeOf<std::int32_t> = Int;
template <>
inline constexpr Type kTypeOf<std::uint32_t> = UInt;
template <>
inline constexpr Type kTypeOf<double> = Double;
template <>
inline constexpr Type kTypeOf<std::wstring> = WString;
template <>
inline constexpr Type kTypeOf<::math::fn::TailType> = Tail;
template <>
inline constexpr Type kTypeOf<std::vector<FPOINT>> = Points;
template <>
inline constexpr Type kTypeOf<DataParamType> = DataParam;

}  // namespace lmw::fn::attribute::storage
