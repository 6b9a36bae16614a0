#include "common/fn/fn_attr.h"

#include "common/fn/fn_error.h"

#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

struct Row {
    std::string factory;
    FnAttr attribute;
};

std::vector<Row> All() {
    return {
#define LMW_FN_ATTRIBUTE(factory, key) {#factory, factory()},
#define LMW_FN_BOUNDARY(factory, id) {#factory, factory()},
#include "common/fn/fn_attr_table.inc"
#undef LMW_FN_BOUNDARY
#undef LMW_FN_ATTRIBUTE
    };
}

// By design: the keys of stored projects, whatever the factories are called.
const std::map<std::string, std::string> kOddKeys = {
    {"FnAttrName", "Type"},
    {"FnAttrTailBefore", "SlopeBefore"},
    {"FnAttrTailAfter", "SlopeAfter"},
    {"FnAttrBoundaryCategory", "BCategory"},
    {"FnAttrConvectHeatTransCoeff", "ConvectiveHeatTransferCoeff"},
    {"FnAttrNCUndrainedStrengthRatio", "NonConsolidatedUndrainedStrengthRatio"},
    {"FnAttrUseMaxShearStrengh", "UseMaxShearStrength"},
};

// By design: two operations share an identifier.
const std::map<std::string, std::uint32_t> kOperations = {
    {"FnAttrBoundaryBegin", 1},
    {"FnAttrBoundaryCategoryTest", 1},
    {"FnAttrBoundaryIsReviewRequired", 2},
    {"FnAttrBoundaryNotifyCategory", 3},
    {"FnAttrBoundaryInitialize", 4},
    {"FnAttrBoundaryFinalize", 5},
    {"FnAttrBoundaryRegisterGroupCalculator", 6},
    {"FnAttrBoundaryIsFreeExit", 7},
    {"FnAttrBoundaryIsUnitGradient", 8},
    {"FnAttrBoundaryIsHeatAdvectionFluxCorrectionRequired", 9},
    {"FnAttrBoundaryEnd", 10},
};

TEST(FnAttr, NamedOnesCarryTheFactorysNameOrOneOfSevenOddKeys) {
    std::set<std::string> keys;
    std::size_t odd = 0;
    for (const auto& [factory, attribute] : All()) {
        if (kOperations.contains(factory)) {
            continue;
        }
        const auto odd_key = kOddKeys.find(factory);
        odd += odd_key != kOddKeys.end() ? 1U : 0U;
        EXPECT_EQ(attribute.id, 0U) << factory;
        EXPECT_EQ(attribute.key, odd_key != kOddKeys.end() ? odd_key->second : factory.substr(6));
        EXPECT_TRUE(keys.insert(attribute.key).second) << attribute.key;
    }
    EXPECT_EQ(keys.size(), 204U);
    EXPECT_EQ(odd, kOddKeys.size());
}

TEST(FnAttr, BoundaryOperationsCarryAFixedIdentifierAndNoKey) {
    std::size_t operations = 0;
    for (const auto& [factory, attribute] : All()) {
        if (const auto row = kOperations.find(factory); row != kOperations.end()) {
            ++operations;
            EXPECT_EQ(attribute, (FnAttr{row->second, ""})) << factory;
        }
    }
    EXPECT_EQ(operations, kOperations.size());
}

TEST(FnError, ValueThatCannotBeComputedNamesWhatIsGiven) {
    const lmw::test::TestHost host;
    using lmw::fn::error::UnableToComputeValue;
    EXPECT_EQ(UnableToComputeValue(L"a", L"", L"").as_wstring(), L"20548[a||||]");
    EXPECT_EQ(UnableToComputeValue(L"", L"b", L"").as_wstring(), L"20548[b||||]");
    EXPECT_EQ(UnableToComputeValue(L"a", L"b", L"").as_wstring(), L"20548[a b||||]");
    EXPECT_EQ(UnableToComputeValue(L"", L"", L"").as_wstring(), L"20548[ ||||]");
    const gtl::status detailed = UnableToComputeValue(L"a", L"", L"95 %s of it");
    EXPECT_EQ(detailed.MessageId(), 20548U);
    EXPECT_EQ(detailed.as_wstring(), L"20548[a||||]\n\n95 %s of it");
}

TEST(FnError, HasItsOwnMessages) {
    EXPECT_EQ(lmw::fn::error::FunctionDefinitionIncomplete().MessageId(), 20549U);
    EXPECT_EQ(lmw::fn::error::OperationNotSupported().MessageId(), 21638U);
    try {
        throw lmw::fn::error::CalculationException(lmw::fn::error::OperationNotSupported());
    } catch (const gtl::status_exception& thrown) {  // across the border of the library
        EXPECT_EQ(thrown.Status().MessageId(), 21638U);
    }
}

}  // namespace
