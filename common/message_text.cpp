#include "common/message_text.h"

#include "common/app/app.h"
#include "common/str/fill_template.h"

#include <vector>

namespace lmw {

std::wstring MessageText(std::uint32_t message_id) {
    return App::Instance().MessageText(message_id);
}

std::wstring MessageText(std::uint32_t message_id,
                         std::initializer_list<std::wstring_view> arguments) {
    const std::vector<std::wstring> copies(arguments.begin(), arguments.end());
    return str::fmt::FillTemplate(MessageText(message_id), copies);
}

}  // namespace lmw
