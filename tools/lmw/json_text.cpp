#include "tools/lmw/json_text.h"

#include "common/str/number_text.h"
#include "common/undefined.h"

#include "tools/lmw/text.h"

#include <cmath>

namespace lmw::tool {

JsonText& JsonText::BeginObject() {
    Begin_('{', '}');
    return *this;
}

JsonText& JsonText::BeginArray() {
    Begin_('[', ']');
    return *this;
}

JsonText& JsonText::End() {
    const Level level = levels_.back();
    levels_.pop_back();
    if (!level.empty) {
        NewLine_();
    }
    text_ += level.closing;
    if (levels_.empty()) {
        text_ += '\n';
    }
    return *this;
}

JsonText& JsonText::Key(std::string_view name) {
    BeforeValue_();
    AppendQuoted_(name);
    text_ += ": ";
    after_key_ = true;
    return *this;
}

JsonText& JsonText::Value(double number) {
    if (!std::isfinite(number) || !IsDefined(number)) {
        return Null();
    }
    BeforeValue_();
    text_ += str::DoubleNarrowText(number);
    return *this;
}

JsonText& JsonText::Value(std::string_view text) {
    BeforeValue_();
    AppendQuoted_(text);
    return *this;
}

JsonText& JsonText::Count(std::size_t number) {
    BeforeValue_();
    text_ += std::to_string(number);
    return *this;
}

JsonText& JsonText::Null() {
    BeforeValue_();
    text_ += "null";
    return *this;
}

void JsonText::Begin_(char opening, char closing) {
    BeforeValue_();
    text_ += opening;
    levels_.push_back({closing, true});
}

void JsonText::BeforeValue_() {
    if (after_key_) {
        after_key_ = false;
        return;
    }
    if (levels_.empty()) {
        return;
    }
    if (!levels_.back().empty) {
        text_ += ',';
    }
    levels_.back().empty = false;
    NewLine_();
}

void JsonText::NewLine_() {
    text_ += '\n';
    text_.append(2 * levels_.size(), ' ');
}

void JsonText::AppendQuoted_(std::string_view text) {
    constexpr const char* kHexDigits = "0123456789abcdef";
    text_ += '"';
    while (!text.empty()) {
        const char32_t code_point = TakeCodePoint(text);
        if (code_point == U'"' || code_point == U'\\') {
            text_ += '\\';
            AppendUtf8(text_, code_point);
        } else if (code_point < 0x20) {
            text_ += "\\u00";
            text_ += kHexDigits[code_point >> 4];
            text_ += kHexDigits[code_point & 0xF];
        } else {
            AppendUtf8(text_, code_point);
        }
    }
    text_ += '"';
}

}  // namespace lmw::tool
