#include "common/fn/fn_const.h"

#include "common/fn/fn_error.h"
#include "common/sys/text_encoding.h"

#include <cmath>
#include <map>

namespace {

class ConstDictionary final : public lmw::fn::AttributeDictionary {
 public:
    ConstDictionary() {
        FnKind::RegisterIdentity_(*this);
        RegisterMember_(FnAttrValue(), &FnConst::Value, &FnConst::SetValue);
    }
};

// The plain constant's, and one more name for its value.
class UnitConstDictionary final : public lmw::fn::AttributeDictionary {
 public:
    explicit UnitConstDictionary(const FnAttr& attribute)
        : AttributeDictionary(&FnConst::Dictionary()) {
        FnKind::RegisterIdentity_(*this);
        RegisterMember_(attribute, &FnConst::Value, &FnConst::SetValue);
    }
};

const lmw::fn::AttributeDictionary& UnitDictionaryOf(const FnAttr& attribute) {
    static const auto dictionaries = [] {
        std::map<std::string, std::unique_ptr<const UnitConstDictionary>> built;
        for (const FnAttr& constant : FnUnitConst::ConstAttributes()) {
            built[constant.key] = std::make_unique<UnitConstDictionary>(constant);
        }
        return built;
    }();
    const auto found = dictionaries.find(attribute.key);
    return found != dictionaries.end() ? *found->second
                                       : *dictionaries.at(FnAttrConstNoUnits().key);
}

}  // namespace

FnConst::~FnConst() = default;

const lmw::fn::AttributeDictionary& FnConst::Dictionary() {
    static const ConstDictionary dictionary;
    return dictionary;
}

void FnConst::SetValue(double value) {
    value_ = value;
    DefinitionChanged();
}

double FnConst::Calculate(const double* /*x*/, const double* /*y*/) const {
    return value_;
}

std::unique_ptr<FnImpl> FnConst::Clone() const {
    return std::make_unique<FnConst>(*this);
}

std::wstring FnConst::KindName() const {
    return L"Const";
}

bool FnConst::SupportsDyDx() const {
    return true;
}

double FnConst::DyDx(double /*x*/, const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    return lmw::IsDefined(value_) ? 0.0 : lmw::kUndefined;
}

bool FnConst::SupportsIntegrate() const {
    return true;
}

double FnConst::Integrate(double a, double b,
                          const math::algorithm::Tolerance<double>& /*tolerance*/) const {
    return lmw::IsDefined(value_) ? value_ * std::fabs(b - a) : lmw::kUndefined;
}

gtl::status FnConst::Prepare() {
    return lmw::IsDefined(value_) ? gtl::status() : lmw::fn::error::FunctionDefinitionIncomplete();
}

gtl::status FnConst::LastError() const {
    return lmw::IsDefined(value_) ? UnableToComputeValue_()
                                  : lmw::fn::error::FunctionDefinitionIncomplete();
}

gtl::range<double> FnConst::OutputExtents() const {
    if (!lmw::IsDefined(value_)) {
        return {};
    }
    return {value_, gtl::bound_kind::inclusive, value_, gtl::bound_kind::inclusive};
}

FnUnitConst::FnUnitConst(const FnAttr& attribute, double value)
    : FnConst(UnitDictionaryOf(attribute), value) {}

FnUnitConst::~FnUnitConst() = default;

std::vector<FnAttr> FnUnitConst::ConstAttributes() {
    return {FnAttrConstAbsolutePressure(),
            FnAttrConstAirFlux(),
            FnAttrConstConcentration(),
            FnAttrConstDistance(),
            FnAttrConstEnergyRate(),
            FnAttrConstEnergyUnitFlux(),
            FnAttrConstForce(),
            FnAttrConstMassFlux(),
            FnAttrConstMassRate(),
            FnAttrConstNoUnits(),
            FnAttrConstPressure(),
            FnAttrConstSpring(),
            FnAttrConstTemperature(),
            FnAttrConstUnitWeight(),
            FnAttrConstVolumetricFlowRate(),
            FnAttrConstWaterFlux()};
}

std::unique_ptr<FnImpl> FnUnitConst::Clone() const {
    return std::make_unique<FnUnitConst>(*this);
}

std::wstring FnUnitConst::KindName() const {
    return sys::Widen(Attributes().NameByAttributeID(Attributes().EndAttributeID() - 1));
}

bool FnUnitConst::HasAttributeNow(unsigned id) const {
    return id != AttributeIDOf_(FnAttrValue());
}
