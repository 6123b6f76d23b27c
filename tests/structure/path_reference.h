#pragma once

#include <string_view>
#include <vector>

namespace ts4 {
class TWCustomDBStructure;
}

namespace ts4test {

/// The chain search exactly as documented: every chain that does not revisit
/// its own tables is expanded level by level, in link order, until a chain
/// whose end is linked to the target turns up. Exponential; kept as the
/// reference the production search is compared with. Returns the tables'
/// positions and raises the same errors as GetPath.
std::vector<int> ReferencePath(const ts4::TWCustomDBStructure& structure, std::string_view alias1,
                               std::string_view alias2);

}  // namespace ts4test
