#pragma once

// The attributes by which functions are defined: one factory for each, 204 named ones and 11
// operations of boundary conditions. What a kind of function makes of an attribute, its type and
// its identifier among the kind's attributes, is in the kind's dictionary.
// Surprising: a factory's name and the attribute's key differ in seven places (fn_attr_table.inc).

#include "common/export.h"

#include <cstdint>
#include <string>

/// One attribute of functions.
///
/// 1. A named attribute has the identifier 0 and a key that is never empty and is its own; its
///    identifier within a kind of function is found by that key in the kind's dictionary.
/// 2. An operation of boundary conditions has a fixed identifier and an empty key; it is asked for,
///    never stored. Two of them share the identifier 1.
struct FnAttr {
    std::uint32_t id = 0;
    std::string key;

    bool operator==(const FnAttr&) const = default;
};

// The factories: FnAttr FnAttrName(); and so on. Any thread.
#define LMW_FN_ATTRIBUTE(factory, key) LMW_API FnAttr factory();
#define LMW_FN_BOUNDARY(factory, id) LMW_API FnAttr factory();
#include "common/fn/fn_attr_table.inc"
#undef LMW_FN_BOUNDARY
#undef LMW_FN_ATTRIBUTE
