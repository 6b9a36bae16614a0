#pragma once

// Lists of parameters combined as if they were sets, keeping their order.
// Each function marks membership in one bit set, so it takes time linear in the lengths of the
// lists. Values at or above dataparamtype::kParamCount are members of no list.

#include "common/datatable/data_param_type.h"
#include "common/export.h"

namespace dataparamtype {

/// The elements of `b`, in b's order and with b's repeats, that occur in `a`; empty when either
/// list is.
LMW_API DataParamList ListIntersection(const DataParamList& a, const DataParamList& b);

/// The elements of `a`, in a's order and with a's repeats, that do not occur in `b`.
LMW_API DataParamList ListDifference(const DataParamList& a, const DataParamList& b);

/// The elements of `a`, in a's order and with a's repeats, followed by the elements of `b`, in b's
/// order and with b's repeats, that do not occur in `a`. With one list empty it is the other list.
LMW_API DataParamList ListUnion(const DataParamList& a, const DataParamList& b);

}  // namespace dataparamtype
