#include "common/fn/fn_impl.h"

#include "common/app/fatal.h"
#include "common/errors.h"
#include "common/fn/attribute_dictionary.h"
#include "common/fn/capabilities.h"
#include "common/undefined.h"

#include <exception>

namespace {

gtl::status Prepare(lmw::fn::IFnUpdateCalculatedValues& kind) {
    try {
        return kind.Prepare();
    } catch (const gtl::status_exception& failure) {
        return failure.Status();
    } catch (const std::exception& failure) {
        return LmwError::unexpected_exception(failure.what());
    }
}

}  // namespace

FnImpl::~FnImpl() = default;

const lmw::fn::IAttributeDictionary& FnImpl::Attributes() const noexcept {
    return *dictionary_;
}

int FnImpl::InputRangeNumPoints() const {
    return 0;
}

double FnImpl::InputRangeAt(int /*index*/) const {
    return lmw::kUndefined;
}

bool FnImpl::SupportsDyDx() const {
    return false;
}

double FnImpl::DyDx(double /*x*/, const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    return lmw::kUndefined;
}

bool FnImpl::SupportsIntegrate() const {
    return false;
}

double FnImpl::Integrate(double /*a*/, double /*b*/,
                         const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    return lmw::kUndefined;
}

bool FnImpl::HasAttribute(unsigned id) const {
    if (Attributes().TypeByAttributeID(id) == lmw::fn::attribute::storage::None) {
        return false;
    }
    const auto* const dynamic = dynamic_cast<const lmw::fn::IFnDynamicAttributes*>(this);
    return dynamic == nullptr || dynamic->HasAttributeNow(id);
}

bool FnImpl::HasAttribute(const FnAttr& attribute) const {
    return HasAttribute(AttributeIDOf_(attribute));
}

unsigned FnImpl::AttributeIDOf_(const FnAttr& attribute) const {
    if (!attribute.key.empty()) {
        return Attributes().AttributeIDOf(attribute.key);
    }
    const bool is_operation =
        Attributes().TypeByAttributeID(attribute.id) != lmw::fn::attribute::storage::None &&
        Attributes().NameByAttributeID(attribute.id).empty();
    return is_operation ? attribute.id : lmw::fn::kNoAttribute;
}

bool FnImpl::IsAttributeEditable(const FnAttr& attribute) const {
    return Attributes().IsEditableByAttributeID(AttributeIDOf_(attribute));
}

gtl::status FnImpl::UpdateCalculatedValues() {
    auto* const kind = dynamic_cast<lmw::fn::IFnUpdateCalculatedValues*>(this);
    gtl::status result = kind != nullptr ? Prepare(*kind) : gtl::status();
    up_to_date_ = result.Succeeded();
    return result;
}

void FnImpl::ReleaseReference() noexcept {
    if (reference_count_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete this;
    }
}

namespace lmw::fn {

void EnsureValid(FnImpl& function, gtl::status& outcome) {
    if (!function.IsUpToDate()) {
        outcome = function.UpdateCalculatedValues();
    }
}

void EnsureValid(FnImpl& function) {
    gtl::status outcome;
    EnsureValid(function, outcome);
    if (outcome.Failed()) {
        // The place by which support knows this failure in the logs of every version.
        constexpr int kLine = 481;
        Fatal(outcome, "fnimpl", kLine);
    }
}

}  // namespace lmw::fn
