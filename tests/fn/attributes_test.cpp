// Values of attributes across types, functions and units.

#include "common/fn/attributes.h"

#include "common/datatable/param_registry.h"
#include "common/fn/attribute_dictionary.h"
#include "common/fn/fn_const.h"
#include "common/fn/fn_curves.h"
#include "common/fn/fn_error.h"
#include "common/fn/fn_fred_xing.h"
#include "common/fn/kinds.h"

#include "tests/fn/test_kinds.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace lmw::fn;
using math::fn::TailType;
namespace storage = lmw::fn::attribute::storage;
using PointList = std::vector<FPOINT>;

// One attribute of each storage type.
class AllTypes final : public FnKind {
 public:
    AllTypes() : FnKind(Dictionary()) {
        points.push_back({0.0, 1.0});
        points.push_back({2.5, -1e-300});
    }
    AllTypes(const AllTypes&) = default;
    [[nodiscard]] double Calculate(const double* /*x*/, const double* /*y*/) const override {
        return 0.0;
    }
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override {
        return std::make_unique<AllTypes>(*this);
    }
    [[nodiscard]] std::wstring KindName() const override { return L"AllTypes"; }

    bool truth = true;
    std::int32_t whole = -3;
    std::uint32_t count = 7;
    double real = 0.1;
    std::wstring text = L"loam";
    TailType tail = TailType::Cycle();
    PointList points;
    DataParamType param = DataParamType::PorePressure;
    GID gid = 150;

    static const AttributeDictionary& Dictionary();
};

class AllTypesDictionary final : public AttributeDictionary {
 public:
    AllTypesDictionary() {
        FnKind::RegisterIdentity_(*this);
        Add_("truth", storage::Bool, &AllTypes::truth);
        Add_("whole", storage::Int, &AllTypes::whole);
        Add_("count", storage::UInt, &AllTypes::count);
        Add_("real", storage::Double, &AllTypes::real);
        Add_("text", storage::WString, &AllTypes::text);
        Add_("tail", storage::Tail, &AllTypes::tail);
        Add_("points", storage::Points, &AllTypes::points);
        Add_("param", storage::DataParam, &AllTypes::param);
        Add_("gid", storage::Gid, &AllTypes::gid);
    }

 private:
    template <class Value>
    void Add_(const char* key, storage::Type type, Value AllTypes::*member) {
        RegisterAttribute_(
            {0, key}, type,
            [member](void* out, const FnImpl* function) {
                *static_cast<Value*>(out) = static_cast<const AllTypes*>(function)->*member;
                return gtl::status();
            },
            [member](FnImpl* function, const void* in) {
                static_cast<AllTypes*>(function)->*member = *static_cast<const Value*>(in);
                return gtl::status();
            });
    }
};

const AttributeDictionary& AllTypes::Dictionary() {
    static const AllTypesDictionary dictionary;
    return dictionary;
}

FnAttr Key(const char* key) {
    return {0, key};
}

TEST(Attributes, ConvertToAndFromText) {
    struct Row {
        const char* key;
        const wchar_t* text;   // of the value above
        const wchar_t* other;  // a text that is taken
        const wchar_t* wrong;  // one that is not
    };
    const Row rows[] = {
        {"truth", L"true", L"false", L"yes"},
        {"whole", L"-3", L"2147483647", L"2147483648"},
        {"count", L"7", L"4294967295", L"-1"},
        {"real", L"0.1", L"1.7976931348623157e+308", L"0,5"},
        {"text", L"loam", L"a,b(c\\", nullptr},
        {"tail", L"Cycle", L"-2.5", L"cycle"},
        {"points", L"0 1;2.5 -1e-300", L"", L"1 2;3"},
        {"param", L"PorePressure", L"Porosity", L"PorePressur"},
        {"gid", L"150", L"0", L"1.5"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        AllTypes function;
        std::wstring text;
        EXPECT_TRUE(attributes::Get(function, Key(row.key), text).Succeeded());
        EXPECT_EQ(text, row.text);
        if (row.wrong != nullptr) {
            EXPECT_TRUE(attributes::Set(function, Key(row.key), std::wstring(row.wrong)).Failed());
            EXPECT_TRUE(attributes::Get(function, Key(row.key), text).Succeeded());
            EXPECT_EQ(text, row.text);
        }
        EXPECT_TRUE(attributes::Set(function, Key(row.key), std::wstring(row.other)).Succeeded());
        const unsigned id = function.AttributeIDOf_(Key(row.key));
        EXPECT_TRUE(attributes::PersistedValueOf(&function, id, text).Succeeded());
        EXPECT_EQ(text, row.other);
    }
    AllTypes function;
    EXPECT_TRUE(attributes::Set(function, Key("points"), std::wstring(L" 1  2 ; 3 4")).Succeeded());
    EXPECT_EQ(function.points, (PointList{{1.0, 2.0}, {3.0, 4.0}}));
    EXPECT_TRUE(attributes::Set(function, Key("param"), std::wstring()).Succeeded());
    EXPECT_EQ(function.param, DataParamType::Null);
    EXPECT_TRUE(attributes::Set(function, Key("param"), std::wstring(L"744")).Succeeded());
    EXPECT_TRUE(attributes::Set(function, Key("param"), std::wstring(L"745")).Failed());
    EXPECT_EQ(function.param, DataParamType{744});
}

TEST(Attributes, ConvertNumbersWhereTheValueSurvives) {
    AllTypes function;
    const auto set = [&function](const char* key, auto value) {
        return attributes::Set(function, Key(key), value).Succeeded();
    };
    EXPECT_TRUE(set("whole", 1e6));
    EXPECT_EQ(function.whole, 1000000);
    EXPECT_TRUE(set("real", std::int32_t{-4}));
    EXPECT_EQ(function.real, -4.0);
    EXPECT_TRUE(set("truth", std::uint32_t{0}));
    EXPECT_FALSE(function.truth);
    EXPECT_TRUE(set("whole", true));
    EXPECT_EQ(function.whole, 1);
    EXPECT_TRUE(set("tail", lmw::kUndefined));
    EXPECT_EQ(function.tail, TailType::None());
    EXPECT_TRUE(set("real", TailType::Calc()));
    EXPECT_EQ(function.real, 1.1e308);
    EXPECT_TRUE(set("param", std::uint32_t{12}));
    EXPECT_EQ(function.param, DataParamType::ElementNumber);
    EXPECT_TRUE(set("gid", DataParamType::ElementNumber));
    EXPECT_EQ(function.gid, 12U);

    const AllTypes before = function;
    EXPECT_FALSE(set("whole", 2.5));
    EXPECT_FALSE(set("whole", 3e9));
    EXPECT_FALSE(set("count", std::int32_t{-1}));
    EXPECT_FALSE(set("whole", std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(set("truth", 2.0));
    EXPECT_FALSE(set("points", 1.0));
    EXPECT_FALSE(set("real", PointList{}));
    EXPECT_TRUE(impl::IsEqual(function, before));
    std::wstring text = L"kept";
    EXPECT_EQ(attributes::PersistedValueOf(&function, kNoAttribute, text).MessageId(), 21638U);
    EXPECT_EQ(text, L"kept");
    double value = 7.0;
    EXPECT_EQ(attributes::ValueOf(&function, 3, storage::None, &value).MessageId(), 20219U);
}

// Attributes.h, property 2: whatever the bits of a point or number, its text gives them back.
TEST(Attributes, NumbersAndPointsReadBackToTheSameBits) {
    lmw::test::PropertyRandom random;
    const auto any = [&random] {
        double value = 0.0;
        do {
            value = std::bit_cast<double>(random.Engine()());
        } while (value != value);  // of NaN only the kind is kept
        return value;
    };
    for (int round = 0; round < 300; ++round) {
        AllTypes from;
        from.real = any();
        from.tail = TailType::Slope(any());
        from.points.clear();
        for (int i = random.Integer(0, 5); i > 0; --i) {
            from.points.push_back({any(), any()});
        }
        IFn to(std::make_unique<AllTypes>());
        ASSERT_TRUE(SetPersistedAttributes(to, PersistedAttributes(from)).Succeeded());
        const auto& read = static_cast<const AllTypes&>(*to);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read.real), std::bit_cast<std::uint64_t>(from.real));
        EXPECT_EQ(read.tail, from.tail);
        EXPECT_EQ(read.points, from.points);
    }
}

TEST(PersistedAttributes, LeaveOutWhatSaysNothingOrCannotBeSet) {
    FnLinear linear;
    linear.SetPoints({{0.0, 1.0}});
    EXPECT_EQ(impl::as_wstring(linear),
              L"Linear(InputParam=,OutputParam=,DataInit=0 1,SlopeBefore=0,SlopeAfter=0,"
              L"FunctionPeriod=1.7976931348623157e+308,LogInput=false,LogOutput=false)");
    linear.SetName(L"silt");
    linear.SetFullDescription(L"a, (b");
    EXPECT_EQ(impl::as_wstring(linear).substr(0, 43),
              L"Linear(Type=silt,FullDescription=a\\, \\(b,In");
}

TEST(SetPersistedAttributes, SetsAllItCanAndReportsTheFirstFailure) {
    IFn function(std::make_unique<AllTypes>());
    const IFn before = function;
    const gtl::status result = SetPersistedAttributes(
        function, {{L"whole", L"5"}, {L"colour", L"red"}, {L"count", L"x"}, {L"real", L"2"}});
    EXPECT_EQ(result.MessageId(), 21638U);
    const auto& changed = static_cast<const AllTypes&>(*function);
    EXPECT_EQ(changed.whole, 5);
    EXPECT_EQ(changed.count, 7U);
    EXPECT_EQ(changed.real, 2.0);
    EXPECT_EQ(static_cast<const AllTypes&>(*before).whole, -3);
}

TEST(AssignAttributes, CopiesWhatBothHave) {
    FnSpline spline;
    spline.SetName(L"silt");
    spline.SetPoints({{0.0, 1.0}, {1.0, 3.0}});
    spline.SetTailAfter(TailType::Calc());
    spline.SetTension(30);
    FnStep step;
    EXPECT_TRUE(AssignAttributes(step, spline).Succeeded());
    EXPECT_EQ(step.Name(), L"silt");
    EXPECT_EQ(step.Points(), spline.Points());
    EXPECT_EQ(step.TailAfter(), TailType::Calc());
    EXPECT_FALSE(step.IsUpToDate());
    FnSpline copy;
    EXPECT_TRUE(AssignAttributes(copy, spline).Succeeded());
    EXPECT_TRUE(impl::IsEqual(copy, spline));
}

TEST(ConvertUnits, FollowsTheSecondWordOfTheKey) {
    const std::tuple<FnAttr, double, double> rows[] = {
        {FnAttrConstPressure(), 6.894757293168361, 1.0},
        {FnAttrConstAbsolutePressure(), 6.894757293168361, 1.0},
        {FnAttrConstDistance(), 0.3048, 1.0},
        {FnAttrConstTemperature(), 100.0, 212.0},
        {FnAttrConstWaterFlux(), 0.3048, 1.0},
        {FnAttrConstVolumetricFlowRate(), 0.028316846592, 1.0},
        {FnAttrConstNoUnits(), 3.0, 3.0},
        {FnAttrConstForce(), lmw::kUndefined, lmw::kUndefined},
    };
    for (const auto& [attribute, in_kilopascal, in_feet_and_pounds] : rows) {
        SCOPED_TRACE(attribute.key);
        FnUnitConst constant(attribute, in_kilopascal);
        EXPECT_TRUE(attributes::ConvertUnits(constant, math::UnitSet::KiloPascal(),
                                             math::UnitSet::PoundsPerSquareInch())
                        .Succeeded());
        EXPECT_NEAR(constant.Value() / in_feet_and_pounds, 1.0, 1e-14);
    }
    for (const FnAttr& attribute : FnUnitConst::ConstAttributes()) {
        EXPECT_EQ(attributes::QuantityOf(attribute.key) == math::Quantity::kNone,
                  attribute == FnAttrConstNoUnits())
            << attribute.key;
    }
    EXPECT_EQ(attributes::QuantityOf("Value"), math::Quantity::kNone);
}

}  // namespace
