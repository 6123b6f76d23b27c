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
  if (!ts4examples::PrepareOffscreenScreen(argc, argv, screenConfig, "ts4gallery")) return 1;
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
  return ts4examples::SaveScreenshot(window.Render(), parser.value(screenshot), "ts4gallery");
}
