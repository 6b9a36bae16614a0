#include "common/fn/attribute_storage.h"

#include <array>

namespace lmw::fn::attribute::storage {

std::string_view NameOf(Type type) noexcept {
    constexpr std::array<std::string_view, Gid + 1> kNames = {
        "None", "Bool", "Int", "UInt", "Double", "WString", "Tail", "Points", "DataParam", "Gid"};
    return type < kNames.size() ? kNames[type] : std::string_view();
}

}  // namespace lmw::fn::attribute::storage
