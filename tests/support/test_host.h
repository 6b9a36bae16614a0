#pragma once

// A host application for tests: its messages show which message was asked for and with what.

#include "common/app/app.h"

#include <cstdint>
#include <map>
#include <string>

namespace lmw::test {

/// Installed for its life time. The template of message 123 is "123[%s|%s|%s|%s|%s]" unless the
/// test sets another.
class TestHost : public IApp {
 public:
    TestHost() : previous_(App::Install(this)) {}
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;
    ~TestHost() override { App::Install(previous_); }

    void SetText(std::uint32_t message_id, std::wstring text) {
        texts_[message_id] = std::move(text);
    }

    [[nodiscard]] std::wstring MessageText(std::uint32_t message_id) const override {
        const auto found = texts_.find(message_id);
        return found != texts_.end() ? found->second
                                     : std::to_wstring(message_id) + L"[%s|%s|%s|%s|%s]";
    }

 private:
    const IApp* previous_;
    std::map<std::uint32_t, std::wstring> texts_;
};

}  // namespace lmw::test
