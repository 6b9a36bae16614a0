#pragma once

// Where the tails of a curve repeat it.

#include <cstdint>

namespace math::TailCycleLocation {

/// At which of its ends a function repeats itself. The numbers are stored in files and fixed.
enum Type : std::int32_t {
    None = 1,    ///< at neither
    Before = 2,  ///< before its data only
    After = 3,   ///< after its data only
    Both = 4,    ///< at both ends
};

}  // namespace math::TailCycleLocation
