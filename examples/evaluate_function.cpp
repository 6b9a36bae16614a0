// How do I evaluate a function that a project holds as a text, and learn why it has no value?

#include <common/fn/attributes.h>
#include <common/fn/evaluate.h>
#include <common/fn/fn_attr.h>
#include <common/fn/ifn.h>
#include <common/fn/kinds.h>
#include <common/sys/text_encoding.h>
#include <common/undefined.h>

#include <cstdio>
#include <string>

namespace {

using lmw::fn::impl::SafeCalculate;

void Print(const char* what, const std::wstring& text) {
    std::printf("%s: %s\n", what, sys::Narrow(text).c_str());
}

//! [handler]
// Is told of every evaluation without a value on the threads that install it.
class Reasons final : public lmw::fn::IErrorHandler {
 public:
    void CalculationFailed(const FnImpl& function, const double* x, const double* /*y*/,
                           const gtl::status& why) noexcept override {
        std::printf("  no value of %s at %.0f: %s\n", sys::Narrow(function.KindName()).c_str(), *x,
                    sys::Narrow(why.as_wstring()).c_str());
    }
};
//! [handler]

}  // namespace

int main() {
    //! [create]
    // A spline over suction (kPa), level before its points and nothing beyond them.
    IFn content;
    const gtl::status made = lmw::fn::Create(
        L"Spline(DataInit=1 0.38;8 0.35;31 0.32;150 0.26;1470 0.18,Tension=50,SlopeAfter=None)",
        content);
    if (made.Failed()) {
        Print("failed", made.as_wstring());
        return 1;
    }
    const double suction = 100.0;
    std::printf("at 100 kPa: %.4f\n", SafeCalculate(*content, &suction, nullptr));
    //! [create]

    //! [change]
    // A copy shares the definition until one of them is changed.
    IFn straight = content;
    gtl::status changed =
        lmw::fn::attributes::Set(straight.pImpl_mutable(), FnAttrTension(), std::wstring(L"0"));
    if (changed.Succeeded()) {
        changed = straight.UpdateCalculatedValues();
    }
    std::printf("straight:   %.4f\n", SafeCalculate(*straight, &suction, nullptr));
    Print("as text", lmw::fn::impl::as_wstring(*straight));
    //! [change]

    Reasons reasons;
    const lmw::fn::impl::ScopedErrorHandler installed(&reasons);
    const double too_dry = 5000.0;
    std::printf("at 5000 kPa: %s\n",
                lmw::IsDefined(SafeCalculate(*content, &too_dry, nullptr)) ? "a value" : "none");

    // A text that is broken makes an undefined function, so that its project still loads.
    IFn broken;
    Print("a broken text", lmw::fn::Create(L"Spline DataInit=1 0.38;8 0.35", broken).as_wstring());
    SafeCalculate(*broken, &suction, nullptr);
    return changed.Succeeded() ? 0 : 1;
}
