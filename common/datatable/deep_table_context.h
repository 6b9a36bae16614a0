#pragma once

// A table context that belongs to one record within another: what such an object must offer. The
// contexts themselves are the applications'.

#include "common/export.h"
#include "common/gid.h"
#include "common/status.h"

/// An object that has to be told where it stands before it can work: in which table of which
/// record. Function kinds that look into tables derive from it.
class LMW_API IDeepTableContext {
 public:
    virtual ~IDeepTableContext();

    /// Binds the object to the container `table` within the record `owner`. Returns the failure to
    /// do so; the object then stands where it stood before.
    virtual gtl::status InitializeInstance(GID owner, GID table) = 0;

 protected:
    IDeepTableContext() = default;
    IDeepTableContext(const IDeepTableContext&) = default;
    IDeepTableContext& operator=(const IDeepTableContext&) = default;
};
