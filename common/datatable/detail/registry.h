#pragma once

// The registry behind param_registry.h and custom_params.h. The process has one (Instance); tests
// make their own.

#include "common/datatable/custom_params.h"
#include "common/datatable/data_param_type.h"
#include "common/datatable/param_classes.h"
#include "common/datatable/param_registry.h"
#include "common/status.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <deque>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dataparamtype::detail {

/// Rows 1 to 643 are written by the constructor and never again. Custom rows are written under a
/// lock and become visible by the release of `end_`: a reader sees a complete row or none, and
/// takes no lock.
class Registry {
 public:
    /// What only people and files ask about a parameter.
    struct Description {
        std::string_view name;
        std::string_view meaning;
        UnitKind unit = UnitKind::None;
    };

    /// With the built-in parameters; the stress group gets this graph method.
    explicit Registry(PreferredGraphCalculationMethod::Type stress_group_method);
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;
    ~Registry() = default;

    /// The registry of the process, built on the first call.
    static Registry& Instance();

    [[nodiscard]] bool Has(DataParamType param) const noexcept;
    [[nodiscard]] const RegistryRow& RowOf(DataParamType param) const noexcept;
    [[nodiscard]] const Description& DescriptionOf(DataParamType param) const noexcept;
    [[nodiscard]] DataParamType Find(std::string_view name) const noexcept;

    gtl::status RegisterCustom(std::span<const CustomParam> params, DataParamList& registered);
    [[nodiscard]] DataParamList CustomParams() const;

 private:
    void Register_(std::uint32_t value, RegistryRow row, const Description& description);
    [[nodiscard]] DataParamType FindCustom_(std::string_view name,
                                            std::uint32_t end) const noexcept;
    [[nodiscard]] gtl::status CheckCustom_(std::span<const CustomParam> params) const;

    std::array<RegistryRow, kParamCount> rows_;
    std::array<Description, kParamCount> descriptions_;
    std::vector<std::pair<std::string_view, DataParamType>> built_in_by_name_;  // ascending
    std::atomic<std::uint32_t> end_;  // one above the last registered value
    std::mutex custom_mutex_;
    std::deque<std::string> custom_texts_;  // names and meanings; a deque never moves them
};

}  // namespace dataparamtype::detail
