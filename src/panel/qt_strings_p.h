#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <string_view>

#include "foundation/strings.h"

namespace ts4::detail {

/// The core keeps text as UTF-8 std::string; the widgets as QString.
inline QString ToQ(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQ(const QString& text) {
  return text.toStdString();
}

inline QStringList ToQ(const TStrings& lines) {
  QStringList list;
  list.reserve(lines.Count());
  for (const std::string& line : lines) list.append(ToQ(line));
  return list;
}
inline TStrings FromQ(const QStringList& list) {
  TStrings lines;
  lines.Reserve(static_cast<int>(list.size()));
  for (const QString& line : list) lines.Add(FromQ(line));
  return lines;
}

}  // namespace ts4::detail
