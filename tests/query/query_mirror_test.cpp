// The change protocol from a view's side: a mirror of the query built only
// from the notifications must equal the query after every random operation.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <iterator>
#include <list>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "query/query.h"
#include "random_query.h"
#include "sample_structure.h"
#include "structure/field.h"
#include "structure/operator.h"

namespace {

using TPath = std::vector<int>;
constexpr int RowAspectCount = static_cast<int>(ts4::raHidden) + 1;
constexpr int QueryAspectCount = static_cast<int>(ts4::qaActive) + 1;

std::string Label(const std::string& id) {
  return id.empty() ? "root" : id;
}

template <typename T>
std::string Named(const T* item) {
  if (item == nullptr) return "null";
  std::ostringstream text;
  text << item->DisplayName() << " at " << static_cast<const void*>(item);
  return text.str();
}

/// "Name(arg, arg, ...)": what an aspect holds, what an operation does.
template <typename... Args>
std::string Call(std::string_view name, const Args&... args) {
  std::ostringstream text;
  text << name << "(";
  const char* separator = "";
  ((text << separator << args, separator = ", "), ...);
  return text.str() + ")";
}

/// What a view reads of a row for one aspect.
std::string ReadAspect(const ts4::TFilterRow& row, ts4::TRowAspect aspect) {
  if (aspect == ts4::raEnabled) return Call("enabled", row.Enabled());
  if (aspect == ts4::raHidden) return Call("hidden", row.Hidden());
  if (row.IsBracket()) {
    const auto type = static_cast<const ts4::TFilterBracket&>(row).LinkType();
    return aspect == ts4::raLinkType ? Call("link type", static_cast<int>(type)) : "";
  }
  const auto& c = static_cast<const ts4::TFilterCond&>(row);
  switch (aspect) {
    case ts4::raField: return Call("field", Named(c.Field()));
    case ts4::raOperator: return Call("operator", Named(c.Operator()));
    case ts4::raValues:
      return Call("values", c.Value1(), c.Value2(), c.SubQuery().CommaText(), c.SubQueryOptions().Bits());
    case ts4::raCaptions: return Call("captions", c.GetCaption(1), c.GetCaption(2));
    case ts4::raHints: return Call("hints", c.GetHint(1), c.GetHint(2));
    case ts4::raParams: return Call("params", c.Value1IsParam(), c.Value2IsParam());
    default: return {};
  }
}

/// What a view reads of the query for one aspect.
std::string ReadPart(const ts4::TWQuery& q, ts4::TQueryAspect aspect) {
  const ts4::TQueryResult& result = q.QResult();
  std::string text;
  switch (aspect) {
    case ts4::qaCaptions: return Call("captions", q.Titles().CommaText());
    case ts4::qaSettings:
      return Call("settings", q.SQLOptions().Bits(), static_cast<int>(q.SQLSyntax()), q.MainTableName(),
                  q.QueryName(), q.Description().CommaText(), q.UserData().CommaText(), q.NonEmptyBrackets(),
                  q.SaveTitles(), q.SaveSQLOptions(), result.ParamBase());
    case ts4::qaResultFields:
      text = Call("just sorting", result.ResultFields().JustSorting());
      for (const ts4::TResultField* f : result.ResultFields())
        text += Call(" field", f->Formula(), f->Alias(), f->Caption(), static_cast<int>(f->Sorting()),
                     f->SortOrder());
      return text;
    case ts4::qaParameters:
      text = Call("parameter values", q.ParamValues().CommaText());
      for (const ts4::TSQLParam* p : result.Params())
        text += Call(" parameter", p->Name(), p->Caption(), p->Value(), static_cast<int>(p->DataType()));
      return text;
    case ts4::qaStructure: return Call("structure", static_cast<const void*>(q.DbStruct()));
    case ts4::qaActive: return Call("active", q.Active());
  }
  return text;
}

/// What the mirror keeps of a row: its data by the aspect that re-reads it.
struct TNode {
  std::string id;
  bool bracket = false;
  std::array<std::string, RowAspectCount> data;
  std::list<TNode> rows;  // a list: nodes keep their addresses while rows move between brackets
  bool operator==(const TNode&) const = default;
  [[nodiscard]] int Size() const { return static_cast<int>(rows.size()); }
  auto At(int index) { return std::next(rows.begin(), index); }
};

struct TState {
  TNode root;
  std::array<std::string, QueryAspectCount> parts;
  bool operator==(const TState&) const = default;
};

TNode ReadRow(const ts4::TFilterRow& row) {
  TNode node{row.RowID(), row.IsBracket(), {}, {}};
  for (int a = 0; a < RowAspectCount; ++a) node.data[a] = ReadAspect(row, static_cast<ts4::TRowAspect>(a));
  if (!row.IsBracket()) return node;
  const auto& bracket = static_cast<const ts4::TFilterBracket&>(row);
  for (int i = 0; i < bracket.GetRowCount(); ++i) node.rows.push_back(ReadRow(*bracket.GetRow(i)));
  return node;
}

TState Snapshot(const ts4::TWQuery& q) {
  TState state{ReadRow(q.Root()), {}};
  for (int a = 0; a < QueryAspectCount; ++a) state.parts[a] = ReadPart(q, static_cast<ts4::TQueryAspect>(a));
  return state;
}

/// The state as lines, rows in order with the size of each bracket, for telling where two states differ.
void AddLines(const TNode& node, std::vector<std::string>& lines) {
  const std::string row =
      "row " + Label(node.id) + (node.bracket ? " of " + std::to_string(node.Size()) + " rows: " : ": ");
  for (const std::string& data : node.data) lines.push_back(row + data);
  for (const TNode& child : node.rows) AddLines(child, lines);
}

/// Where `a` first differs from `b`, told as "a against b".
std::string Difference(const TState& a, const TState& b) {
  std::vector<std::string> x(a.parts.begin(), a.parts.end());
  std::vector<std::string> y(b.parts.begin(), b.parts.end());
  AddLines(a.root, x);
  AddLines(b.root, y);
  const auto at = std::mismatch(x.begin(), x.end(), y.begin(), y.end());
  return (at.first == x.end() ? "nothing" : *at.first) + "\n  against " +
         (at.second == y.end() ? "nothing" : *at.second);
}

TPath PathOf(const ts4::TFilterRow& row) {
  TPath path;
  for (const ts4::TFilterRow* r = &row; r->Parent() != nullptr; r = r->Parent()) path.push_back(r->Index());
  return {path.rbegin(), path.rend()};
}

/// A view that knows the query only from what it is told. The first break
/// of the protocol is kept as the fault; the mirror stops following then.
class TMirror final : public ts4::TQueryObserver {
 public:
  explicit TMirror(ts4::TWQuery& query) : query_(query), state_(Snapshot(query)) { query_.AddObserver(this); }
  ~TMirror() override { query_.RemoveObserver(this); }
  TMirror(const TMirror&) = delete;
  TMirror& operator=(const TMirror&) = delete;

  /// How the protocol was broken, or how the mirror differs from the query; empty when neither.
  [[nodiscard]] std::string Fault() const {
    if (!fault_.empty()) return "protocol: " + fault_;
    if (stale_) return "QueryAboutToBeReset was not followed by QueryReset";
    const TState real = Snapshot(query_);
    return state_ == real ? "" : "mirror against query: " + Difference(state_, real);
  }

  void QueryAboutToBeReset() override {
    if (!Idle("QueryAboutToBeReset")) return;
    state_.root = {};  // nothing of the tree may be used until the reset
    stale_ = true;
  }
  void QueryReset() override {
    if (!fault_.empty()) return;
    if (!stale_) return (void)Fail("QueryReset without QueryAboutToBeReset");
    state_ = Snapshot(query_);
    stale_ = false;
  }
  void RowsAboutToBeInserted(const ts4::TFilterBracket& parent, int first, int last) override {
    Begin({"insert", &parent, first, last, &parent, first});
  }
  void RowsInserted(const ts4::TFilterBracket& parent, int first, int last) override {
    TNode* node = Finish({"insert", &parent, first, last, &parent, first});
    if (node == nullptr) return;
    if (last >= parent.GetRowCount()) return (void)Fail("RowsInserted: the query lacks the rows");
    const auto at = node->At(first);
    for (int i = first; i <= last; ++i) node->rows.insert(at, ReadRow(*parent.GetRow(i)));
  }
  void RowsAboutToBeRemoved(const ts4::TFilterBracket& parent, int first, int last) override {
    Begin({"removal", &parent, first, last, &parent, first});
  }
  void RowsRemoved(const ts4::TFilterBracket& parent, int first, int last) override {
    TNode* node = Finish({"removal", &parent, first, last, &parent, first});
    if (node != nullptr) node->rows.erase(node->At(first), node->At(last + 1));
  }
  void RowsAboutToBeMoved(const ts4::TFilterBracket& from, int first, int last, const ts4::TFilterBracket& to,
                          int toIndex) override {
    Begin({"move", &from, first, last, &to, toIndex});
  }
  void RowsMoved(const ts4::TFilterBracket& from, int first, int last, const ts4::TFilterBracket& to,
                 int toIndex) override {
    TNode* source = Finish({"move", &from, first, last, &to, toIndex});
    // Both ends by the paths they had before the move, and found before
    // anything is taken out: taking out shifts the paths of later rows.
    TNode* target = source != nullptr ? Node(toPath_, "RowsMoved") : nullptr;
    if (target == nullptr) return;
    std::list<TNode> moving;
    moving.splice(moving.end(), source->rows, source->At(first), source->At(last + 1));
    target->rows.splice(target->At(toIndex), moving);
  }
  void RowsRenumbered(const ts4::TFilterBracket& parent, int first) override {
    const std::string call = Call("RowsRenumbered", Label(parent.RowID()), first);
    TNode* node = Idle(call) ? Node(parent, call) : nullptr;
    if (node == nullptr ||
        ((first < 0 || first > node->Size()) && !Fail(call + ": no such row in the mirror")))
      return;
    auto it = node->At(first);
    for (int i = first; it != node->rows.end() && i < parent.GetRowCount(); ++it, ++i)
      ReadIDs(*it, *parent.GetRow(i));
  }
  void RowChanged(const ts4::TFilterRow& row, ts4::TRowAspects aspects) override {
    const std::string call = Call("RowChanged", Label(row.RowID()), aspects.Bits());
    TNode* node = Idle(call) ? Node(row, call) : nullptr;
    if (node == nullptr) return;
    for (int a = 0; a < RowAspectCount; ++a) {
      const auto aspect = static_cast<ts4::TRowAspect>(a);
      if (aspects.Contains(aspect)) node->data[a] = ReadAspect(row, aspect);
    }
  }
  void QueryChanged(ts4::TQueryAspects aspects) override {
    if (!Idle(Call("QueryChanged", aspects.Bits()))) return;
    for (int a = 0; a < QueryAspectCount; ++a) {
      const auto aspect = static_cast<ts4::TQueryAspect>(a);
      if (aspects.Contains(aspect)) state_.parts[a] = ReadPart(query_, aspect);
    }
  }

 private:
  /// A change told as "about to" and not yet as done.
  struct TOpen {
    std::string kind;
    const ts4::TFilterBracket* from;
    int first;
    int last;
    const ts4::TFilterBracket* to;
    int toIndex;
    bool operator==(const TOpen&) const = default;
    [[nodiscard]] std::string Describe() const {
      return kind + " of rows " + std::to_string(first) + ".." + std::to_string(last) + " of " +
             Label(from->RowID()) +
             (kind == "move" ? " to " + Label(to->RowID()) + " at " + std::to_string(toIndex) : "");
    }
  };

  bool Fail(const std::string& what) {
    if (fault_.empty()) fault_ = what;
    return false;
  }
  /// Whether a call that finishes nothing may come now.
  bool Idle(const std::string& call) {
    if (!fault_.empty()) return false;
    if (stale_) return Fail(call + " between QueryAboutToBeReset and QueryReset");
    if (open_) return Fail(call + " while the " + open_->kind + " is under way");
    return true;
  }
  /// An "about to" call: the rows must be in the mirror, the place free.
  void Begin(const TOpen& open) {
    const std::string call = open.Describe();
    TNode* source = Idle(call) ? Node(*open.from, call) : nullptr;
    TNode* target = source != nullptr ? Node(*open.to, call) : nullptr;
    if (target == nullptr) return;
    fromPath_ = PathOf(*open.from);
    toPath_ = PathOf(*open.to);
    const bool inserting = open.kind == "insert";
    const int count = open.last - open.first + 1;
    const int room = target->Size() - (!inserting && source == target ? count : 0);
    const std::size_t depth = fromPath_.size();
    const bool intoMoved = toPath_.size() > depth &&
                           std::equal(fromPath_.begin(), fromPath_.end(), toPath_.begin()) &&
                           toPath_[depth] >= open.first && toPath_[depth] <= open.last;
    if (open.first < 0 || count < 1 ||
        (inserting ? open.first : open.last) > source->Size() - (inserting ? 0 : 1))
      Fail(call + ": the mirror has no such rows or place");
    if (open.kind == "move" && (intoMoved || open.toIndex < 0 || open.toIndex > room))
      Fail(call + ": the mirror cannot take the rows there");
    open_ = open;
  }
  /// The call that finishes the change told as "about to": the node the
  /// rows came from (for a move, by its path before the move).
  TNode* Finish(const TOpen& done) {
    const std::string call = done.Describe();
    if (!fault_.empty()) return nullptr;
    if (!open_ || !(*open_ == done))  // nothing is open between QueryAboutToBeReset and QueryReset
      return Fail(call + " does not finish what was told as about to come"), nullptr;
    open_.reset();
    return done.kind == "move" ? Node(fromPath_, call) : Node(*done.from, call);
  }
  TNode* Node(const TPath& path, const std::string& call) {
    TNode* node = &state_.root;
    for (int index : path) {
      if (index < 0 || index >= node->Size()) return Fail(call + ": the mirror lacks the row"), nullptr;
      node = &*node->At(index);
    }
    return node;
  }
  TNode* Node(const ts4::TFilterRow& row, const std::string& call) {
    const ts4::TFilterRow* top = &row;
    while (top->Parent() != nullptr) top = top->Parent();
    if (top != &query_.Root()) return Fail(call + ": the row is not in the query"), nullptr;
    return Node(PathOf(row), call);
  }
  static void ReadIDs(TNode& node, const ts4::TFilterRow& row) {
    node.id = row.RowID();
    if (!node.bracket || !row.IsBracket()) return;
    const auto& bracket = static_cast<const ts4::TFilterBracket&>(row);
    int i = 0;
    for (auto it = node.rows.begin(); it != node.rows.end() && i < bracket.GetRowCount(); ++it, ++i)
      ReadIDs(*it, *bracket.GetRow(i));
  }

  ts4::TWQuery& query_;
  TState state_;
  std::string fault_;
  bool stale_ = false;
  std::optional<TOpen> open_;
  TPath fromPath_;
  TPath toPath_;
};

constexpr std::array<std::string_view, 9> Words = {"",  "Riga",  "O'Brien",    "a,b", "x = y",
                                                   "Ω", "[tag]", "2024-02-30", "17"};

/// Random operations on the live tree, the result fields, the parameters
/// and the settings of a query; each says what it ran.
class TDriver {
 public:
  TDriver(ts4::TWQuery& query, std::uint32_t seed) : query_(query), db_(*query.DbStruct()), random_(seed) {}

  std::string Operation(bool batchAllowed = true) {
    const int choice = Below(10);  // the rows most often
    if (choice < 3) return Structure();
    if (choice < 6) return RowData();
    if (choice == 6) return ResultFields();
    if (choice == 7) return Parameters();
    return choice == 8 ? Settings() : Whole(batchAllowed);
  }

 private:
  int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
  bool Chance(int percent) { return Below(100) < percent; }
  std::string Text() {
    return std::string(Words[static_cast<std::size_t>(Below(static_cast<int>(Words.size())))]);
  }
  ts4::TStrings Lines() {
    ts4::TStrings lines;
    for (int i = Below(3); i > 0; --i) lines.Add(Text());
    return lines;
  }
  ts4::TDSField* AnyField() { return db_.Fields(Below(db_.FieldCount())); }

  /// The rows of the tree of that kind (TFilterRow for any), parents first.
  template <typename T>
  T* Any(bool withRoot = true) {
    std::vector<ts4::TFilterRow*> rows = {&query_.Root()};
    std::vector<T*> fit;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      ts4::TFilterRow* row = rows[i];
      if (row->IsBracket()) {
        const auto& bracket = static_cast<const ts4::TFilterBracket&>(*row);
        for (int k = 0; k < bracket.GetRowCount(); ++k) rows.push_back(bracket.GetRow(k));
      }
      const bool kind =
          std::is_same_v<T, ts4::TFilterRow> || row->IsBracket() == std::is_same_v<T, ts4::TFilterBracket>;
      if (kind && (withRoot || i > 0)) fit.push_back(static_cast<T*>(row));
    }
    return fit.empty() ? nullptr : fit[static_cast<std::size_t>(Below(static_cast<int>(fit.size())))];
  }

  /// An operation: what it is, what it does, the code of the error it must raise.
  struct TOp {
    std::string what;
    std::function<void()> run;
    std::optional<int> error = {};
  };

  /// Runs one of the operations. One that raises must leave the query as it was.
  std::string Run(const std::vector<TOp>& ops) {
    const TOp& op = ops[static_cast<std::size_t>(Below(static_cast<int>(ops.size())))];
    const TState before = Snapshot(query_);
    try {
      op.run();
      if (op.error) ADD_FAILURE() << op.what << " raised no error";
    } catch (const ts4::EWTessalyError& e) {
      if (e.ErrorCode() != op.error)
        ADD_FAILURE() << op.what << " raised " << e.ErrorCode() << ": " << e.what();
      if (const TState after = Snapshot(query_); !(after == before))
        ADD_FAILURE() << op.what
                      << " failed but changed the query (now against before): " << Difference(after, before);
    }
    return op.what;
  }

  std::string Structure() {
    ts4::TFilterBracket& bracket = *Any<ts4::TFilterBracket>();
    const std::string at = Label(bracket.RowID());
    const int count = bracket.GetRowCount(), index = Below(count + 1);
    ts4::TFilterRow* row = Any<ts4::TFilterRow>(false);
    if (row == nullptr) return Run({{Call("InsertCond", at, index), [&] { bracket.InsertCond(index); }}});
    ts4::TFilterBracket& parent = *row->Parent();
    const std::string from = Label(parent.RowID());
    const int rowIndex = row->Index(), last = parent.GetRowCount() - 1, bad = Chance(50) ? -1 : count + 1;
    const int toIndex = Below(&bracket == &parent ? last + 1 : count + 1), within = Below(last + 1);
    bool inside = false;  // the bracket is the row itself or lies in its subtree
    for (const ts4::TFilterRow* b = &bracket; b != nullptr; b = b->Parent()) inside = inside || b == row;
    ts4::TFilterBracket& to = inside ? parent : bracket;  // a bad place in a bracket the row may enter
    const int badTo = &to == &parent ? last + 1 : count + 1;
    const std::vector<TOp> failing = {
        {Call("InsertCond", at, bad), [&] { bracket.InsertCond(bad); }, 0},
        {Call("DeleteRow", at, bad), [&] { bracket.DeleteRow(bad); }, 0},
        {Call("MoveRow", from, last + 1, from, 0), [&] { parent.MoveRow(last + 1, parent, 0); }, 0},
        {Call("MoveRow", from, rowIndex, Label(to.RowID()), badTo),
         [&] { parent.MoveRow(rowIndex, to, badTo); }, 0},
    };
    return Run({
        {Call("InsertCond", at, index), [&] { bracket.InsertCond(index); }},
        {Call("InsertBracket", at, index), [&] { bracket.InsertBracket(index); }},
        {Call("DeleteRow", from, rowIndex), [&] { parent.DeleteRow(rowIndex); }},
        {Call("ClearRows", at), [&] { bracket.ClearRows(); }},
        {Call("InsertClone", at, index, Label(row->RowID())), [&] { bracket.InsertClone(index, *row); }},
        {Call("MoveRow", from, rowIndex, at, toIndex), [&] { parent.MoveRow(rowIndex, bracket, toIndex); },
         inside ? std::optional(ts4::qecMoveIntoItself) : std::nullopt},
        {Call("MoveRow", from, rowIndex, from, within), [&] { parent.MoveRow(rowIndex, parent, within); }},
        {"EnumerateRows()", [&] { query_.EnumerateRows(); }},
        {Call("EnumerateRows", from, parent.Index() + 1),
         [&] { query_.EnumerateRows(parent, parent.Index() + 1); }},
        failing[static_cast<std::size_t>(Below(static_cast<int>(failing.size())))],  // one bad index
    });
  }

  std::string RowData() {
    ts4::TFilterBracket& bracket = *Any<ts4::TFilterBracket>();
    ts4::TFilterCond* cond = Any<ts4::TFilterCond>();
    if (cond == nullptr) return Structure();
    ts4::TFilterRow& row = Chance(30) ? static_cast<ts4::TFilterRow&>(bracket) : *cond;
    const std::string id = Label(cond->RowID()), text = Text();
    const int k = 1 + Below(2);
    ts4::TDSField* field = Chance(15) ? nullptr : AnyField();
    // One of the field's operators, any of the structure's, or none.
    const ts4::TDSField* current = cond->Field();
    ts4::TDSOperator* op = current != nullptr && current->OperatCount() > 0 && Chance(50)
                               ? current->Operators(Below(current->OperatCount()))
                               : (Chance(70) ? db_.Operators(Below(db_.OperatCount())) : nullptr);
    const ts4::TStrings lines = Lines();
    const auto options = ts4::TSQLOptions::FromBits(static_cast<std::uint64_t>(Below(64)));
    const auto type = static_cast<ts4::TFilterLinkType>(Below(4));
    const bool on = Chance(60);
    return Run({
        {Call("SetField", id, Named(field)), [&] { cond->SetField(field); }},
        {Call("SetOperator", id, Named(op)), [&] { cond->SetOperator(op); }},
        {Call("SetValue", id, k, text), [&] { cond->SetValue(k, text); }},
        {Call("SetValue", id, 3, text), [&] { cond->SetValue(3, text); }, 0},
        {Call("SetCaption", id, k, text), [&] { cond->SetCaption(k, text); }},
        {Call("SetHint", id, k, text), [&] { cond->SetHint(k, text); }},
        {Call("SetSubQuery", id, lines.CommaText()), [&] { cond->SetSubQuery(lines); }},
        {Call("SetSubQueryOptions", id, options.Bits()), [&] { cond->SetSubQueryOptions(options); }},
        {Call("SetEnabled", Label(row.RowID()), !row.Enabled()), [&] { row.SetEnabled(!row.Enabled()); }},
        {Call("SetHidden", Label(row.RowID()), !row.Hidden()), [&] { row.SetHidden(!row.Hidden()); }},
        {Call("SetLinkType", Label(bracket.RowID()), static_cast<int>(type)),
         [&] { bracket.SetLinkType(type); }},
        {Call("SetValueIsParam", id, k, on), [&] { cond->SetValueIsParam(k, on); }},
        {Call("SetValueIsParam", id, k, true), [&] { cond->SetValueIsParam(k, true); }},
    });
  }

  std::string ResultFields() {
    ts4::TRFieldList& fields = query_.QResult().ResultFields();
    ts4::TDSField& added = *AnyField();
    const auto sorting = static_cast<ts4::TSortingType>(Below(3));
    const TOp add = {Call("result fields Add", Named(&added), static_cast<int>(sorting)),
                     [&] { fields.Add(added, sorting); }};
    const int count = fields.Count();
    if (count == 0) return Run({add});
    const int from = Below(count), to = Below(count), drop = Chance(10) ? count : from;
    ts4::TResultField& field = *fields[from];
    const std::string text = Text();
    return Run({
        add,
        {"result fields SetJustSorting", [&] { fields.SetJustSorting(!fields.JustSorting()); }},
        {Call("result fields Delete", drop), [&] { fields.Delete(drop); },
         drop == count ? std::optional(0) : std::nullopt},
        {Call("result fields Move", from, to), [&] { fields.Move(from, to); }},
        {Call("result field SetAlias", from, text), [&] { field.SetAlias(text); }},
        {Call("result field SetSorting", from, static_cast<int>(sorting)),
         [&] { field.SetSorting(sorting); }},
    });
  }

  std::string Parameters() {
    ts4::TQueryResult& result = query_.QResult();
    if (result.GetParamCount() == 0) return RowData();
    ts4::TSQLParam* param = result.GetParam(Below(result.GetParamCount()));
    const std::string name = param->Name(), text = Text();
    return Run({
        {Call("param SetValue", name, text), [&] { param->SetValue(text); }},
        {Call("param SetCaption", name, text), [&] { param->SetCaption(text); }},
        {Call("param SetName", name, "P" + text), [&] { param->SetName("P" + text); }},
        {Call("DeleteParameter", name), [&] { result.DeleteParameter(param); }},
        {"ClearParams()", [&] { result.ClearParams(); }},
    });
  }

  std::string Settings() {
    const std::string text = Text();
    const auto options = ts4::TSQLOptions::FromBits(static_cast<std::uint64_t>(Below(64)));
    const auto syntax = static_cast<ts4::TSQLSyntax>(Below(3));
    const ts4::TStrings lines = Lines();
    return Run({
        {Call("SetTitle", "ttlAll", text), [&] { query_.SetTitle("ttlAll", text); }},
        {Call("SetSQLOptions", options.Bits()), [&] { query_.SetSQLOptions(options); }},
        {Call("SetSQLSyntax", static_cast<int>(syntax)), [&] { query_.SetSQLSyntax(syntax); }},
        {Call("SetQueryName", text), [&] { query_.SetQueryName(text); }},
        {Call("SetMainTableName", text), [&] { query_.SetMainTableName(text); }},
        {Call("SetDescription", lines.CommaText()), [&] { query_.SetDescription(lines); }},
        {"SetNonEmptyBrackets", [&] { query_.SetNonEmptyBrackets(!query_.NonEmptyBrackets()); }},
        {"SetActive", [&] { query_.SetActive(!query_.Active()); }},
    });
  }

  /// Operations on the whole query: a save and load, a batch, a clear.
  std::string Whole(bool batchAllowed) {
    const int choice = Below(10);
    if (choice < 4 || (choice < 9 && !batchAllowed))
      return Run({{"SaveToStrings, LoadFromStrings", [&] { SaveAndLoad(); }}});
    if (choice == 9) return Run({{"ClearQuery()", [&] { query_.ClearQuery(); }}});
    std::string what = "batch:";
    query_.BeginUpdate();
    for (int i = 1 + Below(5); i > 0; --i) what += " " + Operation(false) + ";";
    query_.EndUpdate();
    return what;
  }

  /// Loads the query's own text back. A date condition holding other text
  /// cannot be written (code 12); nothing is loaded then.
  void SaveAndLoad() {
    ts4::TStrings text;
    try {
      query_.SaveToStrings(text);
    } catch (const ts4::EWTessalyError& e) {
      if (e.ErrorCode() != ts4::qecInvalidDateValue) throw;
      return;
    }
    query_.LoadFromStrings(text);
  }

  ts4::TWQuery& query_;
  ts4::TWCustomDBStructure& db_;
  std::mt19937 random_;
};

// The mirror joins before the random query is built (its ClearQuery and
// edits flow through the protocol) for even seeds, after it for odd ones.
TEST(QueryMirror, FollowsEveryOperation) {
  for (std::uint32_t seed = 1; seed <= 40 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    ts4test::TSampleStructure sample;
    ts4::TWQuery query(&sample.db);
    std::optional<TMirror> mirror;
    if (seed % 2 == 0) mirror.emplace(query);
    ts4test::BuildRandomQuery(query, seed, 12);
    if (!mirror) mirror.emplace(query);
    ASSERT_EQ(mirror->Fault(), "") << "BuildRandomQuery";
    TDriver driver(query, seed);
    for (int step = 1; step <= 60 && !HasFailure(); ++step) {
      const std::string what = driver.Operation();
      ASSERT_EQ(mirror->Fault(), "") << "step " << step << ": " << what;
    }
  }
}

}  // namespace
