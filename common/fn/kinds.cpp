#include "common/fn/kinds.h"

#include "common/convert_error.h"
#include "common/fn/attributes.h"
#include "common/fn/fn_const.h"
#include "common/fn/fn_curves.h"
#include "common/fn/fn_error.h"
#include "common/fn/fn_fred_xing.h"
#include "common/fn/fn_reference.h"
#include "common/fn/fn_string.h"
#include "common/fn/fn_undefined.h"
#include "common/meta_enum.h"
#include "common/sys/text_encoding.h"

#include <map>
#include <mutex>
#include <utility>

namespace lmw::fn {

namespace {

// A function object: of a plain function the type's description would be exported.
template <class Kind>
KindMaker MakerOf() {
    return [] { return std::make_unique<Kind>(); };
}

struct Kinds {
    std::mutex mutex;
    std::map<std::wstring, KindMaker> makers;

    // The one place where the library's own kinds are named.
    Kinds() {
        makers[L"Const"] = MakerOf<FnConst>();
        makers[L"FredlundXing"] = MakerOf<FnFredXing>();
        makers[L"Linear"] = MakerOf<FnLinear>();
        makers[L"Spline"] = MakerOf<FnSpline>();
        makers[L"Step"] = MakerOf<FnStep>();
        makers[L"Undefined"] = [] { return CreateUndefined({}, {}); };
        for (const FnAttr& constant : FnUnitConst::ConstAttributes()) {
            makers[sys::Widen(constant.key)] = [constant] {
                return std::make_unique<FnUnitConst>(constant);
            };
        }
        for (const FnAttr& number : FnReference::NumberAttributes()) {
            makers[FnReference::KindNameOf(number.key)] = [number] {
                return std::make_unique<FnReference>(number);
            };
        }
    }
};

Kinds& AllKinds() {
    static Kinds kinds;
    return kinds;
}

gtl::status Build(const std::wstring& text, std::wstring& name, IFn& function) {
    ::fn::string::AttributePairs pairs;
    gtl::status result = ::fn::string::Parse(text, name, pairs);
    if (result.Failed()) {
        return result;
    }
    std::unique_ptr<FnImpl> made = MakeFunction(name);
    if (made == nullptr) {
        return meta::ErrConvertOneOf(name, KindNames());
    }
    function = IFn(std::move(made));
    result = SetPersistedAttributes(function, pairs);
    return result.Succeeded() ? function.UpdateCalculatedValues() : result;
}

}  // namespace

gtl::status RegisterKind(const std::wstring& name, const KindMaker& make) {
    if (name.empty() || name.find_first_of(L"()") != std::wstring::npos) {
        return error::MalformedFunctionText();
    }
    Kinds& kinds = AllKinds();
    const std::lock_guard lock(kinds.mutex);
    if (!kinds.makers.try_emplace(name, make).second) {
        return gtl::Convert_error_status::OutOfRangeStatus(name, {});
    }
    return {};
}

std::vector<std::wstring> KindNames() {
    Kinds& kinds = AllKinds();
    const std::lock_guard lock(kinds.mutex);
    std::vector<std::wstring> names;
    names.reserve(kinds.makers.size());
    for (const auto& [name, make] : kinds.makers) {
        names.push_back(name);
    }
    return names;
}

std::unique_ptr<FnImpl> MakeFunction(const std::wstring& kind) {
    KindMaker make;
    {
        Kinds& kinds = AllKinds();
        const std::lock_guard lock(kinds.mutex);
        const auto found = kinds.makers.find(kind);
        if (found == kinds.makers.end()) {
            return nullptr;
        }
        make = found->second;
    }
    return make();
}

gtl::status Create(const std::wstring& text, IFn& function) {
    std::wstring name;
    IFn built;
    gtl::status result = Build(text, name, built);
    if (result.Succeeded()) {
        function = std::move(built);
    } else {
        std::unique_ptr<FnUndefined> undefined = CreateUndefined(name, result);
        undefined->SetDefinition(text);
        function = IFn(std::move(undefined));
    }
    return result;
}

}  // namespace lmw::fn
