// Query text for large condition trees: SaveToStrings and LoadFromStrings of
// 1,000 to 100,000 conditions (plus their brackets), time per row.
#include <benchmark/benchmark.h>

#include "bench_tree.h"
#include "query/query.h"

namespace {

using ts4bench::CondsPerGroup;
using ts4bench::FillTree;
using ts4bench::TBenchStructure;

// Rows of the tree: conditions and the brackets above them.
int RowCount(int conditions) {
  const int groups = conditions / CondsPerGroup;
  return conditions + groups * (1 + ts4bench::BracketsPerGroup);
}

bool Prepare(benchmark::State& state, TBenchStructure& structure, ts4::TWQuery& query) {
  const int count = static_cast<int>(state.range(0));
  if (count % CondsPerGroup != 0 || !FillTree(query, structure, count)) {
    state.SkipWithError("cannot build the tree");
    return false;
  }
  return true;
}

void Report(benchmark::State& state, const ts4::TStrings& text) {
  const int rows = RowCount(static_cast<int>(state.range(0)));
  state.counters["rows"] = rows;
  state.counters["lines"] = text.Count();
  // rows per nanosecond, inverted: nanoseconds per row
  state.counters["ns_per_row"] = benchmark::Counter(
      rows * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_SaveQueryText(benchmark::State& state) {
  TBenchStructure structure;
  ts4::TWQuery query(&structure.db);
  if (!Prepare(state, structure, query)) return;
  ts4::TStrings text;
  for (auto _ : state) {
    query.SaveToStrings(text);
    benchmark::DoNotOptimize(text.Count());
  }
  Report(state, text);
}

void BM_LoadQueryText(benchmark::State& state) {
  TBenchStructure structure;
  ts4::TStrings text;
  {
    ts4::TWQuery source(&structure.db);
    if (!Prepare(state, structure, source)) return;
    source.SaveToStrings(text);
  }
  ts4::TWQuery query(&structure.db);
  for (auto _ : state) {
    query.LoadFromStrings(text);
    benchmark::DoNotOptimize(query.Root().GetRowCount());
  }
  Report(state, text);
}

BENCHMARK(BM_SaveQueryText)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(300000)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(0.5);
BENCHMARK(BM_LoadQueryText)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(0.5);

}  // namespace
