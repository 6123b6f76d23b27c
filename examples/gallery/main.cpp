// ts4gallery: every control of the widget library in each of its states.
//   ts4gallery                      opens the window, every control closed and ready to click
//   ts4gallery --screenshot FILE    renders it offscreen to a PNG file and exits
#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryFile>
#include <cstdio>
#include <cstring>

#include "common/offscreen_screen.h"
#include "gallery_window.h"

int main(int argc, char** argv) {
  QTemporaryFile screenConfig;
  if (!ts4examples::PrepareOffscreenScreen(argc, argv, screenConfig)) {
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
