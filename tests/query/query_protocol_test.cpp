// What a query tells its observers and events, in order, for each kind of change.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "sample_structure.h"
#include "test_support.h"

namespace {

using ts4test::TSampleStructure;

std::string Name(const ts4::TFilterBracket& bracket) {
  return bracket.Parent() == nullptr ? "root" : bracket.RowID();
}

/// The names of the members of an aspect set, joined by "+".
template <typename Set, std::size_t N>
std::string Names(Set set, const std::array<const char*, N>& names) {
  std::string text;
  for (std::size_t i = 0; i < N; ++i)
    if (set.Bits() & (std::uint64_t{1} << i)) text += (text.empty() ? "" : "+") + std::string(names[i]);
  return text;
}

/// Writes down every notification and event as a line.
struct TRecorder : ts4::TQueryObserver {
  explicit TRecorder(ts4::TWQuery& query) {
    query.AddObserver(this);
    query.OnChange = [this](ts4::TWQuery&) { log.push_back("OnChange"); };
    query.OnParamListChange = [this](ts4::TWQuery&) { log.push_back("OnParamListChange"); };
    query.OnActive = [this](ts4::TWQuery&) { log.push_back("OnActive"); };
  }
  void QueryAboutToBeReset() override { log.push_back("about to reset"); }
  void QueryReset() override { log.push_back("reset"); }
  void RowsAboutToBeInserted(const ts4::TFilterBracket& b, int first, int last) override {
    Add("about to insert", b, first, last);
  }
  void RowsInserted(const ts4::TFilterBracket& b, int first, int last) override {
    Add("inserted", b, first, last);
  }
  void RowsAboutToBeRemoved(const ts4::TFilterBracket& b, int first, int last) override {
    Add("about to remove", b, first, last);
  }
  void RowsRemoved(const ts4::TFilterBracket& b, int first, int last) override {
    Add("removed", b, first, last);
  }
  void RowsAboutToBeMoved(const ts4::TFilterBracket& from, int first, int last, const ts4::TFilterBracket& to,
                          int index) override {
    Add("about to move", from, first, last, " to " + Name(to) + " " + std::to_string(index));
  }
  void RowsMoved(const ts4::TFilterBracket& from, int first, int last, const ts4::TFilterBracket& to,
                 int index) override {
    Add("moved", from, first, last, " to " + Name(to) + " " + std::to_string(index));
  }
  void RowsRenumbered(const ts4::TFilterBracket& b, int first) override {
    log.push_back("renumbered " + Name(b) + " " + std::to_string(first));
  }
  void RowChanged(const ts4::TFilterRow& row, ts4::TRowAspects aspects) override {
    static constexpr std::array<const char*, 9> names = {"field",  "operator", "values",  "captions", "hints",
                                                         "params", "link",     "enabled", "hidden"};
    log.push_back("row " + row.RowID() + " " + Names(aspects, names));
  }
  void QueryChanged(ts4::TQueryAspects aspects) override {
    static constexpr std::array<const char*, 6> names = {"captions",   "settings",  "result fields",
                                                         "parameters", "structure", "active"};
    log.push_back("query " + Names(aspects, names));
  }
  void CloseEditors() override { log.push_back("close editors"); }

  void Add(const char* what, const ts4::TFilterBracket& b, int first, int last,
           const std::string& more = {}) {
    log.push_back(std::string(what) + " " + Name(b) + " " + std::to_string(first) + "-" +
                  std::to_string(last) + more);
  }
  std::vector<std::string> log;
};

/// root (all): 1. CITY = Riga; 2. any: [2.1. QTY = :Param1 (5); 2.2. NAME contains x]; 3. TOTAL = 5;
/// one result field.
struct TSample {
  TSample() {
    s.Cond(query.Root(), "CITY", "Equal", "Riga");
    any = query.Root().AddBracket();
    any->SetLinkType(ts4::fltAny);
    qty = &s.Cond(*any, "QTY", "Equal", "5");
    qty->SetValue1IsParam(true);
    qty->Param1()->SetValue("5");
    s.Cond(*any, "NAME", "Contains", "x");
    s.Cond(query.Root(), "TOTAL", "Equal", "5");
    query.QResult().ResultFields().Add(s.Field("NAME"));
  }
  ts4::TFilterCond& Cond(std::string_view id) { return static_cast<ts4::TFilterCond&>(*query.RowByID(id)); }

  TSampleStructure s;
  ts4::TWQuery query{&s.db};
  ts4::TFilterBracket* any = nullptr;
  ts4::TFilterCond* qty = nullptr;
};

struct TCase {
  const char* name;
  std::function<void(TSample&)> change;
  std::vector<std::string> expected;
};

TEST(ChangeProtocol, EachChangeIsToldInOrder) {
  const std::vector<std::string> paramsChanged = {"query parameters", "OnParamListChange", "OnChange"};
  const TCase cases[] = {
      {"insert at the front",
       [](TSample& t) { t.query.Root().InsertCond(0); },
       {"about to insert root 0-0", "inserted root 0-0", "renumbered root 1", "OnChange"}},
      {"insert in the middle",
       [](TSample& t) { t.any->InsertBracket(1); },
       {"about to insert 2. 1-1", "inserted 2. 1-1", "renumbered 2. 2", "OnChange"}},
      {"insert at the end",
       [](TSample& t) { t.query.Root().AddCond(); },
       {"about to insert root 3-3", "inserted root 3-3", "OnChange"}},
      {"delete a row with a parameter",
       [](TSample& t) { t.any->DeleteRow(0); },
       {"about to remove 2. 0-0", "removed 2. 0-0", "renumbered 2. 0", "query parameters",
        "OnParamListChange", "OnChange"}},
      {"delete the last row of a bracket takes the bracket",
       [](TSample& t) {
         t.any->DeleteRow(1);
         t.any->DeleteRow(0);
       },
       {"about to remove 2. 1-1", "removed 2. 1-1", "OnChange",  // the set-up's own deletion
        "about to remove root 1-1", "removed root 1-1", "renumbered root 1", "query parameters",
        "OnParamListChange", "OnChange"}},
      {"disable every row of a bracket",
       [](TSample& t) {
         t.Cond("2.2.").SetEnabled(false);
         t.qty->SetEnabled(false);
       },
       {"row 2.2. enabled", "OnChange", "row 2.1. enabled", "row 2. enabled", "OnChange"}},
      {"move between brackets",
       [](TSample& t) { t.query.Root().MoveRow(0, *t.any, 2); },
       {"about to move root 0-0 to 2. 2", "moved root 0-0 to 1. 2", "renumbered root 0", "renumbered 1. 2",
        "OnChange"}},
      {"move within a bracket",
       [](TSample& t) { t.query.Root().MoveRow(2, t.query.Root(), 0); },
       {"about to move root 2-2 to root 0", "moved root 2-2 to root 0", "renumbered root 0", "OnChange"}},
      {"move the last row out of a bracket",
       [](TSample& t) {
         t.any->DeleteRow(1);
         t.any->MoveRow(0, t.query.Root(), 0);
       },
       {"about to remove 2. 1-1", "removed 2. 1-1", "OnChange", "about to move 2. 0-0 to root 0",
        "moved 3. 0-0 to root 0", "renumbered root 0", "about to remove root 2-2", "removed root 2-2",
        "renumbered root 2", "OnChange"}},
      {"clone a bracket with a parameter",
       [](TSample& t) { t.query.Root().InsertClone(3, *t.any); },
       {"about to insert root 3-3", "inserted root 3-3", "query parameters", "OnParamListChange",
        "OnChange"}},
      {"a field of the same type keeps operator and values",
       [](TSample& t) { t.Cond("2.2.").SetField(&t.s.Field("CITY")); },
       {"row 2.2. field", "OnChange"}},
      {"a field of the same type keeps the parameter",
       [](TSample& t) { t.qty->SetField(&t.s.Field("CUST_NO")); },
       {"row 2.1. field", "OnChange"}},
      {"a field that does not offer the operator drops it",
       [](TSample& t) { t.Cond("2.2.").SetField(&t.s.Field("QTY")); },
       {"row 2.2. field+operator+values", "OnChange"}},
      {"a field of another type drops the values and the parameter",
       [](TSample& t) { t.qty->SetField(&t.s.Field("CITY")); },
       {"row 2.1. field+values+captions+params", "query parameters", "OnParamListChange", "OnChange"}},
      {"bind a parameter",
       [](TSample& t) { t.Cond("1.").SetValue1IsParam(true); },
       {"row 1. captions+params", "query parameters", "OnParamListChange", "OnChange"}},
      {"unbind a parameter",
       [](TSample& t) { t.qty->SetValue1IsParam(false); },
       {"row 2.1. values+captions+params", "query parameters", "OnParamListChange", "OnChange"}},
      {"delete a bound parameter from the list",
       [](TSample& t) { t.query.QResult().DeleteParameter(t.qty->Param1()); },
       {"row 2.1. values+captions+params", "query parameters", "OnParamListChange", "OnChange"}},
      {"a parameter's value",
       [](TSample& t) { t.qty->Param1()->SetValue("6"); },
       {"query parameters", "OnChange"}},
      {"values, captions and hints",
       [](TSample& t) {
         t.Cond("1.").SetValue(1, "Oslo");
         t.Cond("1.").SetCaption(1, "Oslo");
         t.Cond("1.").SetHint(1, "a city");
         t.Cond("1.").SetValue(1, "Oslo");  // the same again: nothing
       },
       {"row 1. values", "OnChange", "row 1. captions", "OnChange", "row 1. hints"}},
      {"link type and hidden",
       [](TSample& t) {
         t.any->SetLinkType(ts4::fltNone);
         t.any->SetHidden(true);
       },
       {"row 2. link", "OnChange", "row 2. hidden"}},
      {"an update of values tells each row once",
       [](TSample& t) {
         t.query.BeginUpdate();
         t.Cond("3.").SetValue(1, "7");
         t.Cond("1.").SetValue(1, "Oslo");
         t.Cond("3.").SetEnabled(false);
         t.query.EndUpdate();
       },
       {"row 3. values+enabled", "row 1. values", "OnChange"}},
      {"an update that adds rows is one reset",
       [](TSample& t) {
         t.query.BeginUpdate();
         t.Cond("1.").SetValue(1, "Oslo");
         t.query.Root().AddCond()->SetValue(1, "x");
         t.query.SetQueryName("q");
         t.query.EndUpdate();
       },
       {"about to reset", "reset", "query settings", "OnChange"}},
      {"clear",
       [](TSample& t) { t.query.ClearQuery(); },
       {"about to reset", "reset", "query result fields+parameters", "OnParamListChange", "OnChange"}},
      {"load",
       [](TSample& t) {
         ts4::TStrings text;
         t.query.SaveToStrings(text);
         t.query.LoadFromStrings(text);
       },
       // The captions travel with the text, so they are read again.
       {"about to reset", "reset", "query captions+result fields+parameters", "OnParamListChange",
        "OnChange"}},
      {"parse",
       [](TSample& t) { t.query.ParseSQL("SELECT C.NAME FROM CUSTOMER C WHERE C.CITY = 'Riga'"); },
       {"about to reset", "reset", "query settings+result fields+parameters", "OnParamListChange",
        "OnChange"}},
      {"captions",
       [](TSample& t) {
         t.query.SetTitle("ttlAll", "every");
         t.query.SetTitle("ttlAll", "every");
         t.query.SetTitle("ttlNoSuchCaption", "x");
       },
       {"query captions", "OnChange"}},
      {"settings",
       [](TSample& t) {
         t.query.SetSQLOptions({ts4::soBracketJoins});
         t.query.SetSQLSyntax(ts4::ssOracle);
         t.query.SetNonEmptyBrackets(false);
       },
       {"query settings", "OnChange", "query settings", "OnChange", "query settings", "OnChange"}},
      {"result fields",
       [](TSample& t) {
         ts4::TRFieldList& list = t.query.QResult().ResultFields();
         list.Add(t.s.Field("CITY"));
         list.Move(1, 0);
         list[0]->SetSorting(ts4::stDescending);
         list.Delete(1);
       },
       {"query result fields", "OnChange", "query result fields", "OnChange", "query result fields",
        "OnChange", "query result fields", "OnChange"}},
      {"active",
       [](TSample& t) {
         t.query.SetActive(false);
         t.query.SetActive(false);
       },
       {"query active", "OnActive"}},
      {"the structure renames a field",
       [](TSample& t) { t.s.Field("CITY").SetDisplayName("Town"); },
       {"query structure"}},
      {"the structure drops a field in use",
       [](TSample& t) { t.s.db.DelField(t.s.db.IndexOfField(&t.s.Field("NAME"))); },
       {"row 2.2. field+operator", "query result fields", "OnChange", "query structure"}},
      {"another structure",
       [](TSample& t) {
         static TSampleStructure other;
         t.query.SetDbStruct(&other.db);
       },
       {"row 1. field+operator", "row 2.1. field+operator", "row 2.2. field+operator",
        "row 3. field+operator", "query result fields+structure", "OnChange"}},
      {"renumbering by hand",
       [](TSample& t) {
         t.query.EnumerateRows();
         t.query.EnumerateRows(*t.any, 2);
       },
       {"renumbered root 0", "renumbered root 1"}},
      {"a build closes the editors", [](TSample& t) { (void)t.query.GetQueryText(); }, {"close editors"}},
  };
  for (const TCase& c : cases) {
    SCOPED_TRACE(c.name);
    TSample sample;
    TRecorder recorder(sample.query);
    c.change(sample);
    EXPECT_EQ(recorder.log, c.expected);
    sample.query.RemoveObserver(&recorder);
  }
}

}  // namespace
