// The examples' screenshots are rendered offscreen on a screen as large as a
// desktop's, instead of the default 800 by 600 pixels, so that windows are
// not squeezed and menus and lists open where they would on a desktop.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QTemporaryFile>
#include <QtGlobal>
#include <cstdio>
#include <cstring>

namespace ts4examples {

namespace detail {

// The offscreen platform says of every window that it cannot pass size
// hints on; a screenshot needs none, and the line only hides what matters.
inline QtMessageHandler& DefaultHandler() {
  static QtMessageHandler handler = nullptr;
  return handler;
}

inline void QuietOffscreen(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (!message.contains(QLatin1String("propagateSizeHints"))) DefaultHandler()(type, context, message);
}

}  // namespace detail

/// With --screenshot among the arguments and the offscreen platform (or
/// none) chosen, writes a 1280 by 900 screen's settings into `config` and
/// points the platform at them; call before making the QApplication. False,
/// said on standard error after the program's name, when the settings
/// cannot be written.
inline bool PrepareOffscreenScreen(int argc, char** argv, QTemporaryFile& config, const char* program) {
  bool screenshot = false;
  for (int i = 1; i < argc; ++i) screenshot = screenshot || std::strncmp(argv[i], "--screenshot", 12) == 0;
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!screenshot || (!platform.isEmpty() && platform != "offscreen")) return true;
  if (!config.open()) {
    std::fprintf(stderr, "%s: cannot write the offscreen screen's settings\n", program);
    return false;
  }
  config.write(R"({"screens": [{"name": "example", "x": 0, "y": 0, "width": 1280, "height": 900,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  config.flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName().toUtf8());
  detail::DefaultHandler() = qInstallMessageHandler(detail::QuietOffscreen);
  return true;
}

/// Writes the rendered window into a PNG file: exit status 0, or 1 said on
/// standard error.
inline int SaveScreenshot(const QImage& image, const QString& file, const char* program) {
  if (image.save(file, "PNG")) return 0;
  std::fprintf(stderr, "%s: cannot write %s\n", program, qPrintable(file));
  return 1;
}

}  // namespace ts4examples
