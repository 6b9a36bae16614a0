#include "tools/lmw/axis_ticks.h"

#include "common/str/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace lmw::tool {
namespace {

// Spans below this are taken for none: their steps would lose digits near the least double.
constexpr double kLeastSpan = 1e-290;

// With fewer, a range may hold no round number at all.
constexpr int kFewestLabels = 5;

// The double nearest to 10^exponent: read from text, because std::pow may miss it, and not on every
// platform by the same amount.
double PowerOfTen(int exponent) {
    const std::string text = "1e" + std::to_string(exponent);
    double power = exponent < 0 ? 0.0 : std::numeric_limits<double>::infinity();
    std::from_chars(text.data(), text.data() + text.size(), power);
    return power;
}

// The least step of the form 1, 2 or 5 times a power of ten that is not below `least`, as digit and
// exponent, so that labels can be written without rounding errors.
struct Step {
    int digit = 1;
    int exponent = 0;
    [[nodiscard]] double Size() const {
        return exponent < 0 ? digit / PowerOfTen(-exponent) : digit * PowerOfTen(exponent);
    }
};

Step RoundStep(double least) {
    Step step;
    step.exponent = static_cast<int>(std::floor(std::log10(least)));
    for (const int digit : {1, 2, 5}) {
        step.digit = digit;
        if (step.Size() >= least * (1.0 - 1e-9)) {  // 5.000000001 counts as 5: marks stay round
            return step;
        }
    }
    return {1, step.exponent + 1};
}

std::string Fixed(double value, int decimals) {
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, std::max(decimals, 0));
    std::string text(buffer.data(), result.ptr);
    const bool zero = text.find_first_not_of("-0.") == std::string::npos;
    return zero && text.front() == '-' ? text.substr(1) : text;
}

std::string Superscript(int exponent) {
    static constexpr std::array<std::string_view, 10> kDigits = {"⁰", "¹", "²", "³", "⁴",
                                                                 "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string text(exponent < 0 ? "⁻" : "");
    for (const char digit : std::to_string(std::abs(exponent))) {
        text += kDigits[static_cast<std::size_t>(digit - '0')];
    }
    return text;
}

// What is added to all labels, as text: "+ 12.5", "- 3"; zeros at the end of decimals are left out.
std::string SignedSum(std::string number) {
    if (number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.back() == '.') {
            number.pop_back();
        }
    }
    return number.front() == '-' ? "- " + number.substr(1) : "+ " + number;
}

AxisTicks LinearTicks(const AxisRange& range, int max_labels) {
    const Step step = RoundStep((range.high - range.low) / std::max(max_labels - 1, 1));
    const double size = step.Size();
    const double first = std::ceil(range.low / size - 1e-6);  // a mark at the very end still counts
    const double last = std::floor(range.high / size + 1e-6);
    const double magnitude = std::max(std::fabs(range.low), std::fabs(range.high));

    AxisTicks result;
    // Labels of numbers that are large or small leave out a power of ten; those that differ only in
    // late digits leave out what they have in common.
    double base = 0.0;  // in steps
    double shown = magnitude;
    std::string note_of_base;
    if (magnitude / size > 1e6) {
        const int exponent = static_cast<int>(std::ceil(std::log10(range.high - range.low)));
        const double round = PowerOfTen(exponent);
        const double rounds = std::floor(first * size / round);
        base = rounds * std::round(round / size);
        note_of_base = SignedSum(Fixed(rounds * round, -exponent));
        shown = std::max(last - base, 1.0) * size;  // the only mark may be the base itself
    }
    int factor = 0;
    if (shown >= 1e6 || shown < 1e-3) {
        const int exponent = static_cast<int>(std::floor(std::log10(shown)));
        factor = 3 * static_cast<int>(std::floor(exponent / 3.0));
    }
    result.note = factor == 0 ? "" : "×10" + Superscript(factor);
    result.note += result.note.empty() || note_of_base.empty() ? "" : " ";
    result.note += note_of_base;
    const double unit = step.digit * PowerOfTen(std::abs(step.exponent - factor));
    for (int i = 0; i <= static_cast<int>(last - first); ++i) {
        const double k = first + i;
        const double label = step.exponent >= factor
                                 ? (k - base) * unit
                                 : (k - base) * step.digit / PowerOfTen(factor - step.exponent);
        const double value = std::clamp(k * size, range.low, range.high);
        result.ticks.push_back({value, Fixed(label, factor - step.exponent)});
    }
    return result;
}

// A label for digit * 10^exponent on a logarithmic axis.
std::string LogLabel(int digit, int exponent, bool as_power) {
    if (!as_power) {
        return Fixed(digit * PowerOfTen(exponent), -exponent);
    }
    return (digit == 1 ? "" : std::to_string(digit) + "·") + "10" + Superscript(exponent);
}

// Which numbers of a logarithmic axis get labels: digit * 10^exponent for these digits and the
// exponents that are multiples of the stride.
struct LogLabels {
    std::string_view digits = "1";
    int stride = 1;

    LogLabels(double decades, int max_labels) {
        // The constants allow for the digits' uneven spacing.
        if (3.0 * decades + 1.2 <= max_labels) {
            digits = "125";
        } else if (2.0 * decades + 1.1 <= max_labels) {
            digits = "13";
        }
        for (const int round : {2, 3, 5, 10, 20, 50, 100, 200}) {
            stride = stride * (max_labels - 1) < decades ? round : stride;
        }
    }

    [[nodiscard]] bool Has(int digit, int exponent) const {
        return exponent % stride == 0 &&
               digits.find(static_cast<char>('0' + digit)) != std::string_view::npos;
    }
};

AxisTicks LogTicks(const AxisRange& range, int max_labels) {
    const double low = std::log10(range.low);
    const double high = std::log10(range.high);
    const double decades = high - low;
    const LogLabels labels(decades, max_labels);
    const int last_digit = decades > 12.0 ? 1 : 9;
    const bool crowded = decades > 60.0;  // marks between the labels would run together
    const bool as_power = low < -3.5 || high > 5.5;

    AxisTicks result;
    int count = 0;
    for (int exponent = static_cast<int>(std::floor(low)); exponent <= std::ceil(high);
         ++exponent) {
        for (int digit = 1; digit <= last_digit; ++digit) {
            const double value = digit * PowerOfTen(exponent);
            const bool inside = value >= range.low && value <= range.high;
            if (inside && labels.Has(digit, exponent)) {
                result.ticks.push_back({value, LogLabel(digit, exponent, as_power)});
                ++count;
            } else if (inside && !crowded) {
                result.ticks.push_back({value, std::string()});
            }
        }
    }
    return count < 2 && decades < 1.0 ? LinearTicks(range, max_labels) : result;
}

}  // namespace

AxisRange RoomyRange(Scale scale, double lowest, double highest) {
    if (lowest > highest) {
        std::swap(lowest, highest);
    }
    const double magnitude = std::max(std::fabs(lowest), std::fabs(highest));
    bool equal = highest - lowest <= 1e-12 * magnitude;
    if (scale == Scale::kLogarithmic) {
        const double room = equal ? 1.25 : std::pow(highest, 0.03) / std::pow(lowest, 0.03);
        return {std::max(lowest / room, 1e-305), std::min(highest * room, 1e305)};
    }
    equal = equal || highest - lowest < kLeastSpan;
    if (equal) {
        const double room = magnitude < kLeastSpan ? 1.0 : 0.1 * magnitude;
        return {lowest - room, highest + room};
    }
    const double room = 0.04 * (highest - lowest);
    const bool almost_zero = lowest >= 0.0 && lowest < 0.2 * highest;
    return {almost_zero ? 0.0 : lowest - room, highest + room};
}

AxisTicks MakeTicks(Scale scale, const AxisRange& range, int max_labels) {
    const int labels = std::max(max_labels, kFewestLabels);
    return scale == Scale::kLogarithmic ? LogTicks(range, labels) : LinearTicks(range, labels);
}

}  // namespace lmw::tool
