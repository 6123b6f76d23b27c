// SQL generation for large condition trees: BuildQuery followed by GetSQL on
// 1,000 to 1,000,000 conditions, with time and memory per condition.
#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "alloc_counter.h"
#include "bench_tree.h"
#include "query/query.h"
#include "structure/structure.h"

namespace {

using ts4bench::CondsPerGroup;
using ts4bench::FillTree;
using ts4bench::InUseBytes;
using ts4bench::TBenchStructure;

double PerCondition(std::size_t before, std::size_t after, int count) {
  return after >= before ? static_cast<double>(after - before) / count
                         : -static_cast<double>(before - after) / count;
}

void BuildAndWrite(ts4::TWQuery& query) {
  query.BuildQuery();
  benchmark::DoNotOptimize(query.QResult().GetSQL().Count());
}

// Counters, all per condition:
//   ns_per_cond    time of BuildQuery + GetSQL;
//   build_B        bytes allocated by one BuildQuery + GetSQL (repeat builds);
//   first_build_B  the same for the query's first build, before its lists
//                  have grown to size;
//   held_B         bytes allocated while the tree was made (what the query
//                  holds for its conditions, temporaries included);
//   held_net_B     heap in use that the tree added (glibc only);
//   kept_net_B     heap in use that the first build added and the query keeps
//                  (WHERE lines and the SQL lines; glibc only).
void BM_BuildQuery(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  if (count % CondsPerGroup != 0) {
    state.SkipWithError("the condition count must be a multiple of 100");
    return;
  }
  TBenchStructure structure;
  ts4::TWQuery query(&structure.db);
  ts4::TRFieldList& resultFields = query.QResult().ResultFields();
  resultFields.Add(*structure.db.FieldByName(ts4::fsDisplayName, "Customer"), ts4::stAscending);
  resultFields.Add(*structure.db.FieldByName(ts4::fsDisplayName, "Order total"));
  resultFields.Add(*structure.db.FieldByName(ts4::fsDisplayName, "Product"));

  const std::size_t allocatedBeforeTree = ts4bench::AllocatedBytes();
  const std::size_t inUseBeforeTree = InUseBytes();
  if (!FillTree(query, structure, count)) {
    state.SkipWithError("an operator does not apply to the field it was given");
    return;
  }
  const std::size_t allocatedAfterTree = ts4bench::AllocatedBytes();
  const std::size_t inUseAfterTree = InUseBytes();

  BuildAndWrite(query);
  const std::size_t allocatedAfterFirst = ts4bench::AllocatedBytes();
  const std::size_t inUseAfterFirst = InUseBytes();
  if (query.QResult().WhereLines().Count() < count) {
    state.SkipWithError("conditions are missing from the WHERE clause");
    return;
  }

  double nanoseconds = 0;
  double allocated = 0;
  for (auto _ : state) {
    const std::size_t before = ts4bench::AllocatedBytes();
    const auto start = std::chrono::steady_clock::now();
    BuildAndWrite(query);
    const auto stop = std::chrono::steady_clock::now();
    allocated += static_cast<double>(ts4bench::AllocatedBytes() - before);
    nanoseconds += std::chrono::duration<double, std::nano>(stop - start).count();
  }

  using Counter = benchmark::Counter;
  state.counters["ns_per_cond"] = Counter(nanoseconds / count, Counter::kAvgIterations);
  state.counters["build_B"] = Counter(allocated / count, Counter::kAvgIterations);
  state.counters["first_build_B"] = PerCondition(allocatedAfterTree, allocatedAfterFirst, count);
  state.counters["held_B"] = PerCondition(allocatedBeforeTree, allocatedAfterTree, count);
#if defined(__GLIBC__)
  state.counters["held_net_B"] = PerCondition(inUseBeforeTree, inUseAfterTree, count);
  state.counters["kept_net_B"] = PerCondition(inUseAfterTree, inUseAfterFirst, count);
#else
  static_cast<void>(inUseBeforeTree);
  static_cast<void>(inUseAfterTree);
  static_cast<void>(inUseAfterFirst);
#endif
}
BENCHMARK(BM_BuildQuery)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(0.5);

}  // namespace
