#include "common/app/detail/english_catalogue.h"

#include <algorithm>
#include <array>

namespace lmw::detail {

namespace {

struct Message {
    std::uint32_t id;
    std::wstring_view text;
};

// Ascending by identifier. The placeholders stand in the order of the arguments that the factory of
// the message gives; a sentence that needs another order has to be built around that.
// clang-format off
constexpr auto kMessages = std::to_array<Message>({
    {20218, L"\"%s\" cannot be read as a %s: it holds a character that does not belong there."},
    {20219, L"\"%s\" cannot be converted: %s is not supported here."},
    {20220, L"\"%s\" is out of range. Expected: %s."},
    {20221, L"\"%s\" is too large for a %s."},
    {20449, L"greater than %s and less than %s"},
    {20450, L"greater than %s and less than or equal to %s"},
    {20451, L"greater than or equal to %s and less than %s"},
    {20452, L"between %s and %s"},
    {20471, L"%s%s"},
    {20503, L"The library \"%s\" could not be loaded. %s"},
    {20514, L"No application is associated with files of the kind of \"%s\". %s"},
    {20516, L"The file \"%s\" could not be copied to \"%s\". %s"},
    {20517, L"The folder \"%s\" could not be created. %s"},
    {20518, L"\"%s\" could not be deleted. %s"},
    {20519, L"\"%s\" could not be searched for. %s"},
    {20520, L"The path of the folder for temporary files could not be found out. %s"},
    {20521, L"\"%s\" is not a valid path."},
    {20524, L"The file \"%s\" does not exist."},
    {20526, L"The file \"%s\" could not be opened. %s"},
    {20527, L"The path \"%s\" is too long: at most %s characters are allowed."},
    {20536, L"The file \"%s\" could not be read. %s"},
    {20537, L"\"%s\" cannot be opened for writing because the file is read-only."},
    {20538, L"\"%s\" could not be renamed to \"%s\". %s"},
    {20539, L"\"%s\" cannot be saved because the existing file is read-only."},
    {20540, L"The attributes of \"%s\" could not be set. %s"},
    {20541, L"The file \"%s\" could not be written. %s"},
    {20547, L"The text of the function is malformed: a name followed by key=value pairs in parentheses was expected."},
    {20548, L"A value of the function could not be computed: %s"},
    {20549, L"The definition of the function is incomplete."},
    {20551, L"greater than or equal to %s"},
    {20564, L"greater than %s"},
    {20571, L"Internal error: %s %s"},
    {20654, L"An unexpected error occurred: %s"},
    {20676, L"less than or equal to %s"},
    {20692, L"less than %s"},
    {20706, L"A required system service is not available."},
    {20754, L"Syntax error: %s"},
    {20755, L"The service %s failed: %s %s"},
    {20758, L"\"%s\" is a file of an unknown type."},
    {20898, L"floating-point number"},
    {20914, L"A value is required."},
    {21139, L"Gas transport"},
    {21140, L"Solute transport"},
    {21141, L"Dynamic response"},
    {21142, L"Groundwater flow"},
    {21145, L"Stress and deformation"},
    {21146, L"Slope stability"},
    {21147, L"Heat transport"},
    {21622, L"any value"},
    {21638, L"The function does not support this operation."},
    {21652, L"whole number"},
    {22762, L"The x values of the data points must increase from each point to the next (point %s)."},
    {23262, L"%s (run %s)"},
    {24181, L"The error is not described any further."},
    {24389, L"The value %s is out of range. Allowed: %s."},
    {27505, L"Unknown error %s."},
    {27550, L"No error."},
    {27578, L"The password for \"%s\" was not accepted."},
});
// clang-format on

static_assert(std::is_sorted(kMessages.begin(), kMessages.end(),
                             [](const Message& a, const Message& b) { return a.id < b.id; }));

}  // namespace

std::wstring_view EnglishText(std::uint32_t message_id) noexcept {
    const auto* const found =
        std::lower_bound(kMessages.begin(), kMessages.end(), message_id,
                         [](const Message& row, std::uint32_t id) { return row.id < id; });
    return found != kMessages.end() && found->id == message_id ? found->text : std::wstring_view();
}

}  // namespace lmw::detail
