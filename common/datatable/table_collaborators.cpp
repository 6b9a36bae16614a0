#include "common/datatable/table_collaborators.h"

IParamEvaluator::~IParamEvaluator() = default;

ICalculators::~ICalculators() = default;
