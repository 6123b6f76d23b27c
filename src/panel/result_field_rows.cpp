#include "panel/result_field_rows_p.h"

#include <QTreeWidget>
#include <array>

#include "panel/qt_strings_p.h"
#include "query/query.h"
#include "query/rfield_list.h"

namespace ts4::detail {

QString Title(const TWQuery& query, std::string_view name) {
  return ToQ(query.GetTitle(name));
}

QString SortingTitle(const TWQuery& query, TSortingType sorting) {
  static constexpr std::array<std::string_view, 3> names = {"ttlNotSorted", "ttlAscending", "ttlDescending"};
  return Title(query, names[static_cast<std::size_t>(sorting)]);
}

void SetResultFieldHeaders(QTreeWidget& tree, const TWQuery& query) {
  QStringList headers = {Title(query, "ttlFieldNmColName"), Title(query, "ttlFieldExprColName")};
  if (tree.columnCount() > rfcSorting) headers.append(Title(query, "ttlSortingColName"));
  tree.setHeaderLabels(headers);
}

void ShowResultFields(QTreeWidget& tree, const TRFieldList& fields, const TWQuery& query) {
  while (tree.topLevelItemCount() > fields.Count())
    delete tree.takeTopLevelItem(tree.topLevelItemCount() - 1);
  while (tree.topLevelItemCount() < fields.Count()) tree.addTopLevelItem(new QTreeWidgetItem);
  const bool sorting = tree.columnCount() > rfcSorting;
  for (int i = 0; i < fields.Count(); ++i) {
    const TResultField& field = *fields[i];
    QTreeWidgetItem& item = *tree.topLevelItem(i);
    item.setText(rfcCaption, ToQ(fields.GetCaption(i)));
    item.setText(rfcExpression, ToQ(field.GetExpression()));
    if (!sorting) continue;
    item.setFlags(item.flags() | Qt::ItemIsEditable);  // the delegate edits only the sorting
    item.setText(rfcSorting, SortingTitle(query, field.Sorting()));
    item.setData(rfcSorting, Qt::UserRole, static_cast<int>(field.Sorting()));
  }
}

}  // namespace ts4::detail
