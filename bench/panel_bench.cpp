// The query panel over the sample structure on Qt's offscreen platform, 800 x
// 600 and shown: opening a saved query of 1,000 and 10,000 lines, one Down
// key, inserting a line at the top and scrolling a page, each timed with
// the layout and painting that follow, as long as the user waits for them.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>

#include "alloc_counter.h"
#include "panel/query_panel.h"
#include "query/query.h"
#include "structure/structure.h"

namespace {

using ts4bench::InUseBytes;

constexpr int LinesPerGroup = 10;

enum TValueKind { vkText, vkNumber, vkDate };

struct TLineKind {
  int FieldID;
  TValueKind Kind;
  const char* Text = nullptr;
};

// Company, Order No, City, Order total, Order date, Country, Quantity,
// Product, Status, Category: text, integer, float and date fields.
constexpr std::array<TLineKind, 10> LineKinds = {{{2, vkText, "Smith & Sons"},
                                                  {6, vkNumber},
                                                  {3, vkText, "Lisbon"},
                                                  {10, vkNumber},
                                                  {7, vkDate},
                                                  {4, vkText, "DE"},
                                                  {12, vkNumber},
                                                  {14, vkText, "Espresso machine"},
                                                  {9, vkText, "pending"},
                                                  {15, vkText, "Beverages"}}};

// The value as the user enters it; dates in ISO form.
std::string Value(const TLineKind& kind, int k) {
  switch (kind.Kind) {
    case vkText: return kind.Text;
    case vkNumber: return std::to_string(k % 5000);
    case vkDate: {
      const int month = k % 12 + 1;
      const int day = k % 28 + 1;
      return "2024-" + std::string(month < 10 ? "0" : "") + std::to_string(month) + "-" +
             std::string(day < 10 ? "0" : "") + std::to_string(day);
    }
  }
  return {};
}

struct TSample {
  TSample() { db.LoadFromFile(TS4_EXAMPLE_DATA "/sales.str"); }
  ts4::TWDBStructure db;
};

// Read once; the panels only point at it.
ts4::TWDBStructure& Structure() {
  static TSample sample;
  return sample.db;
}

// Each group of ten starts one kind further on, so that every kind also
// lands in the nested brackets.
bool SetCondition(ts4::TFilterCond& cond, int k) {
  const TLineKind& kind = LineKinds[static_cast<std::size_t>(k + k / LinesPerGroup) % LineKinds.size()];
  ts4::TDSField* field = Structure().FieldByID(kind.FieldID);
  if (field == nullptr || field->Operators(0) == nullptr) return false;
  cond.SetField(field);
  cond.SetOperator(field->Operators(0));
  cond.SetValue(1, Value(kind, k));
  return true;
}

// The text of a saved query with that many lines under the header: of each
// ten, eight conditions in the root and a nested bracket holding the tenth.
// Empty when the structure lacks a field.
const ts4::TStrings& SavedQuery(int lines) {
  static std::map<int, ts4::TStrings> saved;
  if (const auto found = saved.find(lines); found != saved.end()) return found->second;
  ts4::TWQuery query(&Structure());
  query.BeginUpdate();
  ts4::TFilterBracket& root = query.Root();
  ts4::TFilterBracket* nested = &root;
  bool ok = true;
  for (int k = 0; k < lines && ok; ++k) {
    if (k % LinesPerGroup == LinesPerGroup - 2)
      nested = root.AddBracket();
    else
      ok = SetCondition(*(k % LinesPerGroup == LinesPerGroup - 1 ? nested : &root)->AddCond(), k);
  }
  query.EndUpdate();
  ts4::TStrings text;
  if (ok) query.SaveToStrings(text);
  return saved.emplace(lines, std::move(text)).first->second;
}

// A panel as a window opens it: made, given the query, shown and laid out.
std::unique_ptr<ts4::TWQueryPanel> OpenPanel(const ts4::TStrings& text) {
  auto panel = std::make_unique<ts4::TWQueryPanel>();
  panel->resize(800, 600);
  panel->SetDbStruct(&Structure());
  panel->LoadFromStrings(text);
  panel->show();
  QApplication::processEvents();
  return panel;
}

// A query whose panel has the header and `lines` more lines; null (and the
// benchmark skipped) otherwise.
std::unique_ptr<ts4::TWQueryPanel> OpenOrSkip(benchmark::State& state, int lines) {
  const ts4::TStrings& text = SavedQuery(lines);
  if (lines % LinesPerGroup != 0 || text.Empty()) {
    state.SkipWithError("cannot make the query (the line count must be a multiple of 10)");
    return nullptr;
  }
  auto panel = OpenPanel(text);
  if (panel->LineCount() != lines + 1) {
    state.SkipWithError("the panel does not show every row of the query");
    return nullptr;
  }
  return panel;
}

void PressKey(QWidget& widget, Qt::Key key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(&widget, &press);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
  QApplication::sendEvent(&widget, &release);
}

// Counters, per line of the panel:
//   alloc_B     bytes asked of operator new while the panel opened;
//   held_net_B  heap in use that the open panel added (glibc only).
void BM_Panel_Open(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  if (!OpenOrSkip(state, lines)) return;
  QApplication::processEvents();
  double allocated = 0;
  double held = 0;
  for (auto _ : state) {
    const std::size_t allocatedBefore = ts4bench::AllocatedBytes();
    const std::size_t inUseBefore = InUseBytes();
    auto panel = OpenPanel(SavedQuery(lines));
    allocated += static_cast<double>(ts4bench::AllocatedBytes() - allocatedBefore);
    held += static_cast<double>(InUseBytes()) - static_cast<double>(inUseBefore);
    state.PauseTiming();
    panel.reset();
    QApplication::processEvents();
    state.ResumeTiming();
  }
  using Counter = benchmark::Counter;
  state.counters["lines"] = lines;
  state.counters["alloc_B"] = Counter(allocated / lines, Counter::kAvgIterations);
#if defined(__GLIBC__)
  state.counters["held_net_B"] = Counter(held / lines, Counter::kAvgIterations);
#endif
}
BENCHMARK(BM_Panel_Open)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(1.0);

// From the middle on, so that every key scrolls the view by a line; back to
// the middle before the last line.
void BM_Panel_KeyDown(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  auto panel = OpenOrSkip(state, lines);
  if (!panel) return;
  const int middle = lines / 2;
  panel->SetCurrentRowNum(middle);
  QApplication::processEvents();
  PressKey(*panel, Qt::Key_Down);
  if (panel->GetCurrentRowNum() != middle + 1) {
    state.SkipWithError("the Down key does not move the current row");
    return;
  }
  for (auto _ : state) {
    PressKey(*panel, Qt::Key_Down);
    QApplication::processEvents();
    if (panel->GetCurrentRowNum() >= lines) {
      state.PauseTiming();
      panel->SetCurrentRowNum(middle);
      QApplication::processEvents();
      state.ResumeTiming();
    }
  }
  state.counters["lines"] = lines;
}
BENCHMARK(BM_Panel_KeyDown)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(1.0);

// An empty condition at index 0 of the root while the top is in view; taken
// out again outside the timing.
void BM_Panel_InsertTop(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  auto panel = OpenOrSkip(state, lines);
  if (!panel) return;
  ts4::TFilterBracket& root = panel->Query().Root();
  for (auto _ : state) {
    root.InsertCond(0);
    QApplication::processEvents();
    state.PauseTiming();
    root.DeleteRow(0);
    QApplication::processEvents();
    state.ResumeTiming();
  }
  if (panel->LineCount() != lines + 1) state.SkipWithError("the line count changed");
  state.counters["lines"] = lines;
}
BENCHMARK(BM_Panel_InsertTop)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(1.0);

// A page down; from the end back to the top.
void BM_Panel_ScrollPage(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  auto panel = OpenOrSkip(state, lines);
  if (!panel) return;
  QScrollBar* bar = panel->verticalScrollBar();
  for (auto _ : state) {
    const int next = bar->value() + bar->pageStep();
    bar->setValue(next > bar->maximum() ? 0 : next);
    QApplication::processEvents();
  }
  state.counters["lines"] = lines;
  state.counters["pages"] = bar->pageStep() > 0 ? bar->maximum() / bar->pageStep() + 1 : 0;
}
BENCHMARK(BM_Panel_ScrollPage)->Arg(10000)->Unit(benchmark::kMicrosecond)->MinTime(1.0);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
