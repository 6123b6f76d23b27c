// Join-path search on structures that make a naive chain enumeration blow up.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "alloc_counter.h"
#include "foundation/error.h"
#include "structure/structure.h"

namespace {

// Bytes allocated by one call of `search`.
template <typename F>
double BytesPerSearch(F&& search) {
  const std::size_t before = ts4bench::AllocatedBytes();
  search();
  return static_cast<double>(ts4bench::AllocatedBytes() - before);
}

void SearchAndCatch(ts4::TWDBStructure& db, const std::string& from, const std::string& to) {
  try {
    benchmark::DoNotOptimize(db.GetPath(from, to).TableCount());
  } catch (const ts4::EWDBStructError& e) {
    benchmark::DoNotOptimize(e.ErrorCode());
  }
}

std::string Alias(int i) {
  return "T" + std::to_string(i);
}

// Twelve tables, each linked to every other, and the target in a separate
// group of two: every chain of the dense group is a candidate before failing.
void BM_GetPath_DenseGroupUnreachableTarget(benchmark::State& state) {
  ts4::TWDBStructure db;
  for (int i = 0; i < 14; ++i) db.AddTable("table" + std::to_string(i), Alias(i));
  for (int i = 0; i < 12; ++i)
    for (int j = i + 1; j < 12; ++j) db.AddLink(*db.Tables(i), *db.Tables(j), "Id", "Id");
  db.AddLink(*db.Tables(12), *db.Tables(13), "Id", "Id");
  for (auto _ : state) SearchAndCatch(db, Alias(0), Alias(13));
  state.counters["links"] = db.LinkCount();
  state.counters["bytes"] = BytesPerSearch([&] { SearchAndCatch(db, Alias(0), Alias(13)); });
}
BENCHMARK(BM_GetPath_DenseGroupUnreachableTarget)->Unit(benchmark::kMicrosecond);

// Thirty diamonds in a row: two parallel routes per step, 2^30 shortest chains.
void BM_GetPath_DiamondChain(benchmark::State& state) {
  ts4::TWDBStructure db;
  const int steps = 30;
  int next = 0;
  auto add = [&] {
    const int index = next++;
    return db.AddTable("table" + std::to_string(index), Alias(index));
  };
  ts4::TDSTable* joint = add();
  for (int i = 0; i < steps; ++i) {
    ts4::TDSTable* upper = add();
    ts4::TDSTable* lower = add();
    ts4::TDSTable* following = add();
    db.AddLink(*joint, *upper, "Id", "Id");
    db.AddLink(*joint, *lower, "Id", "Id");
    db.AddLink(*upper, *following, "Id", "Id");
    db.AddLink(*lower, *following, "Id", "Id");
    joint = following;
  }
  const std::string last = joint->Alias();
  for (auto _ : state) SearchAndCatch(db, Alias(0), last);
  state.counters["tables"] = db.TableCount();
  state.counters["bytes"] = BytesPerSearch([&] { SearchAndCatch(db, Alias(0), last); });
}
BENCHMARK(BM_GetPath_DiamondChain)->Unit(benchmark::kMicrosecond);

// Five hundred tables joined by 1,500 random links; a path between each of
// a fixed set of table pairs per iteration.
void BM_GetPath_RandomLarge(benchmark::State& state) {
  ts4::TWDBStructure db;
  const int tables = 500;
  for (int i = 0; i < tables; ++i) db.AddTable("table" + std::to_string(i), Alias(i));
  std::mt19937 rng(500);
  std::uniform_int_distribution<int> pick(0, tables - 1);
  for (int i = 0; i < 1500; ++i) db.AddLink(*db.Tables(pick(rng)), *db.Tables(pick(rng)), "Id", "Id");
  std::vector<std::pair<std::string, std::string>> pairs;
  for (int i = 0; i < 16; ++i) pairs.emplace_back(Alias(pick(rng)), Alias(pick(rng)));
  for (auto _ : state)
    for (const auto& [from, to] : pairs) SearchAndCatch(db, from, to);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(pairs.size()));
  state.counters["bytes"] = BytesPerSearch([&] { SearchAndCatch(db, pairs[0].first, pairs[0].second); });
}
BENCHMARK(BM_GetPath_RandomLarge)->Unit(benchmark::kMicrosecond);

}  // namespace
