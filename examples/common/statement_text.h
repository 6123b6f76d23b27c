// The SQL a panel's query writes, as an example window shows it.
#pragma once

#include <QString>

#include "foundation/error.h"
#include "panel/query_panel.h"

namespace ts4examples {

/// The statement with plain line breaks (the query joins its lines with
/// CR LF); a query without enough to build from (no table yet) has none,
/// and the text says why instead, as an SQL comment.
inline QString StatementText(ts4::TWQueryPanel& panel) {
  try {
    QString text = panel.GetQueryText();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text;
  } catch (const ts4::EWTessalyError& error) {
    return QStringLiteral("-- ") + QString::fromUtf8(error.what());
  }
}

}  // namespace ts4examples
