// A typical evaluation, from the text of a project file to the results of a table.

#include "common/datatable/data_table.h"
#include "common/fn/attributes.h"
#include "common/fn/evaluate.h"
#include "common/fn/fred_xing.h"
#include "common/fn/kinds.h"

#include "tests/fn/test_kinds.h"

#include <gtest/gtest.h>

namespace {

TEST(Evaluation, FillsAColumnOfATableFromAFunctionOfAnother) {
    // The function says which parameters it relates.
    IFn content;
    ASSERT_TRUE(lmw::fn::Create(L"FredlundXing(InputParam=PorePressure,"
                                L"OutputParam=VolumetricWaterContent,"
                                L"A=12,N=1.8,M=0.6,SatWC=0.42)",
                                content)
                    .Succeeded());
    DataParamType input = DataParamType::Null;
    DataParamType output = DataParamType::Null;
    ASSERT_TRUE(lmw::fn::attributes::Get(*content, FnAttrInputParam(), input).Succeeded());
    ASSERT_TRUE(lmw::fn::attributes::Get(*content, FnAttrOutputParam(), output).Succeeded());

    const double pressures[] = {20.0, 0.0, -5.0, -100.0, lmw::kUndefined, -1e5};
    DataTable table;
    ASSERT_TRUE(table.Init({input, output}, 6).Succeeded());
    ASSERT_EQ(table.WriteColumn(input, pressures), 6U);

    lmw::test::RecordingHandler handler;
    const lmw::fn::impl::ScopedErrorHandler scope(&handler);
    for (GID row = 1; row <= table.RowCount(); ++row) {
        const double pressure = table.Value(row, input);
        if (lmw::IsDefined(pressure)) {
            table.SetValue(row, output, lmw::fn::impl::SafeCalculate(*content, &pressure, nullptr));
        }
    }
    const math::fn::flow::FredXing curve(12.0, 1.8, 0.6, 0.42, 1e6);
    for (GID row = 1; row <= table.RowCount(); ++row) {
        const double pressure = pressures[row - 1];
        EXPECT_EQ(table.Value(row, output),
                  lmw::IsDefined(pressure) ? curve(pressure) : lmw::kUndefined)
            << pressure;
    }
    EXPECT_EQ(table.GetAs<std::string>(1, output), "0.42");
    EXPECT_EQ(table.GetAs<std::string>(5, output), "");
    EXPECT_TRUE(handler.Take().empty());
}

}  // namespace
