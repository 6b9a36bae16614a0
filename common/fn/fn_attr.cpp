#include "common/fn/fn_attr.h"

#define LMW_FN_ATTRIBUTE(factory, key) \
    FnAttr factory() {                 \
        return {0, key};               \
    }
#define LMW_FN_BOUNDARY(factory, id) \
    FnAttr factory() {               \
        return {id, {}};             \
    }
#include "common/fn/fn_attr_table.inc"
#undef LMW_FN_BOUNDARY
#undef LMW_FN_ATTRIBUTE
