#pragma once

// Categories of messages: a category is a mask of bits, and each named category has a bit of its
// own.
// Names are registered by their first use, wherever it is; the order decides which bit a name has,
// so bits mean something inside one process only and never belong in a file.

#include "common/export.h"

#include <string>
#include <string_view>
#include <vector>

namespace lmw::diag {

/// What the filter lets pass unless it is told otherwise, and the category of messages that belong
/// to no named one.
inline constexpr int kDefaultCategories = 3;

/// A message with this bit is tested against the level alone.
inline constexpr int kEveryFilter = 4;

/// All categories. As a message's category it contains kEveryFilter, so it passes every mask.
inline constexpr int kAllCategories = -1;

/// The mask of a list of names separated by ";"; a name that is new is registered.
///
/// 1. Names get the bits 8, 16, ... up to 2^30 in the order of their first use. They are compared
///    byte by byte; empty ones are skipped, so "" and ";" give 0.
/// 2. By design: bit 31 is never given out. Its mask would be negative and so "below 8" to
///    CategoryNames, which gives no name to those.
/// 3. When all 28 bits are taken a further name gets kDefaultCategories, so that its messages stay
///    visible, and never another category's bit. Such a name is not registered.
///
/// Any thread, static initialisers and the end of the process included.
LMW_API int MakeCategoryMask(std::string_view names);

/// The names of the categories in `mask`.
///
/// 1. kAllCategories gives "all".
/// 2. By design: any other mask below 8 gives the empty text; the fixed bits have no names, and
///    masks with bit 31 are below 8 as well.
/// 3. Otherwise the names whose bit is in the mask, in the order of registration, joined by ";".
LMW_API std::string CategoryNames(int mask);

/// The names registered so far, in order: the bit of the first is 8.
LMW_API std::vector<std::string> RegisteredCategories();

/// Declares a named category, usually as a constant of a source file:
/// `const lmw::diag::DeclareCategoryMask kMeshCategory("mesh");`
class LMW_API DeclareCategoryMask {
 public:
    /// Registers `name`, which has no ";".
    explicit DeclareCategoryMask(std::string name);

    [[nodiscard]] const std::string& Name() const noexcept { return name_; }
    [[nodiscard]] int Mask() const noexcept { return mask_; }

 private:
    std::string name_;
    int mask_;
};

}  // namespace lmw::diag
