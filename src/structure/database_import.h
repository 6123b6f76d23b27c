#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

namespace ts4 {

class TWCustomDBStructure;
class TWDBInfo;

/// A caption for a table or column name: the words of the name, split at
/// "_", blanks, "-", "." and where a lower-case letter is followed by a
/// capital, each with a capital first letter and the rest in lower case
/// ("CUST_NO" gives "Cust No", "orderDate" gives "Order Date").
[[nodiscard]] std::string CaptionFromName(std::string_view name);

/// A short alias for a table: the initials of the name's words in capitals
/// ("ORDER_ITEMS" gives "OI"), followed by the lowest number from 2 on that
/// makes it unused when it is taken or is an SQL word ("OR" for
/// "ORDER_REQUESTS" gives "OR2"). Case is ignored when comparing with `taken`,
/// which holds the aliases in capitals.
[[nodiscard]] std::string AliasFromName(std::string_view name, const std::unordered_set<std::string>& taken);

/// Fills a structure that has no tables from its database: every table of
/// the provider with a caption and an alias, every column as a data field
/// with a caption, its type, its size and the operators that apply to that
/// type (in a field group named after its table when there are several
/// tables), and an inner link for each foreign key. A foreign key of a table to itself
/// and a second one between the same two tables make no link: a join of a
/// table with itself needs a second alias, and two links between the same
/// tables would make the path between them ambiguous. Everything is read
/// from the provider before the structure changes, so an error of the
/// provider leaves the structure as it was.
void AddDatabaseTables(TWCustomDBStructure& structure, TWDBInfo& info);

}  // namespace ts4
