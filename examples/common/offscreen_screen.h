// The examples' screenshots are rendered offscreen on a screen as large as a
// desktop's, instead of the default 800 by 600 pixels, so that windows are
// not squeezed and menus and lists open where they would on a desktop.
#pragma once

#include <QByteArray>
#include <QTemporaryFile>
#include <cstring>

namespace ts4examples {

/// With --screenshot among the arguments and the offscreen platform (or
/// none) chosen, writes a 1280 by 900 screen's settings into `config` and
/// points the platform at them; call before making the QApplication.
/// False when the settings cannot be written.
inline bool PrepareOffscreenScreen(int argc, char** argv, QTemporaryFile& config) {
  bool screenshot = false;
  for (int i = 1; i < argc; ++i) screenshot = screenshot || std::strncmp(argv[i], "--screenshot", 12) == 0;
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!screenshot || (!platform.isEmpty() && platform != "offscreen")) return true;
  if (!config.open()) return false;
  config.write(R"({"screens": [{"name": "example", "x": 0, "y": 0, "width": 1280, "height": 900,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  config.flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName().toUtf8());
  return true;
}

}  // namespace ts4examples
