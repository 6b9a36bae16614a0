#include "common/datatable/deep_table_context.h"

IDeepTableContext::~IDeepTableContext() = default;
