#include "common/math/tail_type.h"

#include "common/str/number_text.h"

namespace str {

using math::fn::TailType;

std::wstring as_wstring(const TailType& tail) {
    if (tail == TailType::None()) {
        return L"None";
    }
    if (tail == TailType::Calc()) {
        return L"Calc";
    }
    return tail == TailType::Cycle() ? L"Cycle" : DoubleText(tail.value);
}

gtl::status from_wstring(const std::wstring& text, TailType& tail) {
    if (text == L"None") {
        tail = TailType::None();
    } else if (text == L"Calc") {
        tail = TailType::Calc();
    } else if (text == L"Cycle") {
        tail = TailType::Cycle();
    } else {
        return ParseDouble(text, tail.value);
    }
    return {};
}

}  // namespace str
