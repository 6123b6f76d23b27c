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
  Tracked* Add(List& list, const std::string& name) {
    return list.Add(std::make_unique<Tracked>(name, destroyed_));
  }
  static std::vector<std::string> Names(const List& list) {
    std::vector<std::string> names;
    for (Tracked* item : list) names.push_back(item->Name());
    return names;
  }
  int Destroyed(const std::string& name) { return destroyed_[name]; }

  std::map<std::string, int> destroyed_;
};

TEST_F(ObjectList, AddReturnsTheStoredItem) {
  List list;
  EXPECT_TRUE(list.Empty());
  EXPECT_EQ(list.First(), nullptr);
  EXPECT_EQ(list.Last(), nullptr);
  Tracked* a = Add(list, "a");
  Tracked* b = Add(list, "b");
  Tracked outsider("x", destroyed_);
  EXPECT_EQ(list.Count(), 2);
  EXPECT_EQ(list.Items(0), a);
  EXPECT_EQ(list[1], b);
  EXPECT_EQ(list.First(), a);
  EXPECT_EQ(list.Last(), b);
  EXPECT_EQ(list.IndexOf(b), 1);
  EXPECT_EQ(list.IndexOf(&outsider), -1);
  EXPECT_EQ(list.IndexOf(nullptr), -1);
}

TEST_F(ObjectList, DeleteClearAndDestructionFreeEachItemOnce) {
  {
    List list;
    for (const char* name : {"a", "b", "c", "d"}) Add(list, name);
    list.Delete(1);
    EXPECT_EQ(Names(list), (std::vector<std::string>{"a", "c", "d"}));
    EXPECT_EQ(destroyed_, (std::map<std::string, int>{{"b", 1}}));
    list.Clear();
    list.Clear();
    EXPECT_TRUE(list.Empty());
    EXPECT_EQ(destroyed_, (std::map<std::string, int>{{"a", 1}, {"b", 1}, {"c", 1}, {"d", 1}}));
    Add(list, "e");
  }
  EXPECT_EQ(Destroyed("e"), 1);
}

TEST_F(ObjectList, ExtractHandsOwnershipBack) {
  std::unique_ptr<Tracked> taken;
  {
    List list;
    Tracked* a = Add(list, "a");
    Add(list, "b");
    taken = list.Extract(0);
    EXPECT_EQ(taken.get(), a);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_EQ(list.IndexOf(a), -1);
    EXPECT_EQ(Destroyed("a"), 0);
  }
  EXPECT_EQ(Destroyed("a"), 0);  // the list no longer owned it
  EXPECT_EQ(Destroyed("b"), 1);
  taken.reset();
  EXPECT_EQ(Destroyed("a"), 1);
}

TEST_F(ObjectList, MoveConstructionTransfersOwnership) {
  List source;
  Tracked* a = Add(source, "a");
  {
    List target(std::move(source));
    EXPECT_EQ(target.Count(), 1);
    EXPECT_EQ(target.First(), a);
  }
  EXPECT_EQ(Destroyed("a"), 1);
}

TEST_F(ObjectList, InsertPlacesBeforeTheIndex) {
  List list;
  Add(list, "b");
  list.Insert(0, std::make_unique<Tracked>("a", destroyed_));
  Tracked* c = list.Insert(2, std::make_unique<Tracked>("c", destroyed_));  // at Count: appends
  EXPECT_EQ(list.Last(), c);
  list.Insert(1, std::make_unique<Tracked>("ab", destroyed_));
  EXPECT_EQ(Names(list), (std::vector<std::string>{"a", "ab", "b", "c"}));
}

TEST_F(ObjectList, MoveKeepsTheItems) {
  List list;
  for (const char* name : {"a", "b", "c", "d"}) Add(list, name);
  Tracked* a = list[0];
  list.Move(0, 2);
  EXPECT_EQ(Names(list), (std::vector<std::string>{"b", "c", "a", "d"}));
  EXPECT_EQ(list[2], a);
  list.Move(3, 0);
  EXPECT_EQ(Names(list), (std::vector<std::string>{"d", "b", "c", "a"}));
  list.Move(2, 2);
  EXPECT_EQ(Names(list), (std::vector<std::string>{"d", "b", "c", "a"}));
  for (const char* name : {"a", "b", "c", "d"}) EXPECT_EQ(Destroyed(name), 0);
}

TEST_F(ObjectList, BadIndicesRaiseListIndexError) {
  List list;
  Add(list, "a");
  ExpectIndexError([&] { (void)list.Items(1); }, 1);
  ExpectIndexError([&] { (void)list[-1]; }, -1);
  ExpectIndexError([&] { list.Delete(1); }, 1);
  ExpectIndexError([&] { (void)list.Extract(3); }, 3);
  ExpectIndexError([&] { list.Move(0, 1); }, 1);
  ExpectIndexError([&] { list.Move(-2, 0); }, -2);
  // A refused insert must not leak the item it was given.
  ExpectIndexError([&] { list.Insert(2, std::make_unique<Tracked>("refused", destroyed_)); }, 2);
  EXPECT_EQ(Destroyed("refused"), 1);
  EXPECT_EQ(Names(list), std::vector<std::string>{"a"});
  EXPECT_FALSE(list.ValidIndex(1));
  EXPECT_FALSE(list.ValidIndex(-1));
  EXPECT_TRUE(list.ValidIndex(0));
}

}  // namespace
