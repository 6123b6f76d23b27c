// ts4gallery: every control of the widget library in each of its states.
//   ts4gallery                      opens the window, every control closed and ready to click
//   ts4gallery --screenshot FILE    renders it offscreen to a PNG file and exits
#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryFile>
#include <cstdio>
#include <cstring>

#include "gallery_window.h"

namespace {

// The screenshot is rendered offscreen, on a screen large enough that the
// menus and lists open where they would on a desktop instead of being
// pushed back onto the default 800 by 600 pixels.
bool PrepareOffscreen(int argc, char** argv, QTemporaryFile& config) {
  bool screenshot = false;
  for (int i = 1; i < argc; ++i) screenshot = screenshot || std::strncmp(argv[i], "--screenshot", 12) == 0;
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!screenshot || (!platform.isEmpty() && platform != "offscreen")) return true;
  if (!config.open()) return false;
  config.write(R"({"screens": [{"name": "gallery", "x": 0, "y": 0, "width": 1280, "height": 900,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  config.flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName().toUtf8());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryFile screenConfig;
  if (!PrepareOffscreen(argc, argv, screenConfig)) {
    std::fprintf(stderr, "ts4gallery: cannot write the offscreen screen's settings\n");
    return 1;
  }
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("The ts4 widgets in each of their states."));
  parser.addHelpOption();
  const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                      QStringLiteral("Render the gallery to a PNG file and exit."),
                                      QStringLiteral("FILE"));
  parser.addOption(screenshot);
  parser.process(app);

  ts4gallery::TGalleryWindow window;
  if (!parser.isSet(screenshot)) {
    window.show();
    return QApplication::exec();
  }
  window.show();
  window.ShowStates();
  QApplication::processEvents();
  const QString file = parser.value(screenshot);
  if (!window.Render().save(file, "PNG")) {
    std::fprintf(stderr, "ts4gallery: cannot write %s\n", qPrintable(file));
    return 1;
  }
  return 0;
}
