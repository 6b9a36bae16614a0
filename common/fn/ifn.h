#pragma once

// The handle by which functions are held, copied and passed around.

#include "common/export.h"
#include "common/fn/fn_impl.h"
#include "common/gid.h"
#include "common/handle.h"
#include "common/status.h"

#include <memory>
#include <utility>

class FnUndefined;

/// A function: one counted pointer to a shared implementation, copied on write.
///
/// 1. A default-made handle, and one that was moved from, is the undefined function of whichever
///    thread asks it.
/// 2. Copies share the implementation until one of them is changed through pImpl_mutable().
///
/// Threads: a handle belongs to one thread at a time; its implementation may be shared by many.
///
/// Example:
///     IFn content;
///     gtl::status result = lmw::fn::Create(L"Linear(DataInit=0 0.4;100 0.1)", content);
///     const double suction = 20.0;
///     const double value = lmw::fn::impl::SafeCalculate(*content, &suction, nullptr);  // 0.34
class LMW_API IFn {
 public:
    IFn() noexcept = default;

    /// Takes ownership; null makes the undefined function.
    // NOLINTNEXTLINE(google-explicit-constructor): a made function becomes a handle wherever one is
    IFn(std::unique_ptr<FnImpl> function) noexcept : impl_(function.release()) {}

    [[nodiscard]] const FnImpl& pImpl() const { return impl_ ? *impl_ : UndefinedImpl_(); }
    [[nodiscard]] const FnImpl& operator*() const { return pImpl(); }
    [[nodiscard]] const FnImpl* operator->() const { return &pImpl(); }

    /// The implementation to change: as it is when this is its only handle, else a copy of its own
    /// made first.
    /// By design: the undefined function is never copied, however many handles share it. It has
    /// nothing to change but its name, and a copy for each handle that is merely asked would cost
    /// one allocation for every function that is missing.
    [[nodiscard]] FnImpl& pImpl_mutable();

    /// Prepares the function: success at once when it is up to date, else through copy-on-write.
    gtl::status UpdateCalculatedValues();

    /// Binds a function that looks into tables (IDeepTableContext) to `table` within `owner`, then
    /// prepares it. Success and nothing done for other kinds.
    gtl::status InitializeInstance(GID owner, GID table);

    /// The undefined function of this thread: without a name and a reason, made on first use, kept
    /// as long as the thread.
    [[nodiscard]] static FnUndefined& FnUndefined_();

 private:
    [[nodiscard]] static const FnImpl& UndefinedImpl_();

    gtl::handle<FnImpl, gtl::handle_mgmt_refcounted> impl_;
};
