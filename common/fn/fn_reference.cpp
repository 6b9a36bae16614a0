#include "common/fn/fn_reference.h"

#include "common/fn/evaluate.h"
#include "common/fn/fn_error.h"
#include "common/sys/text_encoding.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kSuffix = "FnNum";

thread_local const lmw::fn::IFunctionResolver* current_resolver = nullptr;

// The numbers that are being resolved on this thread, outermost first.
thread_local std::vector<std::uint32_t> numbers_in_progress;

class NumberInProgress {
 public:
    explicit NumberInProgress(std::uint32_t number) { numbers_in_progress.push_back(number); }
    NumberInProgress(const NumberInProgress&) = delete;
    NumberInProgress& operator=(const NumberInProgress&) = delete;
    ~NumberInProgress() { numbers_in_progress.pop_back(); }
};

class NumberDictionary final : public lmw::fn::AttributeDictionary {
 public:
    NumberDictionary() {
        FnKind::RegisterIdentity_(*this);
        RegisterMember_(FnAttrValue(), &FnReference::Number, &FnReference::SetNumber);
    }
};

class ReferenceDictionary final : public lmw::fn::AttributeDictionary {
 public:
    explicit ReferenceDictionary(const FnAttr& attribute) : AttributeDictionary(&Base_()) {
        FnKind::RegisterIdentity_(*this);
        RegisterMember_(attribute, &FnReference::Number, &FnReference::SetNumber);
    }

 private:
    static const lmw::fn::AttributeDictionary& Base_() {
        static const NumberDictionary dictionary;
        return dictionary;
    }
};

const lmw::fn::AttributeDictionary& DictionaryOf(const FnAttr& attribute) {
    static const auto dictionaries = [] {
        std::map<std::string, std::unique_ptr<const ReferenceDictionary>> built;
        for (const FnAttr& number : FnReference::NumberAttributes()) {
            built[number.key] = std::make_unique<ReferenceDictionary>(number);
        }
        return built;
    }();
    const auto found = dictionaries.find(attribute.key);
    return found != dictionaries.end() ? *found->second : *dictionaries.at(FnAttrVolWCFnNum().key);
}

}  // namespace

namespace lmw::fn {

IFunctionResolver::~IFunctionResolver() = default;

const IFunctionResolver* SetFunctionResolver(const IFunctionResolver* resolver) noexcept {
    return std::exchange(current_resolver, resolver);
}

const IFunctionResolver* CurrentFunctionResolver() noexcept {
    return current_resolver;
}

}  // namespace lmw::fn

FnReference::FnReference(const FnAttr& attribute) : FnKind(DictionaryOf(attribute)) {}

FnReference::~FnReference() = default;

std::vector<FnAttr> FnReference::NumberAttributes() {
    static constexpr auto kKeys = std::to_array<std::string_view>({
#define LMW_FN_ATTRIBUTE(factory, key) key,
#define LMW_FN_BOUNDARY(factory, id)
#include "common/fn/fn_attr_table.inc"
#undef LMW_FN_BOUNDARY
#undef LMW_FN_ATTRIBUTE
    });
    std::vector<FnAttr> numbers;
    for (const std::string_view key : kKeys) {
        if (key.ends_with(kSuffix)) {
            numbers.push_back({0, std::string(key)});
        }
    }
    return numbers;
}

std::wstring FnReference::KindNameOf(const std::string& key) {
    return sys::Widen(std::string_view(key).substr(0, key.size() - kSuffix.size()));
}

void FnReference::SetNumber(std::uint32_t number) {
    number_ = number;
    target_ = IFn();
    DefinitionChanged();
}

double FnReference::Calculate(const double* x, const double* y) const {
    return target_->Calculate(x, y);
}

std::unique_ptr<FnImpl> FnReference::Clone() const {
    return std::make_unique<FnReference>(*this);
}

std::wstring FnReference::KindName() const {
    return KindNameOf(Attributes().NameByAttributeID(Attributes().EndAttributeID() - 1));
}

int FnReference::InputRangeNumPoints() const {
    return target_->InputRangeNumPoints();
}

double FnReference::InputRangeAt(int index) const {
    return target_->InputRangeAt(index);
}

bool FnReference::SupportsDyDx() const {
    return target_->SupportsDyDx();
}

double FnReference::DyDx(double x, const math::algorithm::Tolerance<double>& tolerance) const {
    return target_->DyDx(x, tolerance);
}

bool FnReference::SupportsIntegrate() const {
    return target_->SupportsIntegrate();
}

double FnReference::Integrate(double a, double b,
                              const math::algorithm::Tolerance<double>& tolerance) const {
    return target_->Integrate(a, b, tolerance);
}

gtl::status FnReference::Prepare() {
    target_ = IFn();
    if (number_ == 0 || current_resolver == nullptr) {
        return lmw::fn::error::FunctionDefinitionIncomplete();
    }
    if (std::find(numbers_in_progress.begin(), numbers_in_progress.end(), number_) !=
        numbers_in_progress.end()) {
        return lmw::fn::error::UnableToComputeValue(Name(), std::to_wstring(number_), {});
    }
    IFn found = current_resolver->FunctionByNumber(number_);
    if (lmw::fn::impl::IsUndefined(&*found)) {
        gtl::status why = lmw::fn::impl::LastError(*found);
        return why.Failed() ? why : lmw::fn::error::FunctionDefinitionIncomplete();
    }
    const NumberInProgress guard(number_);
    gtl::status result = found.UpdateCalculatedValues();
    if (result.Succeeded()) {
        target_ = std::move(found);
    }
    return result;
}

gtl::status FnReference::LastError() const {
    return IsUpToDate() ? lmw::fn::impl::LastError(*target_)
                        : lmw::fn::error::FunctionDefinitionIncomplete();
}

gtl::range<double> FnReference::OutputExtents() const {
    return lmw::fn::impl::OutputExtents(*target_);
}

bool FnReference::HasAttributeNow(unsigned id) const {
    return id != AttributeIDOf_(FnAttrValue());
}
