#pragma once

// The function that is not there: what stands for a function that could not be read or made.

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_kind.h"
#include "common/status.h"

#include <memory>
#include <string>

/// A function without values. It keeps the name of what should have been there and the reason why
/// it is not, which every failed evaluation passes on.
class LMW_API FnUndefined final : public FnKind, public lmw::fn::IFnLastError {
 public:
    /// `why` is copied into a record of its own, so that the function may go to another thread than
    /// the caller's status. Success: no reason is known.
    FnUndefined(const std::wstring& name, const gtl::status& why);
    FnUndefined(const FnUndefined& other);
    FnUndefined& operator=(const FnUndefined&) = delete;
    ~FnUndefined() override;

    /// The dictionary of all undefined functions, by which they are recognised.
    [[nodiscard]] static const lmw::fn::IAttributeDictionary& Dictionary();

    /// The name given, also when it is empty.
    [[nodiscard]] std::wstring Name() const override { return GivenName_(); }

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] gtl::status LastError() const override;

 private:
    const gtl::status why_;
};

namespace lmw::fn {

/// A new undefined function.
LMW_API std::unique_ptr<FnUndefined> CreateUndefined(const std::wstring& name,
                                                     const gtl::status& why);

}  // namespace lmw::fn
