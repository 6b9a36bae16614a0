// What a cell and a column of a data table cost. Each promise is a ratio: the column functions are
// compared with the strided copy one would write by hand over the same block, and cells with bare
// reads of the block.

#include "common/datatable/data_table.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

namespace {

constexpr std::uint32_t kRows = 1'000'000;
constexpr std::uint32_t kColumns = 20;
constexpr DataParamType kColumn = DataParamType{7};

const DataTable& Table() {
    static const DataTable table = [] {
        DataParamList params;
        for (std::uint32_t value = 1; value <= kColumns; ++value) {
            params.push_back(DataParamType{value});
        }
        DataTable made;
        made.Init(params, kRows).Ignore();
        std::mt19937_64 engine(7);
        std::uniform_real_distribution<double> draw(-1.0, 1.0);
        for (const DataParamType param : params) {
            for (double& value : made.Column(param)) {
                value = draw(engine);
            }
        }
        return made;
    }();
    return table;
}

// The block itself, for the comparisons by hand.
const double* Block() {
    return &*Table().Row(1).begin();
}

// By hand: what the promise is measured against.
void CopyByHand(const double* first, std::size_t stride, std::size_t count, double* out) {
    for (std::size_t k = 0; k < count; ++k) {
        out[k] = first[k * stride];
    }
}

void ColumnByHand(benchmark::State& state) {
    const double* const first = Block() + Table().ColumnOf(kColumn) - 1;
    std::vector<double> out(kRows);
    for (auto _ : state) {
        CopyByHand(first, kColumns, kRows, out.data());
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(ColumnByHand);

void ColumnRead(benchmark::State& state) {
    const DataTable& table = Table();
    std::vector<double> out(kRows);
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.ReadColumn(kColumn, out));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(ColumnRead);

void ColumnReadWithNan(benchmark::State& state) {
    const DataTable& table = Table();
    std::vector<double> out(kRows);
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.ReadColumn(kColumn, out, datatable::MissingAs::kNan));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(ColumnReadWithNan);

void ColumnByIterator(benchmark::State& state) {
    const DataTable& table = Table();
    std::vector<double> out(kRows);
    for (auto _ : state) {
        std::size_t k = 0;
        for (const double value : table.Column(kColumn)) {
            out[k++] = value;
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(ColumnByIterator);

void ColumnWrite(benchmark::State& state) {
    static DataTable table;
    if (table.IsMissing()) {
        table.Assign(Table()).Ignore();
    }
    const std::vector<double> in(kRows, 0.25);
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.WriteColumn(kColumn, in));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(ColumnWrite);

// Cells: random rows and parameters of a table that fits the cache, so that the access is measured
// and not the memory.
struct Cells {
    DataTable table;
    std::vector<GID> rows;
    std::vector<DataParamType> params;
};

const Cells& SmallTable() {
    static const Cells cells = [] {
        constexpr GID kFew = 100;
        Cells made;
        DataParamList list;
        for (std::uint32_t value = 1; value <= kColumns; ++value) {
            list.push_back(DataParamType{value * 30});
        }
        made.table.Init(list, kFew).Ignore();
        std::mt19937_64 engine(11);
        for (int k = 0; k < 4096; ++k) {
            made.rows.push_back(static_cast<GID>(1 + engine() % kFew));
            made.params.push_back(list[engine() % list.size()]);
        }
        return made;
    }();
    return cells;
}

void CellByHand(benchmark::State& state) {
    const Cells& cells = SmallTable();
    const double* const block = &*cells.table.Row(1).begin();
    std::vector<std::size_t> positions;
    for (std::size_t k = 0; k < cells.rows.size(); ++k) {
        positions.push_back(
            cells.table.Position(cells.rows[k], cells.table.ColumnOf(cells.params[k])));
    }
    for (auto _ : state) {
        for (const std::size_t position : positions) {
            benchmark::DoNotOptimize(block[position]);
        }
    }
    state.SetItemsProcessed(state.iterations() * 4096);
}
BENCHMARK(CellByHand);

void CellRead(benchmark::State& state) {
    const Cells& cells = SmallTable();
    for (auto _ : state) {
        for (std::size_t k = 0; k < cells.rows.size(); ++k) {
            benchmark::DoNotOptimize(cells.table.Value(cells.rows[k], cells.params[k]));
        }
    }
    state.SetItemsProcessed(state.iterations() * 4096);
}
BENCHMARK(CellRead);

void CellWriteByHand(benchmark::State& state) {
    const Cells& cells = SmallTable();
    std::vector<double> block(2000);
    std::vector<std::size_t> positions;
    for (std::size_t k = 0; k < cells.rows.size(); ++k) {
        positions.push_back(
            cells.table.Position(cells.rows[k], cells.table.ColumnOf(cells.params[k])));
    }
    for (auto _ : state) {
        for (const std::size_t position : positions) {
            block[position] = 0.5;
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 4096);
}
BENCHMARK(CellWriteByHand);

void CellWrite(benchmark::State& state) {
    const Cells& cells = SmallTable();
    static DataTable table;
    if (table.IsMissing()) {
        table.Assign(cells.table).Ignore();
    }
    for (auto _ : state) {
        for (std::size_t k = 0; k < cells.rows.size(); ++k) {
            table.SetValue(cells.rows[k], cells.params[k], 0.5);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 4096);
}
BENCHMARK(CellWrite);

}  // namespace
