#include "query_runner.h"

#include <QDate>
#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTime>
#include <algorithm>

#include "foundation/error.h"
#include "foundation/field_types.h"
#include "query/query_result.h"
#include "query/rfield_list.h"

namespace ts4demo {
namespace {

// The value typed for a parameter, as the type of its field. Text that is
// not of that type goes as text: the database says what is wrong with it.
QVariant TypedValue(ts4::TFieldType type, const QString& text) {
  bool ok = false;
  switch (type) {
    case ts4::ftSmallint:
    case ts4::ftInteger:
    case ts4::ftWord:
    case ts4::ftAutoInc:
    case ts4::ftLargeint: {
      const qlonglong number = text.toLongLong(&ok);
      if (ok) return number;
      break;
    }
    case ts4::ftFloat:
    case ts4::ftCurrency:
    case ts4::ftBCD: {
      const double number = text.toDouble(&ok);
      if (ok) return number;
      break;
    }
    case ts4::ftDate:
      if (const QDate date = QDate::fromString(text, Qt::ISODate); date.isValid()) return date;
      break;
    case ts4::ftTime:
      if (const QTime time = QTime::fromString(text, Qt::ISODate); time.isValid()) return time;
      break;
    case ts4::ftDateTime:
      if (const QDateTime at = QDateTime::fromString(text, Qt::ISODate); at.isValid()) return at;
      break;
    default: break;
  }
  return text;
}

// Numbers with the digits a double holds, so that a sum of prices reads
// 95161.91 rather than 95161.90999999999.
QString CellText(const QVariant& value) {
  if (value.isNull()) return QStringLiteral("NULL");
  if (value.typeId() == QMetaType::Double) return QString::number(value.toDouble(), 'g', 15);
  return value.toString();
}

}  // namespace

TBoundValues ParameterValues(const ts4::TQueryResult& result) {
  TBoundValues values;
  for (int i = 0; i < result.GetParamCount(); ++i) {
    const ts4::TSQLParam& param = *result.GetParam(i);
    const QString full = QString::fromStdString(param.GetFullValue());
    // A pattern around the value ("%mit%") makes it text, whatever the field holds.
    const bool pattern = param.VFormat() != "@v";
    values.emplace_back(QLatin1Char(':') + QString::fromStdString(param.Name()),
                        pattern ? QVariant(full) : TypedValue(param.DataType(), full));
  }
  return values;
}

TQueryRows RunStatement(const QString& connection, const QString& sql, const TBoundValues& values,
                        qsizetype keep) {
  QSqlQuery query(QSqlDatabase::database(connection, false));
  query.setForwardOnly(true);
  const auto fail = [&query] {
    throw ts4::EWDBInfoError(ts4::gecGeneral, query.lastError().text().toStdString());
  };
  if (!query.prepare(sql)) fail();
  for (const auto& [name, value] : values) query.bindValue(name, value);
  if (!query.exec()) fail();

  TQueryRows rows;
  const QSqlRecord record = query.record();
  for (int i = 0; i < record.count(); ++i) rows.Columns << record.fieldName(i);
  while (query.next()) {
    if (std::cmp_less(rows.Rows.size(), keep)) {
      QStringList row;
      for (int i = 0; i < record.count(); ++i) row << CellText(query.value(i));
      rows.Rows.push_back(std::move(row));
    }
    ++rows.Count;
  }
  if (query.lastError().isValid()) fail();
  return rows;
}

void HeadByCaptions(TQueryRows& rows, const ts4::TRFieldList& fields) {
  if (fields.JustSorting() || rows.Columns.size() != fields.Count()) return;
  for (int i = 0; i < fields.Count(); ++i) rows.Columns[i] = QString::fromStdString(fields.GetCaption(i));
}

QString FormatRows(const TQueryRows& rows) {
  std::vector<qsizetype> widths;
  for (const QString& column : rows.Columns) widths.push_back(column.size());
  for (const QStringList& row : rows.Rows)
    for (qsizetype i = 0; i < row.size() && i < qsizetype(widths.size()); ++i)
      widths[std::size_t(i)] = std::max(widths[std::size_t(i)], row[i].size());
  const auto line = [&widths](const QStringList& cells) {
    QString text;
    for (qsizetype i = 0; i < cells.size(); ++i)
      text += (i > 0 ? QStringLiteral("  ") : QString()) + cells[i].leftJustified(widths[std::size_t(i)]);
    return text.trimmed() + QLatin1Char('\n');
  };
  QString text = line(rows.Columns);
  for (const QStringList& row : rows.Rows) text += line(row);
  if (std::cmp_less(rows.Rows.size(), rows.Count)) text += QStringLiteral("...\n");
  text += rows.Count == 1 ? QStringLiteral("1 row\n") : QStringLiteral("%1 rows\n").arg(rows.Count);
  return text;
}

}  // namespace ts4demo
