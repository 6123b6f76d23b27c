#pragma once

#include <QString>
#include <string_view>

#include "query/query_types.h"

class QTreeWidget;

namespace ts4 {
class TRFieldList;
class TWQuery;
}  // namespace ts4

namespace ts4::detail {

/// Columns of the lists of result fields; the panel's has the third.
enum TResultFieldColumn : int { rfcCaption, rfcExpression, rfcSorting };

/// The query's caption of that name.
[[nodiscard]] QString Title(const TWQuery& query, std::string_view name);
/// The caption of a sorting type ("Not Sorted", "Ascending", "Descending").
[[nodiscard]] QString SortingTitle(const TWQuery& query, TSortingType sorting);
/// Headers the columns the tree has with the query's captions.
void SetResultFieldHeaders(QTreeWidget& tree, const TWQuery& query);
/// Makes the tree's top-level items show the fields, one per field, reusing
/// the items it has so that selection and open editors survive: caption,
/// expression and, when the tree has the column, sorting (its ordinal as the
/// item's data).
void ShowResultFields(QTreeWidget& tree, const TRFieldList& fields, const TWQuery& query);

}  // namespace ts4::detail
