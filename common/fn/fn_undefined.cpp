#include "common/fn/fn_undefined.h"

#include "common/fn/attributes.h"
#include "common/fn/fn_string.h"
#include "common/undefined.h"

namespace {

class UndefinedDictionary final : public lmw::fn::AttributeDictionary {
 public:
    UndefinedDictionary() { FnKind::RegisterIdentity_(*this); }
};

}  // namespace

FnUndefined::FnUndefined(const std::wstring& name, const gtl::status& why)
    : FnKind(Dictionary()), why_(why.Duplicate()) {
    SetName(name);
}

FnUndefined::FnUndefined(const FnUndefined& other)
    : FnKind(other),
      IFnCustomAsString(other),
      IFnIsEqual(other),
      IFnLastError(other),
      why_(other.why_.Duplicate()),
      definition_(other.definition_) {}

FnUndefined::~FnUndefined() = default;

const lmw::fn::IAttributeDictionary& FnUndefined::Dictionary() {
    static const UndefinedDictionary dictionary;
    return dictionary;
}

std::wstring FnUndefined::as_wstring() const {
    return definition_.empty()
               ? ::fn::string::Serialize(KindName(), lmw::fn::PersistedAttributes(*this))
               : definition_;
}

bool FnUndefined::IsEqual(const FnImpl& other) const {
    const auto* const undefined = dynamic_cast<const FnUndefined*>(&other);
    return undefined != nullptr && undefined->definition_ == definition_;
}

double FnUndefined::Calculate(const double* /*x*/, const double* /*y*/) const {
    return lmw::kUndefined;
}

std::unique_ptr<FnImpl> FnUndefined::Clone() const {
    return std::make_unique<FnUndefined>(*this);
}

std::wstring FnUndefined::KindName() const {
    return L"Undefined";
}

gtl::status FnUndefined::LastError() const {
    return why_.Duplicate();
}

std::unique_ptr<FnUndefined> lmw::fn::CreateUndefined(const std::wstring& name,
                                                      const gtl::status& why) {
    return std::make_unique<FnUndefined>(name, why);
}
