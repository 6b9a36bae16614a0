#pragma once

// The two objects that a data table may be given: one that supplies parameters the table does not
// store, one that is told when the table changes.

#include "common/datatable/data_param_type.h"
#include "common/export.h"
#include "common/gid.h"

class DataTable;

/// Computes parameters from those a table stores.
///
/// One evaluator may serve many tables, and tables may be read by many threads, so both functions
/// must be safe to call at once. They may ask the table for other parameters; an evaluator that
/// asks for a parameter while supplying the same one never returns.
class LMW_API IParamEvaluator {
 public:
    IParamEvaluator() = default;
    IParamEvaluator(const IParamEvaluator&) = default;
    IParamEvaluator& operator=(const IParamEvaluator&) = default;
    virtual ~IParamEvaluator();

    /// Whether Supply can give values of `param` for `table`. Not asked for the null parameter, nor
    /// for one that the table stores.
    [[nodiscard]] virtual bool CanSupply(DataParamType param, const DataTable& table) const = 0;

    /// The value of `param` for one row of `table`, in the unit of the parameter; lmw::kUndefined
    /// when there is none. Only called with a row that the table has and after CanSupply.
    [[nodiscard]] virtual double Supply(DataParamType param, const DataTable& table,
                                        GID row) const = 0;
};

/// Keeps what is derived from a table up to date.
class LMW_API ICalculators {
 public:
    ICalculators() = default;
    ICalculators(const ICalculators&) = default;
    ICalculators& operator=(const ICalculators&) = default;
    virtual ~ICalculators();

    /// `table` has changed as a whole: its parameters, its number of rows, or all its values.
    /// Called by the thread that changed it, when the change is complete. The function may read and
    /// write values, but must not change the table as a whole again. Single values written by a
    /// caller are not reported.
    virtual void TableChanged(DataTable& table) noexcept = 0;
};
