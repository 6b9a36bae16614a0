#include "common/app/app.h"

#include "common/app/detail/english_catalogue.h"

#include <atomic>

namespace {

class DefaultApp final : public IApp {
 public:
    [[nodiscard]] std::wstring MessageText(std::uint32_t message_id) const override {
        return std::wstring(lmw::detail::EnglishText(message_id));
    }
};

std::atomic<const IApp*> installed_host = nullptr;

}  // namespace

IApp::~IApp() = default;

void IApp::Fatal(const gtl::status& /*reason*/, const char* /*place*/,
                 int /*line*/) const noexcept {}

const IApp& App::Instance() noexcept {
    const IApp* host = installed_host.load(std::memory_order_acquire);
    return host != nullptr ? *host : Default();
}

const IApp* App::Install(const IApp* host) noexcept {
    return installed_host.exchange(host, std::memory_order_acq_rel);
}

const IApp& App::Default() noexcept {
    // In storage that is never destroyed, so that messages work while the process ends.
    alignas(DefaultApp) static unsigned char storage[sizeof(DefaultApp)];
    static const IApp* const host = new (static_cast<void*>(storage)) DefaultApp;
    return *host;
}
