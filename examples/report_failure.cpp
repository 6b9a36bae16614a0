// What went wrong, and how do I tell it to my user, in my own words?

#include <common/app/app.h>
#include <common/errors.h>
#include <common/math/linear.h>
#include <common/status.h>
#include <common/str/number_text.h>
#include <common/sys/text_encoding.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace {

void Print(const char* what, const gtl::status& result) {
    std::string text = result.Succeeded() ? "succeeded" : sys::Narrow(result.as_wstring());
    std::erase(text, '\r');  // a list of failures ends its lines in "\r\n"
    std::printf("%s: %s\n", what, text.c_str());
}

//! [return]
// A function that can fail returns a status; success is the default and costs nothing.
gtl::status ReadCohesion(const std::wstring& text, double& cohesion) {
    double value = 0.0;
    if (gtl::status read = str::ParseDouble(text, value); read.Failed()) {
        return read;
    }
    if (value < 0.0) {
        return gtl::status::FromText(L"A cohesion is not negative.");
    }
    cohesion = value;
    return {};
}
//! [return]

//! [host]
// A host application supplies texts of its own, in the language of its user.
class Host final : public IApp {
 public:
    [[nodiscard]] std::wstring MessageText(std::uint32_t message_id) const override {
        if (message_id == 20524) {
            return L"Where has %s gone?";
        }
        return App::Default().MessageText(message_id);
    }
};
//! [host]

}  // namespace

int main() {
    double cohesion = 0.0;
    Print("\"12.5\"", ReadCohesion(L"12.5", cohesion));
    Print("\"12,5\"", ReadCohesion(L"12,5", cohesion));
    Print("\"-3\"", ReadCohesion(L"-3", cohesion));

    // Several failures as one, and the number of a message for code that acts on it.
    const gtl::status missing = LmwError::File::file_not_found(L"dam.lwz");
    const std::vector<gtl::status> parts = {missing, ReadCohesion(L"", cohesion)};
    Print("two parts",
          LmwError::compound(gtl::status::FromText(L"The model is not complete:"), parts));
    std::printf("message %u\n", static_cast<unsigned>(missing.MessageId()));

    // Where no status can be returned, an exception carries it.
    try {
        throw gtl::status_exception(missing);
    } catch (const gtl::status_exception& error) {
        Print("caught", error.Status());
    }

    static const Host host;
    App::Install(&host);
    Print("by the host", LmwError::File::file_not_found(L"dam.lwz"));
    App::Install(nullptr);
    return 0;
}
