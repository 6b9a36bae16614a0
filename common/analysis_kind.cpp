#include "common/analysis_kind.h"

#include "common/convert_error.h"
#include "common/message_text.h"
#include "common/meta_enum.h"

#include <algorithm>
#include <array>
#include <span>

namespace {

struct KindRow {
    const char* lookup_name;
    std::uint32_t display_message;
};

// By value. By design: the display messages are not in the order of the values; they are numbers in
// the host's resources, and renumbering them would show the name of one module for another.
constexpr std::array<KindRow, kAnalysisKindCount> kKinds = {{{"solute", 21140},
                                                             {"tremor", 21141},
                                                             {"flow", 21142},
                                                             {"deform", 21145},
                                                             {"ridge", 21146},
                                                             {"heat", 21147},
                                                             {"gas", 21139}}};

const KindRow* RowOf(AnalysisKind kind) {
    const auto value = static_cast<std::int32_t>(kind);
    return value >= 0 && value < kAnalysisKindCount ? &kKinds[static_cast<std::size_t>(value)]
                                                    : nullptr;
}

struct NamedKind {
    std::string_view name;
    AnalysisKind kind = AnalysisKind::None;
};

// The kinds sorted by lookup name, built on first use.
std::span<const NamedKind> KindsByName() {
    static const auto sorted = [] {
        std::array<NamedKind, kAnalysisKindCount> rows;
        for (std::size_t k = 0; k < rows.size(); ++k) {
            rows[k] = {kKinds[k].lookup_name, static_cast<AnalysisKind>(k)};
        }
        std::sort(rows.begin(), rows.end(),
                  [](const NamedKind& a, const NamedKind& b) { return a.name < b.name; });
        return rows;
    }();
    return sorted;
}

}  // namespace

std::string LookupNameByKind(AnalysisKind kind) {
    const KindRow* row = RowOf(kind);
    return row != nullptr ? row->lookup_name : "";
}

AnalysisKind KindByLookupName(std::string_view name) {
    const auto rows = KindsByName();
    const auto found = std::lower_bound(
        rows.begin(), rows.end(), name,
        [](const NamedKind& row, std::string_view sought) { return row.name < sought; });
    return found != rows.end() && found->name == name ? found->kind : AnalysisKind::None;
}

namespace str {

std::wstring as_wstring(AnalysisKind kind) {
    const KindRow* row = RowOf(kind);
    return row != nullptr ? lmw::MessageText(row->display_message) : std::wstring();
}

gtl::status from_wstring(const std::wstring& text, AnalysisKind& kind) {
    std::array<std::wstring, kAnalysisKindCount> allowed;
    for (std::size_t k = 0; k < allowed.size(); ++k) {
        allowed[k] = as_wstring(static_cast<AnalysisKind>(k));
        if (!text.empty() && allowed[k] == text) {
            kind = static_cast<AnalysisKind>(k);
            return {};
        }
    }
    return meta::ErrConvertOneOf(text, allowed);
}

}  // namespace str
