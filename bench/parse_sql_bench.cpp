// Reading SQL back: ParseSQL of statements whose WHERE clause holds 1,000 to
// 100,000 conditions (brackets nested two deep, all thirteen operators, the
// four link types), time per condition.
#include <benchmark/benchmark.h>

#include "bench_tree.h"
#include "query/query.h"

namespace {

using ts4bench::CondsPerGroup;
using ts4bench::FillTree;
using ts4bench::TBenchStructure;

void BM_ParseSQL(benchmark::State& state) {
  TBenchStructure structure;
  const int count = static_cast<int>(state.range(0));
  ts4::TStrings sql;
  {
    ts4::TWQuery source(&structure.db);
    if (count % CondsPerGroup != 0 || !FillTree(source, structure, count)) {
      state.SkipWithError("cannot build the tree");
      return;
    }
    source.BuildQuery();
    sql = source.QResult().GetSQL();
  }
  ts4::TWQuery query(&structure.db);
  for (auto _ : state) {
    query.ParseSQL(sql);
    benchmark::DoNotOptimize(query.Root().GetRowCount());
  }
  state.counters["lines"] = sql.Count();
  state.counters["ns_per_condition"] = benchmark::Counter(
      count * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(BM_ParseSQL)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(0.5);

}  // namespace
