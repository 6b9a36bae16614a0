#include "tests/sys/border_module.h"

#include "common/errors.h"
#include "common/status.h"

#include <exception>
#include <stdexcept>

namespace lmw::test {

namespace {

class NamedHost final : public IApp, public Named {
 public:
    [[nodiscard]] std::wstring MessageText(std::uint32_t message_id) const override {
        return App::Default().MessageText(message_id);
    }
    [[nodiscard]] std::string Name() const override { return "module"; }
};

struct UncaughtRecorder {
    int& target;
    ~UncaughtRecorder() { target = std::uncaught_exceptions(); }
};

void CallRecording(const std::function<void()>& action, Caught& caught) {
    const UncaughtRecorder recorder{caught.uncaught_inside};
    action();
}

}  // namespace

Named::~Named() = default;

void ThrowStatus() {
    throw gtl::status_exception(LmwError::Undefined());
}

void ThrowOutOfRange(const std::string& text) {
    throw std::out_of_range(text);
}

Caught CatchFrom(const std::function<void()>& action) {
    Caught caught;
    try {
        CallRecording(action, caught);
    } catch (const gtl::status_exception& exception) {
        caught.as = "status_exception";
        caught.text = exception.what();
    } catch (const std::logic_error& exception) {
        caught.as = "logic_error";
        caught.text = exception.what();
    } catch (const std::exception& exception) {
        caught.as = "exception";
        caught.text = exception.what();
    } catch (...) {
        caught.as = "unknown";
    }
    caught.uncaught_after = std::uncaught_exceptions();
    return caught;
}

std::unique_ptr<IApp> MakeNamedHost() {
    return std::make_unique<NamedHost>();
}

std::string NameOfHost(const IApp& host) {
    const auto* const named = dynamic_cast<const Named*>(&host);
    return named != nullptr ? named->Name() : std::string();
}

}  // namespace lmw::test
