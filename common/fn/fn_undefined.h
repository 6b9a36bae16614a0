#pragma once

// The function that is not there: what stands for a function that could not be read or made.

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_kind.h"
#include "common/status.h"

#include <memory>
#include <string>
#include <utility>

/// A function without values. It keeps the name of what should have been there, the reason why it
/// is not, which every failed evaluation passes on, and the text of which it could not be made: a
/// project that is loaded where a kind is missing, and saved again, has lost nothing.
class LMW_API FnUndefined final : public FnKind,
                                  public lmw::fn::IFnCustomAsString,
                                  public lmw::fn::IFnIsEqual,
                                  public lmw::fn::IFnLastError {
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

    /// The text of which it could not be made; empty when there was none. Undefined functions are
    /// equal when these are. A name or description that is given later does not reach it.
    [[nodiscard]] const std::wstring& Definition() const { return definition_; }
    void SetDefinition(std::wstring text) { definition_ = std::move(text); }
    /// That text as it stands, else the form of the other kinds, with the name.
    [[nodiscard]] std::wstring as_wstring() const override;
    [[nodiscard]] bool IsEqual(const FnImpl& other) const override;

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] gtl::status LastError() const override;

 private:
    const gtl::status why_;
    std::wstring definition_;
};

namespace lmw::fn {

/// A new undefined function.
LMW_API std::unique_ptr<FnUndefined> CreateUndefined(const std::wstring& name,
                                                     const gtl::status& why);

}  // namespace lmw::fn
