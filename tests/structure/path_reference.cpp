#include "structure/path_reference.h"

#include <algorithm>

#include "foundation/error.h"
#include "foundation/messages.h"
#include "structure/structure.h"

namespace ts4test {

using Chain = std::vector<const ts4::TDSTable*>;

namespace {

// One expansion step: true when the end of `chain` is linked to `target`;
// otherwise every extension by a table not yet in the chain goes to `next`.
bool CheckPath(const ts4::TDSTable* target, const Chain& chain, std::vector<Chain>& next) {
  const ts4::TDSTable* end = chain.back();
  for (int i = 0; i < end->LinkCount(); ++i) {
    const ts4::TDSLink* link = end->Links(i);
    const ts4::TDSTable* other = link->Table1() == end ? link->Table2() : link->Table1();
    if (other == target) return true;
    if (std::find(chain.begin(), chain.end(), other) == chain.end()) {
      Chain longer = chain;
      longer.push_back(other);
      next.push_back(std::move(longer));
    }
  }
  return false;
}

}  // namespace

std::vector<int> ReferencePath(const ts4::TWCustomDBStructure& structure, std::string_view alias1,
                               std::string_view alias2) {
  const ts4::TDSTable* t1 = structure.TableByName(ts4::tsAlias, alias1);
  if (t1 == nullptr) throw ts4::EWDBStructError(ts4::secNoSuchTable, ts4::msg::NoSuchTable, alias1);
  const ts4::TDSTable* t2 = structure.TableByName(ts4::tsAlias, alias2);
  if (t2 == nullptr) throw ts4::EWDBStructError(ts4::secNoSuchTable, ts4::msg::NoSuchTable, alias2);

  std::vector<Chain> current{Chain{t1}};
  while (true) {
    std::vector<Chain> next;
    for (Chain& chain : current) {
      if (CheckPath(t2, chain, next)) {
        chain.push_back(t2);
        std::vector<int> positions;
        for (const ts4::TDSTable* table : chain) positions.push_back(table->Index());
        return positions;
      }
    }
    if (next.empty()) throw ts4::EWDBStructError(ts4::secNoPath, std::string(ts4::msg::NoPath));
    current = std::move(next);
  }
}

}  // namespace ts4test
