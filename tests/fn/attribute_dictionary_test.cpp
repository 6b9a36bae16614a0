// What dictionaries say of attributes, alone, derived and chained.

#include "common/fn/attribute_dictionary.h"

#include "common/fn/attributes.h"
#include "common/fn/chained_attribute_dictionary.h"
#include "common/fn/fn_attr.h"
#include "common/fn/fn_curves.h"
#include "common/fn/fn_error.h"

#include "tests/fn/test_kinds.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using lmw::fn::AttributeDictionary;
using lmw::fn::ChainedAttributeDictionary;
using lmw::fn::kNoAttribute;
using lmw::test::PlainKind;
namespace storage = lmw::fn::attribute::storage;

// An attribute whose value is always the same number, and that takes no other.
AttributeDictionary::Getter Always(double value) {
    return [value](void* out, const FnImpl* /*function*/) {
        *static_cast<double*>(out) = value;
        return gtl::status();
    };
}

AttributeDictionary::Setter Refuse() {
    return [](FnImpl* /*function*/, const void* /*in*/) {
        return lmw::fn::error::FunctionDefinitionIncomplete();
    };
}

void Register(AttributeDictionary& dictionary, const char* key, double value,
              DataParamType param = DataParamType::Null) {
    dictionary.RegisterAttribute_({0, key}, storage::Double, Always(value), Refuse(), param);
}

// With values that count up.
void RegisterAll(AttributeDictionary& dictionary, double value,
                 std::initializer_list<const char*> keys) {
    for (const char* const key : keys) {
        Register(dictionary, key, value++);
    }
}

double ValueOf(const lmw::fn::IAttributeDictionary& dictionary, unsigned id) {
    double value = lmw::kUndefined;
    dictionary.ValueOf(nullptr, id, &value).Ignore();
    return value;
}

TEST(AttributeDictionary, AnswersNothingForWhatItDoesNotHave) {
    AttributeDictionary dictionary;
    Register(dictionary, "only", 1.0);
    for (const unsigned id : {1U, 100U, kNoAttribute}) {
        SCOPED_TRACE(id);
        double value = 7.0;
        EXPECT_EQ(dictionary.TypeByAttributeID(id), storage::None);
        EXPECT_EQ(dictionary.NameByAttributeID(id), "");
        EXPECT_EQ(dictionary.ParamByAttributeID(id), DataParamType::Null);
        EXPECT_FALSE(dictionary.IsEditableByAttributeID(id));
        EXPECT_EQ(dictionary.ValueOf(nullptr, id, &value).MessageId(), 21638U);
        EXPECT_EQ(dictionary.SetValueOf(nullptr, id, &value).MessageId(), 21638U);
        EXPECT_EQ(value, 7.0);
    }
    EXPECT_EQ(dictionary.AttributeIDOf("another"), kNoAttribute);
    EXPECT_EQ(dictionary.AttributeIDOf(""), kNoAttribute);
    EXPECT_EQ(dictionary.AttributeIDOf(DataParamType::Null), kNoAttribute);
}

TEST(AttributeDictionary, PutsOwnAttributesAfterThoseOfItsBase) {
    AttributeDictionary base;
    RegisterAll(base, 10.0, {"b0", "b1", "b2"});
    Register(base, "b3", 13.0, DataParamType::PorePressure);
    Register(base, "both", 14.0);
    AttributeDictionary derived(&base);
    RegisterAll(derived, 20.0, {"d0", "d1", "d2"});
    EXPECT_EQ(derived.EndAttributeID(), 5U);
    Register(derived, "both", 30.0);
    EXPECT_EQ(derived.EndAttributeID(), 6U);

    const double values[] = {20.0, 21.0, 22.0, 13.0, 14.0, 30.0};
    const char* const names[] = {"d0", "d1", "d2", "b3", "both", "both"};
    for (unsigned id = 0; id < 6; ++id) {
        SCOPED_TRACE(id);
        EXPECT_EQ(ValueOf(derived, id), values[id]);
        EXPECT_EQ(derived.NameByAttributeID(id), names[id]);
        EXPECT_EQ(derived.TypeByAttributeID(id), storage::Double);
        EXPECT_TRUE(derived.IsEditableByAttributeID(id));
    }
    EXPECT_EQ(derived.AttributeIDOf("both"), 5U);  // the own one first
    EXPECT_EQ(derived.AttributeIDOf("b3"), 3U);
    EXPECT_EQ(derived.AttributeIDOf(DataParamType::PorePressure), 3U);
    EXPECT_EQ(derived.ParamByAttributeID(3), DataParamType::PorePressure);
}

TEST(AttributeDictionary, RefusesWhatHasNoGetterOrSetter) {
    AttributeDictionary dictionary;
    dictionary.RegisterAttribute_({0, "bare"}, storage::Double, nullptr, nullptr);
    double value = 0.0;
    EXPECT_EQ(dictionary.ValueOf(nullptr, 0, &value).MessageId(), 20571U);
    EXPECT_EQ(dictionary.SetValueOf(nullptr, 0, &value).MessageId(), 21638U);
    EXPECT_FALSE(dictionary.IsEditableByAttributeID(0));
}

TEST(AttributeDictionary, SaysThatADefinitionChangedButNotForIdentityOrFailure) {
    PlainKind plain;
    const AttributeDictionary& dictionary = PlainKind::Dictionary();
    ASSERT_TRUE(plain.UpdateCalculatedValues().Succeeded());
    const std::wstring name = L"sand";
    EXPECT_TRUE(dictionary.SetValueOf(&plain, 0, &name).Succeeded());
    EXPECT_TRUE(plain.IsUpToDate());
    const double value = 2.0;
    EXPECT_TRUE(dictionary.SetValueOf(&plain, 3, &value).Succeeded());
    EXPECT_FALSE(plain.IsUpToDate());
    FnLinear another;
    EXPECT_EQ(dictionary.SetValueOf(&another, 3, &value).MessageId(), 21638U);
}

TEST(BoundaryOperations, AreFoundByIdentifierOnly) {
    struct Boundary : AttributeDictionary {
        Boundary() {
            Register(*this, "Type", 0.0);
            RegisterAttribute_(FnAttrBoundaryBegin(), storage::Double, Always(1.0), nullptr);
            RegisterAttribute_(FnAttrBoundaryIsReviewRequired(), storage::Double, Always(2.0),
                               nullptr);
        }
    };
    static const Boundary dictionary;
    class BoundaryKind final : public PlainKind {
     public:
        [[nodiscard]] const lmw::fn::IAttributeDictionary& Attributes() const noexcept override {
            return dictionary;
        }
    };
    const BoundaryKind boundary;
    EXPECT_EQ(dictionary.AttributeIDOf(""), kNoAttribute);
    EXPECT_TRUE(boundary.HasAttribute(FnAttrBoundaryCategoryTest()));  // 1 as well
    EXPECT_TRUE(boundary.HasAttribute(FnAttrBoundaryIsReviewRequired()));
    EXPECT_FALSE(boundary.HasAttribute(FnAttrBoundaryNotifyCategory()));
    // Where identifier 1 has a key, it is no operation.
    EXPECT_FALSE(PlainKind().HasAttribute(FnAttrBoundaryBegin()));
}

class Chain : public testing::Test {
 protected:
    Chain() {
        RegisterAll(inner_, 0.0, {"i0", "i1", "shared"});
        Register(inner_, "i3", 3.0, DataParamType::PorePressure);
        RegisterAll(outer_, 100.0, {"o0", "o1", "shared"});
        Register(outer_, "o3", 103.0, DataParamType::PorePressure);
        Register(outer_, "", 104.0, DataParamType::TotalHead);
        chain_.SetOuterAttributeDictionary(&outer_);
    }

    AttributeDictionary inner_;
    AttributeDictionary outer_;
    ChainedAttributeDictionary chain_{&inner_};
};

TEST_F(Chain, PutsTheOuterAttributesButItsNameBehindAndHidesThoseOfAKeyOrParameter) {
    EXPECT_EQ(chain_.EndAttributeID(), 8U);
    const double values[] = {0.0, 1.0, 2.0, 3.0, 101.0, 102.0, 103.0, 104.0};
    const char* const names[] = {"i0", "i1", "shared", "i3", "o1", "shared", "o3", ""};
    for (unsigned id = 0; id < 8; ++id) {
        SCOPED_TRACE(id);
        EXPECT_EQ(ValueOf(chain_, id), values[id]);
        EXPECT_EQ(chain_.NameByAttributeID(id), names[id]);
        EXPECT_EQ(chain_.TypeByAttributeID(id),
                  id == 5 || id == 6 ? storage::None : storage::Double);
        double value = 0.0;
        EXPECT_EQ(chain_.SetValueOf(nullptr, id, &value).MessageId(), 20549U);
        EXPECT_EQ(chain_.SetPersistedValueOf(nullptr, id, &value).MessageId(), 20549U);
        EXPECT_TRUE(chain_.PersistedValueOf(nullptr, id, &value).Succeeded());
        EXPECT_EQ(value, values[id]);
    }
    EXPECT_EQ(chain_.ParamByAttributeID(7), DataParamType::TotalHead);
    EXPECT_EQ(chain_.TypeByAttributeID(8), storage::None);
    double value = 0.0;
    EXPECT_EQ(chain_.ValueOf(nullptr, 8, &value).MessageId(), 21638U);
    EXPECT_EQ(chain_.ValueOf(nullptr, kNoAttribute, &value).MessageId(), 21638U);
}

TEST_F(Chain, FindsTheInnerAttributeFirst) {
    EXPECT_EQ(chain_.AttributeIDOf("i1"), 1U);
    EXPECT_EQ(chain_.AttributeIDOf("shared"), 2U);
    EXPECT_EQ(chain_.AttributeIDOf("o1"), 4U);
    EXPECT_EQ(chain_.AttributeIDOf("o0"), kNoAttribute);
    EXPECT_EQ(chain_.AttributeIDOf("nowhere"), kNoAttribute);
    EXPECT_EQ(chain_.AttributeIDOf(""), kNoAttribute);
    EXPECT_EQ(chain_.AttributeIDOf(DataParamType::PorePressure), 3U);
    EXPECT_EQ(chain_.AttributeIDOf(DataParamType::TotalHead), 7U);
    EXPECT_EQ(chain_.AttributeIDOf(DataParamType::Null), kNoAttribute);
}

TEST_F(Chain, MayHaveANameOfItsOwnAndNoOuterDictionary) {
    chain_.SetName(L"chained");
    std::wstring name;
    EXPECT_EQ(chain_.TypeByAttributeID(0), storage::WString);
    EXPECT_TRUE(chain_.ValueOf(nullptr, 0, &name).Succeeded());
    EXPECT_EQ(name, L"chained");
    EXPECT_EQ(chain_.SetValueOf(nullptr, 0, &name).MessageId(), 21638U);
    EXPECT_FALSE(chain_.IsEditableByAttributeID(0));
    chain_.SetOuterAttributeDictionary(nullptr);
    EXPECT_EQ(chain_.EndAttributeID(), 4U);
    EXPECT_EQ(chain_.AttributeIDOf("o1"), kNoAttribute);
    const AttributeDictionary empty;
    chain_.SetOuterAttributeDictionary(&empty);
    EXPECT_EQ(chain_.EndAttributeID(), 4U);
}

std::vector<std::pair<std::string, FnAttr>> All() {
    return {
#define LMW_FN_ATTRIBUTE(factory, key) {#factory, factory()},
#define LMW_FN_BOUNDARY(factory, id) {#factory, factory()},
#include "common/fn/fn_attr_table.inc"
#undef LMW_FN_BOUNDARY
#undef LMW_FN_ATTRIBUTE
    };
}

// By design: the keys of stored projects, whatever the factories are called, and operations without
// a key, two of which share an identifier.
const std::map<std::string, FnAttr> kOdd = {
    {"FnAttrName", {0, "Type"}},
    {"FnAttrTailBefore", {0, "SlopeBefore"}},
    {"FnAttrTailAfter", {0, "SlopeAfter"}},
    {"FnAttrBoundaryCategory", {0, "BCategory"}},
    {"FnAttrConvectHeatTransCoeff", {0, "ConvectiveHeatTransferCoeff"}},
    {"FnAttrNCUndrainedStrengthRatio", {0, "NonConsolidatedUndrainedStrengthRatio"}},
    {"FnAttrUseMaxShearStrengh", {0, "UseMaxShearStrength"}},
    {"FnAttrBoundaryBegin", {1, ""}},
    {"FnAttrBoundaryCategoryTest", {1, ""}},
    {"FnAttrBoundaryIsReviewRequired", {2, ""}},
    {"FnAttrBoundaryNotifyCategory", {3, ""}},
    {"FnAttrBoundaryInitialize", {4, ""}},
    {"FnAttrBoundaryFinalize", {5, ""}},
    {"FnAttrBoundaryRegisterGroupCalculator", {6, ""}},
    {"FnAttrBoundaryIsFreeExit", {7, ""}},
    {"FnAttrBoundaryIsUnitGradient", {8, ""}},
    {"FnAttrBoundaryIsHeatAdvectionFluxCorrectionRequired", {9, ""}},
    {"FnAttrBoundaryEnd", {10, ""}},
};

TEST(FnAttr, CarriesTheFactorysNameUnlessItIsOneOfTheOdd) {
    std::set<std::string> keys;
    std::size_t odd = 0;
    for (const auto& [factory, attribute] : All()) {
        const auto found = kOdd.find(factory);
        odd += found != kOdd.end() ? 1U : 0U;
        EXPECT_EQ(attribute, found != kOdd.end() ? found->second : FnAttr({0, factory.substr(6)}));
        EXPECT_TRUE(attribute.id != 0 || keys.insert(attribute.key).second) << attribute.key;
    }
    EXPECT_EQ(keys.size(), 204U);
    EXPECT_EQ(odd, kOdd.size());
}

TEST(FnError, ValueThatCannotBeComputedNamesWhatIsGiven) {
    const lmw::test::TestHost host;
    using lmw::fn::error::UnableToComputeValue;
    EXPECT_EQ(UnableToComputeValue(L"a", L"", L"").as_wstring(), L"20548[a||||]");
    EXPECT_EQ(UnableToComputeValue(L"", L"b", L"").as_wstring(), L"20548[b||||]");
    EXPECT_EQ(UnableToComputeValue(L"a", L"b", L"").as_wstring(), L"20548[a b||||]");
    EXPECT_EQ(UnableToComputeValue(L"", L"", L"").as_wstring(), L"20548[ ||||]");
    const gtl::status detailed = UnableToComputeValue(L"a", L"", L"95 %s of it");
    EXPECT_EQ(detailed.as_wstring(), L"20548[a||||]\n\n95 %s of it");
}

}  // namespace
