#pragma once

// A function that is another function, named by its number: how a boundary condition or a material
// says "use function 3".

#include "common/export.h"
#include "common/fn/capabilities.h"
#include "common/fn/fn_kind.h"
#include "common/fn/ifn.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lmw::fn {

/// Knows the functions of a project by their numbers. Supplied by whoever loads them.
class LMW_API IFunctionResolver {
 public:
    virtual ~IFunctionResolver();

    /// The function of this number; the default-made handle when there is none. Called while a
    /// function that refers to it is prepared, on that thread.
    [[nodiscard]] virtual IFn FunctionByNumber(std::uint32_t number) const = 0;

 protected:
    IFunctionResolver() = default;
    IFunctionResolver(const IFunctionResolver&) = default;
    IFunctionResolver& operator=(const IFunctionResolver&) = default;
};

/// Installs the resolver of this thread (null for none) and returns the one before. The caller
/// keeps ownership and takes it away before destroying it.
LMW_API const IFunctionResolver* SetFunctionResolver(const IFunctionResolver* resolver) noexcept;
LMW_API const IFunctionResolver* CurrentFunctionResolver() noexcept;

}  // namespace lmw::fn

/// Another function: one kind for each attribute "...FnNum", named by its key without "FnNum", such
/// as "VolWC(VolWCFnNum=3)" or short "VolWC(3)".
///
/// 1. Preparing asks the resolver of the thread for the function, and prepares that. It fails with
///    lmw::fn::error::FunctionDefinitionIncomplete without a number (0), a resolver or a function
///    of that number, with lmw::fn::error::UnableToComputeValue when functions refer to each other
///    in a circle, and as the other function's preparation does.
/// 2. Prepared, it is the other function as it was then: later changes of that are taken over by
///    preparing again. Evaluation costs one call more.
class LMW_API FnReference final : public FnKind,
                                  public lmw::fn::IFnUpdateCalculatedValues,
                                  public lmw::fn::IFnLastError,
                                  public lmw::fn::IFnOutputExtents,
                                  public lmw::fn::IFnDynamicAttributes {
 public:
    /// `attribute` is one of NumberAttributes(); any other makes the kind of FnAttrVolWCFnNum.
    explicit FnReference(const FnAttr& attribute);
    FnReference(const FnReference&) = default;
    FnReference& operator=(const FnReference&) = delete;
    ~FnReference() override;

    /// The attributes whose keys end in "FnNum".
    [[nodiscard]] static std::vector<FnAttr> NumberAttributes();
    /// The name of the kind that such an attribute makes.
    [[nodiscard]] static std::wstring KindNameOf(const std::string& key);

    [[nodiscard]] std::uint32_t Number() const { return number_; }
    void SetNumber(std::uint32_t number);

    /// The other function; the undefined one until prepared.
    [[nodiscard]] const IFn& Target() const { return target_; }

    [[nodiscard]] double Calculate(const double* x, const double* y) const override;
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override;
    [[nodiscard]] std::wstring KindName() const override;
    [[nodiscard]] int InputRangeNumPoints() const override;
    [[nodiscard]] double InputRangeAt(int index) const override;
    [[nodiscard]] bool SupportsDyDx() const override;
    [[nodiscard]] double DyDx(double x,
                              const math::algorithm::Tolerance<double>& tolerance) const override;
    [[nodiscard]] bool SupportsIntegrate() const override;
    [[nodiscard]] double Integrate(
        double a, double b, const math::algorithm::Tolerance<double>& tolerance) const override;
    gtl::status Prepare() override;
    [[nodiscard]] gtl::status LastError() const override;
    [[nodiscard]] gtl::range<double> OutputExtents() const override;
    /// The attribute "Value" is the same number and only there to be set.
    [[nodiscard]] bool HasAttributeNow(unsigned id) const override;

 private:
    std::uint32_t number_ = 0;
    IFn target_;
};
