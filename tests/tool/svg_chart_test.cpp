// Pictures: axis marks, text that fits, and charts that stay well-formed whatever they are given.

#include "tools/lmw/svg_chart.h"

#include "common/undefined.h"

#include "tests/support/property_random.h"
#include "tools/lmw/axis_ticks.h"
#include "tools/lmw/svg_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace lmw::tool;
using testing::HasSubstr;
using testing::Not;

std::string Labels(const AxisTicks& ticks) {
    std::string labels;
    for (const Tick& tick : ticks.ticks) {
        if (!tick.label.empty()) {
            labels += (labels.empty() ? "" : " ") + tick.label;
        }
    }
    return ticks.note.empty() ? labels : labels + " | " + ticks.note;
}

TEST(AxisTicks, LabelsAreRoundAndShort) {
    struct Row {
        Scale scale;
        AxisRange range;
        int labels;
        const char* expected;
    };
    const Scale linear = Scale::kLinear;
    const Scale logarithmic = Scale::kLogarithmic;
    const Row rows[] = {
        {linear, {0.0, 1.0}, 6, "0.0 0.2 0.4 0.6 0.8 1.0"},
        {linear, {0.0, 0.3}, 5, "0.0 0.1 0.2 0.3"},  // 3 * 0.1 is above 0.3: the end still counts
        {linear, {-0.3, 0.3}, 7, "-0.3 -0.2 -0.1 0.0 0.1 0.2 0.3"},  // no "-0.0"
        {linear, {0.276, 0.561}, 8, "0.30 0.35 0.40 0.45 0.50 0.55"},
        {linear, {0.0, 4e7}, 5, "0 10 20 30 40 | ×10⁶"},
        {linear, {-2e-9, 3e-9}, 6, "-2 -1 0 1 2 3 | ×10⁻⁹"},
        {linear, {1000000.00009, 1000000.00036}, 7, "100 150 200 250 300 350 | ×10⁻⁶ + 1000000"},
        {linear, {-7.25000001, -7.25}, 3, "0 5 10 | ×10⁻⁹ - 7.25000001"},
        {linear, {-1e300, 1e300}, 5, "-1.0 -0.5 0.0 0.5 1.0 | ×10³⁰⁰"},
        {logarithmic, {10.0, 20000.0}, 6, "10 100 1000 10000"},
        {logarithmic, {3.0, 25.0}, 8, "5 10 20"},
        {logarithmic, {0.02, 70.0}, 6, "0.1 1 10"},
        {logarithmic, {0.15, 9.0}, 5, "0.3 1 3"},
        {logarithmic, {1e-6, 1e6}, 5, "10⁻⁶ 10⁻³ 10⁰ 10³ 10⁶"},
        {logarithmic, {1e-300, 1e300}, 5, "10⁻²⁰⁰ 10⁰ 10²⁰⁰"},
        {logarithmic, {100.0, 105.0}, 6, "100 101 102 103 104 105"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Labels(MakeTicks(row.scale, row.range, row.labels)), row.expected);
    }
}

TEST(AxisTicks, LieInTheRangeInOrderAndAreNeverMoreThanAskedFor) {
    const AxisRange widest = RoomyRange(Scale::kLogarithmic, 1e-300, 1e300);
    EXPECT_GE(MakeTicks(Scale::kLogarithmic, widest, 5).ticks.size(), 3U);
    lmw::test::PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    for (int i = 0; i < 20000; ++i) {
        const Scale scale = i % 2 == 0 ? Scale::kLinear : Scale::kLogarithmic;
        double low = random.LogUniform();
        const double high = low * (1.0 + random.LogUniform(1e-14, 1e10));
        low = scale == Scale::kLinear && i % 4 == 0 ? -low : low;
        const AxisRange range = RoomyRange(scale, low, high);
        ASSERT_LE(range.low, low);
        ASSERT_GE(range.high, high);
        const int most = 5 + i % 9;
        const AxisTicks ticks = MakeTicks(scale, range, most);
        int labels = 0;
        double before = -std::numeric_limits<double>::infinity();
        for (const Tick& tick : ticks.ticks) {
            ASSERT_TRUE(tick.value >= range.low && tick.value <= range.high && tick.value > before)
                << range.low << ' ' << range.high << ' ' << tick.value;
            before = tick.value;
            labels += tick.label.empty() ? 0 : 1;
            ASSERT_LE(tick.label.size(), 16U);
        }
        ASSERT_LE(labels, most) << range.low << ' ' << range.high;
        ASSERT_GE(labels, 1) << range.low << ' ' << range.high;
    }
}

TEST(SvgText, IsEscapedShortenedAndWrapped) {
    EXPECT_EQ(XmlEscaped("a<b> & \"c\"\x01\xFF\n"),
              "a&lt;b&gt; &amp; &quot;c&quot;\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(Shortened("short", 12.0, 100.0), "short");
    const std::string cut = Shortened("a text that is much too long", 12.0, 80.0);
    EXPECT_THAT(cut, testing::EndsWith("…"));
    EXPECT_LE(TextWidth(cut, 12.0), 80.0);
    const std::vector<std::string> lines =
        Wrapped("one two three four five six seven", 12.0, 80.0, 3);
    EXPECT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "one two");
    EXPECT_THAT(lines[2], testing::EndsWith("…"));
    EXPECT_EQ(Pixels(-0.001), "0");
    EXPECT_EQ(Pixels(12.5), "12.5");
}

// Counts that show whether elements are closed; the content has no CDATA or comments.
void ExpectWellFormed(const std::string& svg) {
    std::vector<std::string> open;
    for (std::size_t at = svg.find('<'); at != std::string::npos; at = svg.find('<', at + 1)) {
        const std::size_t end = svg.find('>', at);
        ASSERT_NE(end, std::string::npos);
        const std::string tag = svg.substr(at + 1, end - at - 1);
        const std::string name = tag.substr(0, tag.find(' '));
        if (tag.front() == '/') {
            ASSERT_FALSE(open.empty());
            EXPECT_EQ(open.back(), tag.substr(1));
            open.pop_back();
        } else if (tag.front() != '?' && tag.back() != '/') {
            open.push_back(name);
        }
    }
    EXPECT_TRUE(open.empty());
    EXPECT_THAT(svg, Not(HasSubstr("nan")));
    EXPECT_THAT(svg, Not(HasSubstr("inf")));
}

// The path of the only series of a chart over fixed axes from 0 to 10.
std::string PathOfSeries(Series series) {
    const AxisRange range{0.0, 10.0};
    SvgChart chart("", {.title = "", .range = range}, {.title = "", .range = range});
    chart.Add(std::move(series));
    const std::string svg = chart.Text();
    const std::size_t inner = svg.find("<svg", svg.find("<svg") + 1);
    const std::size_t start = svg.find("d=\"", inner);
    return start == std::string::npos ? ""
                                      : svg.substr(start + 3, svg.find('"', start + 3) - start - 3);
}

std::size_t CountOf(const std::string& text, char wanted) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), wanted));
}

TEST(SvgChart, UndefinedValuesMakeGaps) {
    const double none = lmw::kUndefined;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<double> x = {0, 1, 2, 3, 4, 5, 6};
    const std::string line =
        PathOfSeries({.form = Form::kLine, .x = x, .y = {1, 2, none, 3, nan, 4, 5}});
    EXPECT_EQ(CountOf(line, 'M'), 2U) << line;  // the lone fourth point is a dot of its own
    EXPECT_EQ(CountOf(line, 'L'), 2U) << line;
    const std::string points =
        PathOfSeries({.form = Form::kPoints, .x = x, .y = {1, 2, none, 3, nan, 4, 5}});
    EXPECT_EQ(CountOf(points, 'M'), 5U) << points;
    const std::string steps = PathOfSeries({.form = Form::kSteps, .x = {0, 1, 2}, .y = {1, 2}});
    EXPECT_EQ(CountOf(steps, 'L'), 3U) << steps;
    const std::string bars =
        PathOfSeries({.form = Form::kBars, .x = {0, 1, 2, 3}, .y = {1, none, 2}});
    EXPECT_EQ(CountOf(bars, 'Z'), 2U) << bars;
    const std::string rings = PathOfSeries(
        {.form = Form::kRegion, .x = {0, 5, 5, none, 1, 2, 2}, .y = {0, 0, 5, 0, 1, 1, 2}});
    EXPECT_EQ(CountOf(rings, 'Z'), 2U) << rings;
}

TEST(SvgChart, StaysWellFormedForOddData) {
    const double big = std::numeric_limits<double>::max();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<std::vector<double>> columns = {{},
                                                      {0},
                                                      {5e-324, 1e-310},
                                                      {1, 1 + 2.3e-16},
                                                      {-1e300, 1e300},
                                                      {-infinity, big, 0},
                                                      {-5, 0, 5},
                                                      {1e-300, 1e300}};
    for (const Scale scale : {Scale::kLinear, Scale::kLogarithmic}) {
        for (const std::vector<double>& x : columns) {
            for (const std::vector<double>& y : columns) {
                SvgChart chart("<&\"", {"x\x02", scale}, {"y", scale});
                for (const Form form :
                     {Form::kPoints, Form::kLine, Form::kSteps, Form::kBars, Form::kRegion}) {
                    chart.Add({.form = form, .label = "</svg>", .x = x, .y = y});
                }
                chart.AddNote(std::string(2000, '<'));
                ExpectWellFormed(chart.Text());
                chart.KeepAspect();
                ExpectWellFormed(chart.Text());
            }
        }
    }
}

TEST(SvgChart, LabelsOfAnAxisDoNotOverlap) {
    SvgChart chart("t", {"x"}, {"y"});
    chart.Add({.x = {123456.1, 123456.9}, .y = {-99999.5, 99999.5}});
    const std::string svg = chart.Text();
    double taken = -1e9;
    const std::string middle =
        "text-anchor=\"middle\">";  // labels of the x axis, and its title last
    std::size_t labels = 0;
    for (std::size_t at = svg.find(middle); at != std::string::npos;
         at = svg.find(middle, at + 1)) {
        const std::size_t tag = svg.rfind("<text x=\"", at);
        const std::string text =
            svg.substr(at + middle.size(), svg.find('<', at) - at - middle.size());
        if (text == "x") {
            break;
        }
        const double center = std::stod(svg.substr(tag + 9));
        EXPECT_GT(center - TextWidth(text, 12.0) / 2.0, taken) << text;
        taken = center + TextWidth(text, 12.0) / 2.0;
        ++labels;
    }
    EXPECT_GE(labels, 3U);
}

}  // namespace
