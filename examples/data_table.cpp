// How do I keep results of elements by parameter, and read them row by row or column by column?

#include <common/datatable/data_table.h>
#include <common/datatable/param_registry.h>
#include <common/math/statistics.h>
#include <common/sys/text_encoding.h>
#include <common/undefined.h>

#include <cmath>
#include <cstdio>
#include <string>

int main() {
    //! [write]
    // Three elements with pore pressure (kPa) and water content. Nothing is known of the third.
    DataTable table;
    gtl::status made =
        table.Init({DataParamType::PorePressure, DataParamType::VolumetricWaterContent}, 3);
    if (made.Failed()) {
        return 1;
    }
    table.SetValue(1, DataParamType::PorePressure, 24.5);
    table.SetValue(1, DataParamType::VolumetricWaterContent, 0.441);
    table.SetValue(2, DataParamType::PorePressure, -12.25);
    table.SetValue(2, DataParamType::VolumetricWaterContent, 0.36);
    //! [write]

    //! [read]
    // One value: a missing one is the undefined value, and empty as text.
    for (GID element = 1; element <= table.RowCount(); ++element) {
        const double pressure = table.Value(element, DataParamType::PorePressure);
        const auto text = table.GetAs<std::string>(element, DataParamType::PorePressure);
        std::printf("element %u: %s\n", static_cast<unsigned>(element),
                    lmw::IsDefined(pressure) ? text.c_str() : "missing");
    }

    // A column: the statistics pass over missing values.
    math::StatisticsAccumulator contents;
    for (const double content : table.Column(DataParamType::VolumetricWaterContent)) {
        contents.Accumulate(content);
    }
    std::printf("mean water content of %d elements: %.4f\n", static_cast<int>(contents.Count()),
                contents.Mean());

    // Plotting tools would rather have NaN for what is missing.
    int gaps = 0;
    for (const double pressure : table.ColumnWithNan(DataParamType::PorePressure)) {
        gaps += std::isnan(pressure) ? 1 : 0;
    }
    std::printf("gaps: %d\n", gaps);
    //! [read]

    //! [registry]
    // What the library knows of a parameter, and whether a value makes sense for it.
    const DataParamType param = dataparamtype::FindByName("VolumetricWaterContent");
    std::printf("%s\n", std::string(dataparamtype::GetMeaning(param)).c_str());
    const gtl::status checked = dataparamtype::IsRangeValid(param, 1.7);
    std::printf("1.7: %s\n", sys::Narrow(checked.as_wstring()).c_str());
    //! [registry]
    return 0;
}
