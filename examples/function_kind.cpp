// How do I add a kind of function of my own? Registered, it is made from texts, listed, saved and
// evaluated like the library's own kinds.

#include "van_genuchten.h"

#include <common/fn/attributes.h>
#include <common/fn/evaluate.h>
#include <common/fn/ifn.h>
#include <common/fn/kinds.h>
#include <common/sys/text_encoding.h>

#include <cstdio>
#include <iostream>
#include <memory>

namespace {

int Report(const gtl::status& failure) {
    std::cerr << sys::Narrow(failure.as_wstring()) << '\n';
    return 1;
}

}  // namespace

int main() {
    gtl::status result =
        lmw::fn::RegisterKind(L"VanGenuchten", [] { return std::make_unique<FnVanGenuchten>(); });
    if (result.Failed()) {
        return Report(result);
    }

    IFn silt;
    result = lmw::fn::Create(L"VanGenuchten(A=50,N=1.37,SatWC=0.46,ResWC=0.034)", silt);
    if (result.Failed()) {
        return Report(result);
    }
    for (const double pressure : {0.0, -10.0, -100.0, -1000.0}) {
        std::printf("%6.0f kPa  %.4f\n", pressure,
                    lmw::fn::impl::SafeCalculate(*silt, &pressure, nullptr));
    }

    // Changed through its attributes: a handle to the same function keeps the old definition.
    const IFn before = silt;
    result = lmw::fn::attributes::Set(silt.pImpl_mutable(), FnAttrSatWC(), 0.5);
    if (result.Succeeded()) {
        result = silt.UpdateCalculatedValues();
    }
    if (result.Failed()) {
        return Report(result);
    }
    std::printf("%s\n%s\n", sys::Narrow(lmw::fn::impl::as_wstring(*before)).c_str(),
                sys::Narrow(lmw::fn::impl::as_wstring(*silt)).c_str());
    return 0;
}
