// Exceptions and run-time casts between three modules: this program, the library, and a plug-in.

#include "common/app/app.h"
#include "common/errors.h"
#include "common/message_text.h"
#include "common/status.h"

#include "tests/sys/border_module.h"

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <stdexcept>
#include <tuple>
#include <typeinfo>

namespace {

using namespace lmw::test;

// Known to this program only.
class OwnError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

class ProgramHost final : public IApp, public Named {
 public:
    [[nodiscard]] std::wstring MessageText(std::uint32_t message_id) const override {
        if (message_id == kThrows) {
            throw OwnError("from the host");
        }
        return App::Default().MessageText(message_id);
    }
    [[nodiscard]] std::string Name() const override { return "program"; }

    static constexpr std::uint32_t kThrows = 1;
};

TEST(DllBorder, ExceptionsOfAModuleAreCaughtWithTheirStatusAndByTheirBase) {
    gtl::status held;
    try {
        ThrowStatus();
    } catch (const gtl::status_exception& exception) {
        held = exception.Status();
    }
    EXPECT_EQ(held.MessageId(), 24181U);
    ASSERT_TRUE(held.Failed());
    EXPECT_EQ(held.Detail()->ReferenceCount(), 1U) << "the exception object has let go of it";
    EXPECT_EQ(std::uncaught_exceptions(), 0);
    EXPECT_THROW(ThrowStatus(), std::exception);
    EXPECT_THROW(ThrowOutOfRange("too far"), std::logic_error);
}

TEST(DllBorder, ExceptionsOfTheProgramAreCaughtInAModule) {
    const std::tuple<std::function<void()>, const char*, const char*> rows[] = {
        {[] { throw gtl::status_exception(gtl::status::FromText(L"told")); }, "status_exception",
         "told"},
        {[] { ThrowOutOfRange("there and back"); }, "logic_error", "there and back"},
        {[] { throw OwnError("own"); }, "exception", "own"},
        {[] { throw 7; }, "unknown", ""},
    };
    for (const auto& [action, as, text] : rows) {
        SCOPED_TRACE(as);
        const Caught caught = CatchFrom(action);
        EXPECT_EQ(caught.as, as);
        EXPECT_EQ(caught.text, text);
        EXPECT_EQ(caught.uncaught_inside, 1);
        EXPECT_EQ(caught.uncaught_after, 0);
    }
}

TEST(DllBorder, AnExceptionOfTheHostPassesThroughTheLibrary) {
    const ProgramHost host;
    const IApp* const before = App::Install(&host);
    EXPECT_THROW(static_cast<void>(lmw::MessageText(ProgramHost::kThrows)), OwnError);
    EXPECT_EQ(CatchFrom([] { static_cast<void>(lmw::MessageText(ProgramHost::kThrows)); }).text,
              "from the host");
    App::Install(before);
    EXPECT_EQ(std::uncaught_exceptions(), 0);
}

TEST(DllBorder, RuntimeCastsReachInterfacesOfOtherModules) {
    const std::unique_ptr<IApp> theirs = MakeNamedHost();
    const auto* const named = dynamic_cast<const Named*>(theirs.get());
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(named->Name(), "module");
    EXPECT_EQ(dynamic_cast<const ProgramHost*>(theirs.get()), nullptr);

    const ProgramHost ours;
    EXPECT_EQ(NameOfHost(ours), "program");
    EXPECT_EQ(NameOfHost(App::Default()), "");

    const IApp* const before = App::Install(theirs.get());
    const IApp& installed = App::Instance();
    const IApp& made = *theirs;
    EXPECT_EQ(NameOfHost(installed), "module");
    EXPECT_TRUE(typeid(installed) == typeid(made));
    App::Install(before);
}

}  // namespace
