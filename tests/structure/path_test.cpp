#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "foundation/error.h"
#include "foundation/string_utils.h"
#include "structure/path_reference.h"
#include "structure/structure.h"
#include "test_support.h"

namespace {

using ts4::TWDBStructure;
using ts4test::ExpectError;

std::vector<std::string> PathAliases(const ts4::TDSPath& path) {
  std::vector<std::string> aliases;
  for (int i = 0; i < path.TableCount(); ++i) aliases.push_back(path.Tables(i)->Alias());
  return aliases;
}

void Link(TWDBStructure& db, const char* a, const char* b) {
  db.AddLink(*db.TableByName(ts4::tsAlias, a), *db.TableByName(ts4::tsAlias, b), "Id", "Id");
}

TWDBStructure& WithTables(TWDBStructure& db, std::initializer_list<const char*> aliases) {
  for (const char* alias : aliases) db.AddTable(std::string("t_") + alias, alias);
  return db;
}

TEST(GetPath, ResultIsTheStructuresOwnPathOverwrittenByTheNextCall) {
  TWDBStructure db;
  WithTables(db, {"A", "B", "C"});
  Link(db, "A", "B");
  Link(db, "B", "C");
  const ts4::TDSPath& first = db.GetPath("A", "C");
  ts4::TDSPath copy(db);
  copy.Assign(first);
  const ts4::TDSPath& second = db.GetPath("B", "C");
  EXPECT_EQ(&first, &second);
  EXPECT_EQ(PathAliases(copy), (std::vector<std::string>{"A", "B", "C"}));
  EXPECT_EQ(PathAliases(second), (std::vector<std::string>{"B", "C"}));
}

TEST(TDSPath, EntriesByPositionAndIndex) {
  TWDBStructure db;
  WithTables(db, {"A", "B", "C"});
  ts4::TDSPath path(db);
  path.AddTable(2);
  path.AddTable(0);
  path.AddTable(1);
  EXPECT_EQ(path.StartPoint()->Alias(), "C");
  EXPECT_EQ(path.EndPoint()->Alias(), "B");
  EXPECT_EQ(path.TableByIndex(0)->Alias(), "A");
  path.DelTable(1);
  EXPECT_EQ(path.TableByIndex(0), nullptr);
  EXPECT_EQ(PathAliases(path), (std::vector<std::string>{"C", "B"}));
  ExpectError<ts4::EWDBStructError>([&] { path.AddTable(7); }, 1, "Invalid table index 7");
}

// Builds a random structure: some aliases repeat, some links join a table to
// itself or repeat, and the tables often fall into unconnected groups.
void RandomStructure(TWDBStructure& db, std::mt19937& rng) {
  std::uniform_int_distribution<int> tableCount(1, 8);
  const int tables = tableCount(rng);
  for (int i = 0; i < tables; ++i) {
    bool repeat = i > 0 && rng() % 10 == 0;
    std::string alias = repeat ? db.Tables(static_cast<int>(rng() % i))->Alias() : "T" + std::to_string(i);
    if (rng() % 4 == 0) alias = ts4::LowerCase(alias);
    db.AddTable("table" + std::to_string(i), alias);
  }
  const int links = static_cast<int>(rng() % 14);
  for (int i = 0; i < links; ++i) {
    auto* a = db.Tables(static_cast<int>(rng() % tables));
    auto* b = rng() % 8 == 0 ? a : db.Tables(static_cast<int>(rng() % tables));
    db.AddLink(*a, *b, "Id", "Id");
  }
}

TEST(GetPath, AgreesWithTheLiteralChainSearchOnRandomStructures) {
  std::mt19937 rng(20261121);
  int compared = 0;
  int found = 0;
  for (int round = 0; round < 3000; ++round) {
    TWDBStructure db;
    RandomStructure(db, rng);
    std::vector<std::string> aliases;
    for (int i = 0; i < db.TableCount(); ++i) aliases.push_back(db.Tables(i)->Alias());
    aliases.push_back("missing");
    for (const std::string& a : aliases) {
      for (const std::string& b : aliases) {
        std::vector<int> expected;
        int expectedCode = 0;
        try {
          expected = ts4test::ReferencePath(db, a, b);
        } catch (const ts4::EWDBStructError& e) {
          expectedCode = e.ErrorCode();
        }
        std::vector<int> actual;
        int actualCode = 0;
        try {
          const ts4::TDSPath& path = db.GetPath(a, b);
          for (int i = 0; i < path.TableCount(); ++i) actual.push_back(path.Tables(i)->Index());
        } catch (const ts4::EWDBStructError& e) {
          actualCode = e.ErrorCode();
        }
        ASSERT_EQ(actualCode, expectedCode) << "round " << round << " from " << a << " to " << b;
        ASSERT_EQ(actual, expected) << "round " << round << " from " << a << " to " << b;
        ++compared;
        if (expectedCode == 0) ++found;
      }
    }
  }
  // The random structures must exercise both outcomes substantially.
  EXPECT_GT(compared, 50000);
  EXPECT_GT(found, compared / 4);
  EXPECT_LT(found, compared);
}

}  // namespace
