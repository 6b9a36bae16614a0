#pragma once

// Builds JSON text (RFC 8259).

#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {

/// Writes values in order; commas, line breaks and indentation follow from the nesting. Inside an
/// object every value is preceded by Key(). Undefined, infinite and NaN numbers are written as
/// null.
///
/// Example:
///     JsonText json;
///     json.BeginObject().Key("x").Value(1.5).Key("names").BeginArray().Value("a").End().End();
class JsonText {
 public:
    JsonText& BeginObject();
    JsonText& BeginArray();
    /// Ends the innermost object or array.
    JsonText& End();
    JsonText& Key(std::string_view name);
    JsonText& Value(double number);
    JsonText& Value(std::string_view text);
    JsonText& Value(const char* text) { return Value(std::string_view(text)); }
    /// A whole number.
    JsonText& Count(std::size_t number);
    JsonText& Null();

    /// The text, with a line break at its end once everything is ended.
    [[nodiscard]] const std::string& Text() const { return text_; }

 private:
    struct Level {
        char closing = 0;
        bool empty = true;
    };
    void Begin_(char opening, char closing);
    void BeforeValue_();
    void NewLine_();
    void AppendQuoted_(std::string_view text);

    std::string text_;
    std::vector<Level> levels_;
    bool after_key_ = false;
};

}  // namespace lmw::tool
