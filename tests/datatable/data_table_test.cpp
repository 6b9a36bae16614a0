#include "common/datatable/data_table.h"

#include "common/datatable/column_view.h"
#include "common/iterator_range.h"
#include "common/strided_iterator.h"
#include "common/undefined.h"

#include "tests/support/property_random.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using P = DataParamType;
using lmw::kUndefined;
using Iterator = gtl::strided_iterator<double>;
using ConstIterator = gtl::strided_iterator<const double>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Remembers what the table looked like when it was told of changes.
class Recorder : public ICalculators {
 public:
    void TableChanged(DataTable& table) noexcept override {
        ++calls;
        rows = table.RowCount();
        columns = table.ColumnCount();
    }
    int calls = 0;
    std::uint32_t rows = 0;
    std::uint32_t columns = 0;
};

/// Supplies the pore pressure from the total head, and claims to supply the null parameter.
class HeadEvaluator : public IParamEvaluator {
 public:
    [[nodiscard]] bool CanSupply(P param, const DataTable& table) const override {
        return param == P::Null || (param == P::PorePressure && table.HasParam(P::TotalHead));
    }
    [[nodiscard]] double Supply(P, const DataTable& table, GID row) const override {
        const double head = table.Value(row, P::TotalHead);
        return lmw::IsDefined(head) ? 9.81 * head : kUndefined;
    }
};

DataTable Made(const DataParamList& params, std::uint32_t rows) {
    DataTable table;
    EXPECT_TRUE(table.Init(params, rows).Succeeded());
    return table;
}

template <class Range>
std::vector<double> Values(const Range& range) {
    return {range.begin(), range.end()};
}

TEST(DataTable, InitKeepsTheOrderAndDropsRepeatsAndNull) {
    const DataTable table =
        Made({P::Time, P::Null, P::Porosity, P::Time, DataParamType{744}, DataParamType{745}}, 2);
    EXPECT_EQ(table.Params(), (DataParamList{P::Time, P::Porosity, DataParamType{744}}));
    EXPECT_EQ(table.ColumnOf(P::Time), 1U);
    EXPECT_EQ(table.ColumnOf(DataParamType{744}), 3U);
    EXPECT_EQ(table.ColumnOf(P::Null), 0U);
    EXPECT_EQ(table.ColumnOf(DataParamType{745}), 0U);
    EXPECT_EQ(Values(table.Row(2)), std::vector<double>(3, kUndefined));
}

TEST(DataTable, RowsAreContiguousAndColumnsStrided) {
    DataTable table = Made({P::Time, P::TotalHead, P::Porosity}, 4);
    double number = 0.0;
    for (GID row = 1; row <= 4; ++row) {
        for (double& cell : table.Row(row)) {
            cell = number++;  // the position itself
        }
    }
    EXPECT_EQ(Values(table.Column(P::TotalHead)), (std::vector<double>{1, 4, 7, 10}));
    EXPECT_EQ(Values(std::as_const(table).Row(3)), (std::vector<double>{6, 7, 8}));
    for (std::uint32_t row = 1; row <= 4; ++row) {
        for (std::uint32_t column = 1; column <= 3; ++column) {
            const auto position = static_cast<double>(table.Position(row, column));
            EXPECT_EQ(table.Value(row, table.Params()[column - 1]), position);
        }
    }
    table.Column(P::Porosity)[3] = 99.0;
    EXPECT_EQ(table.Value(4, P::Porosity), 99.0);
}

TEST(DataTable, WhatIsNotStoredIsAbsentNotAnError) {
    DataTable table = Made({P::Time}, 2);
    for (const GID row : {0U, 3U, 0xFFFFFFFFU}) {
        EXPECT_TRUE(table.Row(row).empty()) << row;
        EXPECT_EQ(table.Value(row, P::Time), kUndefined) << row;
        EXPECT_FALSE(table.SetValue(row, P::Time, 1.0)) << row;
    }
    EXPECT_TRUE(table.Column(P::Porosity).empty());
    EXPECT_FALSE(table.SetValue(1, P::Porosity, 0.3));
    EXPECT_EQ(table.Value(1, DataParamType{100000}), kUndefined);
    EXPECT_EQ(table.GetAs<std::string>(1, P::Porosity), "");
    for (const auto& [params, rows] :
         {std::pair{DataParamList{P::Time, P::Porosity}, 0U}, {DataParamList{}, 5U}}) {
        const DataTable empty = Made(params, rows);
        EXPECT_EQ(empty.Position(3, 2), 0U);
        EXPECT_TRUE(empty.Row(1).empty());
        EXPECT_TRUE(empty.Column(P::Time).empty());
    }
}

// By design: the null parameter is never there, even if the evaluator offers it.
TEST(DataTable, TheEvaluatorSuppliesWhatIsNotStoredButNeverNull) {
    DataTable table = Made({P::TotalHead}, 2);
    EXPECT_FALSE(table.HasParam(P::PorePressure));
    table.SetEvaluator(std::make_shared<HeadEvaluator>());
    for (const auto& [param, there] : {std::pair{P::TotalHead, true},
                                       {P::PorePressure, true},
                                       {P::Porosity, false},
                                       {P::Null, false},
                                       {DataParamType{745}, false}}) {
        EXPECT_EQ(table.HasParam(param), there) << dataparamtype::IndexOf(param);
    }
    table.SetValue(1, P::TotalHead, 2.0);
    EXPECT_EQ(table.ValueOrSupplied(1, P::PorePressure), 9.81 * 2.0);
    EXPECT_EQ(table.ValueOrSupplied(2, P::PorePressure), kUndefined);
    EXPECT_EQ(table.ValueOrSupplied(3, P::PorePressure), kUndefined);
    EXPECT_EQ(table.ValueOrSupplied(1, P::Null), kUndefined);
    EXPECT_EQ(table.Value(1, P::PorePressure), kUndefined);
    EXPECT_EQ(table.GetAs<std::wstring>(1, P::PorePressure), L"19.62");
    EXPECT_EQ(table.GetAs<std::string>(1, P::PorePressure), "19.62");
    EXPECT_EQ(table.GetAs<std::string>(2, P::PorePressure), "");
}

TEST(DataTable, EqualsComparesListShapeAndBits) {
    const auto filled = [](double value) {
        DataTable table = Made({P::Time, P::Porosity}, 2);
        table.SetValue(1, P::Porosity, value);
        return table;
    };
    EXPECT_TRUE(filled(kNan).Equals(filled(kNan)));
    EXPECT_FALSE(filled(0.0).Equals(filled(-0.0)));
    EXPECT_FALSE(filled(kUndefined).Equals(filled(std::nextafter(kUndefined, 0.0))));
    EXPECT_FALSE(Made({P::Time, P::Porosity}, 2).Equals(Made({P::Porosity, P::Time}, 2)));
    EXPECT_FALSE(Made({P::Time}, 0).Equals(Made({P::Time}, 1)));
    EXPECT_FALSE(Made({P::Time}, 0).Equals(Made({}, 0)));
    DataTable with_others = filled(1.0);
    with_others.SetEvaluator(std::make_shared<HeadEvaluator>());
    with_others.SetSubject(7);
    EXPECT_TRUE(with_others.Equals(filled(1.0)));
}

TEST(DataTable, EachChangeAsAWholeIsToldOnceWhenItIsDone) {
    struct Change {
        const char* name;
        void (*make)(DataTable&);
        DataTable expected;
    };
    Change changes[] = {
        {"more rows", [](DataTable& t) { t.ResizeRows(3).Ignore(); }, Made({P::Time}, 3)},
        {"fewer rows", [](DataTable& t) { t.ResizeRows(1).Ignore(); }, Made({P::Time}, 1)},
        {"again more", [](DataTable& t) { t.ResizeRows(2).Ignore(); }, Made({P::Time}, 2)},
        {"no values", [](DataTable& t) { t.Invalidate(); }, Made({P::Time}, 2)},
        {"other columns", [](DataTable& t) { t.Init({P::Porosity}, 5).Ignore(); },
         Made({P::Porosity}, 5)},
        {"nothing", [](DataTable& t) { t.Clear(); }, DataTable()},
    };
    for (std::size_t k = 0; k < 3; ++k) {  // kept; the row cut off and added is missing
        changes[k].expected.SetValue(1, P::Time, 5.0);
    }
    changes[0].expected.SetValue(2, P::Time, 6.0);
    const auto recorder = std::make_shared<Recorder>();
    DataTable table = Made({P::Time}, 2);
    table.WriteColumn(P::Time, std::vector<double>{5.0, 6.0});
    table.SetSubject(4);
    table.SetCalculators(recorder);
    table.SetEvaluator(std::make_shared<HeadEvaluator>());
    int calls = 0;
    for (const Change& change : changes) {
        SCOPED_TRACE(change.name);
        change.make(table);
        EXPECT_TRUE(table.Equals(change.expected));
        EXPECT_EQ(recorder->calls, ++calls);
        EXPECT_EQ(recorder->rows, change.expected.RowCount());
        EXPECT_EQ(recorder->columns, change.expected.ColumnCount());
        EXPECT_EQ(table.Subject(), table.ColumnCount() == 0 ? 0U : 4U);
    }
    EXPECT_TRUE(table.IsMissing()) << "no subject and no evaluator after Clear";
    EXPECT_EQ(table.Calculators(), nullptr);
}

TEST(DataTable, AssignCopiesTheDataAndKeepsTheCollaborators) {
    DataTable source = Made({P::Time}, 2);
    source.SetValue(2, P::Time, 5.0);
    source.SetSubject(3);
    source.SetEvaluator(std::make_shared<HeadEvaluator>());
    const auto recorder = std::make_shared<Recorder>();
    DataTable target = Made({P::Porosity, P::TotalHead}, 1);
    target.SetCalculators(recorder);
    ASSERT_TRUE(target.Assign(source).Succeeded());
    EXPECT_TRUE(target.Equals(source));
    EXPECT_EQ(target.Subject(), 3U);
    EXPECT_EQ(target.Evaluator(), nullptr);
    EXPECT_EQ(target.Calculators(), recorder);
    EXPECT_EQ(recorder->calls, 1);
    EXPECT_EQ(recorder->columns, 1U);
    ASSERT_TRUE(target.Assign(target).Succeeded());
    EXPECT_TRUE(target.Equals(source));
}

TEST(DataTable, SwapAndMoveTakeEverythingAndTellNobody) {
    const auto recorder = std::make_shared<Recorder>();
    DataTable a = Made({P::Time, P::Porosity}, 2);
    a.SetCalculators(recorder);
    a.SetValue(2, P::Porosity, 0.4);
    DataTable b;
    b.Swap(a);
    EXPECT_TRUE(a.IsMissing());
    EXPECT_EQ(a.Calculators(), nullptr);
    DataTable c = std::move(b);
    EXPECT_EQ(c.Value(2, P::Porosity), 0.4);
    EXPECT_TRUE(b.IsMissing());  // NOLINT(bugprone-use-after-move): the state after it is promised
    EXPECT_EQ(c.Calculators(), recorder);
    EXPECT_EQ(recorder->calls, 0);
}

TEST(DataTable, IsMissingOnlyWhenThereIsNothing) {
    DataTable table;
    EXPECT_TRUE(table.IsMissing());
    table.SetSubject(1);
    EXPECT_FALSE(table.IsMissing());
    table.SetSubject(0);
    table.SetEvaluator(std::make_shared<HeadEvaluator>());
    EXPECT_FALSE(table.IsMissing());
    EXPECT_FALSE(Made({P::Time}, 0).IsMissing());
    EXPECT_TRUE(Made({}, 3).IsMissing());
}

TEST(DataTable, BulkReadsAndWritesGoAsFarAsBothSides) {
    DataTable table = Made({P::Time, P::Porosity}, 3);
    EXPECT_EQ(table.WriteColumn(P::Porosity, std::vector<double>{0.1, 0.2}), 2U);
    EXPECT_EQ(table.WriteColumn(P::TotalHead, std::vector<double>{1.0}), 0U);
    std::vector<double> read(4, -7.0);
    EXPECT_EQ(table.ReadColumn(P::Porosity, read), 3U);
    EXPECT_EQ(read, (std::vector<double>{0.1, 0.2, kUndefined, -7.0}));
    EXPECT_EQ(table.ReadColumn(P::Porosity, read, datatable::MissingAs::kNan), 3U);
    EXPECT_TRUE(std::isnan(read[2]));
    EXPECT_EQ(read[3], -7.0);
    EXPECT_EQ(table.ReadColumn(P::TotalHead, read), 0U);
    EXPECT_EQ(Values(table.Column(P::Time)), std::vector<double>(3, kUndefined));
    EXPECT_TRUE(std::isnan(table.ColumnWithNan(P::Porosity)[2]));
}

TEST(DataTable, WantOfMemoryIsAStatusAndLeavesTheTable) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers end the program instead of refusing memory";
#endif
    DataParamList all;
    for (std::uint32_t value = 1; value < 745; ++value) {
        all.push_back(DataParamType{value});
    }
    const lmw::test::TestHost host;
    DataTable table = Made(all, 1);
    table.SetEvaluator(std::make_shared<HeadEvaluator>());
    table.SetValue(1, P::Time, 5.0);
    EXPECT_EQ(table.ResizeRows(0xFFFFFFFFU).MessageId(), 20654U);  // 25 million million bytes
    EXPECT_EQ(table.Init(all, 0xFFFFFFFFU).MessageId(), 20654U);
    EXPECT_EQ(table.RowCount(), 1U);
    EXPECT_EQ(table.Value(1, P::Time), 5.0);
    EXPECT_NE(table.Evaluator(), nullptr);
}

// A table against a plain map of cells, through many changes drawn at random.
TEST(DataTable, BehavesLikeAMapOfCells) {
    lmw::test::PropertyRandom random;
    const DataParamList params = {P::Time, P::Porosity, P::TotalHead, P::Cohesion};
    DataTable table = Made(params, 5);
    std::map<std::pair<GID, P>, double> cells;
    GID rows = 5;
    for (int round = 0; round < 3000; ++round) {
        const auto row = static_cast<GID>(random.Integer(0, 9));
        const P param = random.Pick(params);
        if (random.Chance(0.1)) {
            rows = static_cast<GID>(random.Integer(0, 8));
            ASSERT_TRUE(table.ResizeRows(rows).Succeeded());
            std::erase_if(cells, [rows](const auto& cell) { return cell.first.first > rows; });
        } else {
            const double value = random.SignedLogUniform();
            const bool exists = row >= 1 && row <= rows;
            ASSERT_EQ(table.SetValue(row, param, value), exists);
            if (exists) {
                cells[{row, param}] = value;
            }
        }
        const auto found = cells.find({row, param});
        ASSERT_EQ(table.Value(row, param), found != cells.end() ? found->second : kUndefined);
    }
}

static_assert(std::random_access_iterator<Iterator>);
static_assert(std::random_access_iterator<ConstIterator>);
static_assert(std::random_access_iterator<datatable::ColumnView::iterator>);
static_assert(std::is_convertible_v<Iterator, ConstIterator>);
static_assert(!std::is_convertible_v<ConstIterator, Iterator>);

TEST(StridedIterator, WalksLikeAPointerInSteps) {
    std::array<int, 10> block = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const gtl::strided_iterator<int> first(block.data() + 1, 3);
    const gtl::strided_iterator<int> last(block.data() + 1, 3, 3);
    EXPECT_EQ(std::vector<int>(first, last), (std::vector<int>{1, 4, 7}));
    EXPECT_EQ(last - first, 3);
    EXPECT_EQ(first[2], 7);
    EXPECT_EQ(*(2 + first), 7);
    auto at = first;
    EXPECT_EQ(*at++, 1);
    EXPECT_EQ(*at--, 4);
    EXPECT_EQ(at, first);
    EXPECT_LT(first, last);
    EXPECT_EQ(std::vector<int>(std::reverse_iterator(last), std::reverse_iterator(first)),
              (std::vector<int>{7, 4, 1}));
}

TEST(StridedIterator, ServesTheAlgorithmsOfTheStandardLibrary) {
    std::vector<double> block = {5, 50, 3, 30, 4, 40, 1, 10, 2, 20};
    const gtl::iterator_range<Iterator> column(Iterator(block.data(), 2),
                                               Iterator(block.data(), 2, 5));
    std::sort(column.begin(), column.end());
    EXPECT_EQ(block, (std::vector<double>{1, 50, 2, 30, 3, 40, 4, 10, 5, 20}));
    EXPECT_EQ(column.size(), 5U);
    EXPECT_EQ(column[4], 5.0);
}

TEST(ColumnView, ShowsMissingValuesAsNan) {
    std::vector<double> block = {1, 0, lmw::kUndefined, 0, -lmw::kUndefined, 0};
    const datatable::ColumnView view(
        {ConstIterator(block.data(), 2), ConstIterator(block.data(), 2, 3)});
    ASSERT_EQ(view.size(), 3U);
    EXPECT_EQ(view[0], 1.0);
    EXPECT_TRUE(std::isnan(view[1]));
    EXPECT_EQ(view[2], -lmw::kUndefined);  // an ordinary value
    EXPECT_EQ(std::count_if(view.begin(), view.end(), [](double v) { return std::isnan(v); }), 1);
}

}  // namespace
