#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <utility>
#include <vector>

namespace ts4 {
class TQueryResult;
class TRFieldList;
}  // namespace ts4

namespace ts4demo {

/// A parameter's name as the statement writes it (":Param1") and the value bound to it.
using TBoundValues = std::vector<std::pair<QString, QVariant>>;

/// The rows a statement returned: the first ones as text, and how many there were.
struct TQueryRows {
  QStringList Columns;
  std::vector<QStringList> Rows;
  qsizetype Count = 0;
};

/// The value of each of the query's parameters, of the type its field
/// holds (numbers as numbers, dates as dates), with the text around it that
/// the condition needs ("%" for "contains").
[[nodiscard]] TBoundValues ParameterValues(const ts4::TQueryResult& result);

/// Runs the statement on the connection and keeps the first `keep` rows.
/// Raises ts4::EWDBInfoError with the driver's message when it fails.
[[nodiscard]] TQueryRows RunStatement(const QString& connection, const QString& sql,
                                      const TBoundValues& values, qsizetype keep);

/// When the columns are the result fields, heads them by their captions.
void HeadByCaptions(TQueryRows& rows, const ts4::TRFieldList& fields);

/// The rows as a table of plain text: a header, the rows, and the count.
[[nodiscard]] QString FormatRows(const TQueryRows& rows);

}  // namespace ts4demo
