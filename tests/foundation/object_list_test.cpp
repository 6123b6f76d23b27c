#include "foundation/object_list.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "test_support.h"

namespace {

using ts4test::ExpectIndexError;
using Names = std::vector<std::string>;

// Counts how often each item was destroyed, so that every test can prove an
// item is freed exactly once and only when it should be.
class Tracked {
 public:
  Tracked(std::string name, std::map<std::string, int>& destroyed)
      : name_(std::move(name)), destroyed_(destroyed) {}
  ~Tracked() { ++destroyed_[name_]; }
  Tracked(const Tracked&) = delete;
  Tracked& operator=(const Tracked&) = delete;

  [[nodiscard]] const std::string& Name() const { return name_; }

 private:
  std::string name_;
  std::map<std::string, int>& destroyed_;
};

using List = ts4::TWObjectList<Tracked>;

class ObjectList : public ::testing::Test {
 protected:
  std::unique_ptr<Tracked> Make(const std::string& name) {
    return std::make_unique<Tracked>(name, destroyed_);
  }
  void Fill(List& list, const Names& names) {
    for (const std::string& name : names) list.Add(Make(name));
  }
  static Names NamesOf(const List& list) {
    Names names;
    for (Tracked* item : list) names.push_back(item->Name());
    return names;
  }

  std::map<std::string, int> destroyed_;
};

TEST_F(ObjectList, EditsKeepOrderAndFreeEachItemOnce) {
  std::unique_ptr<Tracked> taken;
  {
    List list;
    EXPECT_EQ(list.First(), nullptr);
    Fill(list, {"b", "d"});
    list.Insert(0, Make("a"));
    Tracked* e = list.Insert(3, Make("e"));  // at Count: appends
    list.Insert(2, Make("c"));
    EXPECT_EQ(NamesOf(list), (Names{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(list.Last(), e);
    EXPECT_EQ(list.IndexOf(e), 4);
    EXPECT_EQ(list.IndexOf(nullptr), -1);

    list.Move(0, 2);
    EXPECT_EQ(NamesOf(list), (Names{"b", "c", "a", "d", "e"}));
    list.Move(4, 0);
    EXPECT_EQ(NamesOf(list), (Names{"e", "b", "c", "a", "d"}));
    EXPECT_TRUE(destroyed_.empty());

    list.Delete(1);
    EXPECT_EQ(destroyed_, (std::map<std::string, int>{{"b", 1}}));
    taken = list.Extract(0);  // hands ownership back
    EXPECT_EQ(taken->Name(), "e");
    EXPECT_EQ(NamesOf(list), (Names{"c", "a", "d"}));

    List moved(std::move(list));
    EXPECT_EQ(NamesOf(moved), (Names{"c", "a", "d"}));
    moved.Clear();
    moved.Clear();
    EXPECT_TRUE(moved.Empty());
    EXPECT_EQ(destroyed_, (std::map<std::string, int>{{"a", 1}, {"b", 1}, {"c", 1}, {"d", 1}}));
    Fill(moved, {"f"});
  }
  EXPECT_EQ(destroyed_["f"], 1);
  EXPECT_EQ(destroyed_["e"], 0) << "the list no longer owned it";
  taken.reset();
  EXPECT_EQ(destroyed_["e"], 1);
}

TEST_F(ObjectList, BadIndicesRaiseListIndexError) {
  List list;
  Fill(list, {"a"});
  ExpectIndexError([&] { (void)list.Items(1); }, 1);
  ExpectIndexError([&] { (void)list[-1]; }, -1);
  ExpectIndexError([&] { list.Delete(1); }, 1);
  ExpectIndexError([&] { (void)list.Extract(3); }, 3);
  ExpectIndexError([&] { list.Move(0, 1); }, 1);
  ExpectIndexError([&] { list.Move(-2, 0); }, -2);
  // A refused insert must not leak the item it was given.
  ExpectIndexError([&] { list.Insert(2, Make("refused")); }, 2);
  EXPECT_EQ(destroyed_["refused"], 1);
  EXPECT_EQ(NamesOf(list), Names{"a"});
  EXPECT_TRUE(list.ValidIndex(0));
  EXPECT_FALSE(list.ValidIndex(1));
}

}  // namespace
