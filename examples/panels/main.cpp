// ts4panels: a saved query in the query panel, as groups, as and/or words and
// right to left, with the SQL of the first panel following its changes.
//   ts4panels [--query FILE] [--structure FILE]    opens the window
//   ts4panels --screenshot FILE                    renders it offscreen to a PNG file and exits
#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryFile>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>

#include "panels_window.h"
#include "structure/structure.h"

namespace {

// The screenshot is rendered offscreen on a screen as large as a desktop's,
// instead of the default 800 by 600 pixels, which would squeeze the window.
bool PrepareOffscreen(int argc, char** argv, QTemporaryFile& config) {
  bool screenshot = false;
  for (int i = 1; i < argc; ++i) screenshot = screenshot || std::strncmp(argv[i], "--screenshot", 12) == 0;
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!screenshot || (!platform.isEmpty() && platform != "offscreen")) return true;
  if (!config.open()) return false;
  config.write(R"({"screens": [{"name": "panels", "x": 0, "y": 0, "width": 1280, "height": 900,
                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
  config.flush();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName().toUtf8());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  QTemporaryFile screenConfig;
  if (!PrepareOffscreen(argc, argv, screenConfig)) {
    std::fprintf(stderr, "ts4panels: cannot write the offscreen screen's settings\n");
    return 1;
  }
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("A saved query in the ts4 query panel."));
  parser.addHelpOption();
  const QString data = QStringLiteral(TS4_EXAMPLE_DATA "/");
  const QCommandLineOption query(QStringLiteral("query"), QStringLiteral("The saved query to show."),
                                 QStringLiteral("FILE"), data + QStringLiteral("panel-tour.qry"));
  const QCommandLineOption structureFile(QStringLiteral("structure"),
                                         QStringLiteral("The database structure the query is over."),
                                         QStringLiteral("FILE"), data + QStringLiteral("sales.str"));
  const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                      QStringLiteral("Render the window to a PNG file and exit."),
                                      QStringLiteral("FILE"));
  parser.addOptions({query, structureFile, screenshot});
  parser.process(app);

  // Declared before the window: the panels' queries refer to it to the end.
  ts4::TWDBStructure structure;
  std::unique_ptr<ts4panels::TPanelsWindow> window;
  try {
    structure.LoadFromFile(parser.value(structureFile).toStdString());
    window = std::make_unique<ts4panels::TPanelsWindow>(structure, parser.value(query));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "ts4panels: %s\n", error.what());
    return 1;
  }
  window->show();
  window->activateWindow();
  window->FocusFirstPanel();
  if (!parser.isSet(screenshot)) return QApplication::exec();

  QApplication::processEvents();
  const QString file = parser.value(screenshot);
  if (!window->grab().save(file, "PNG")) {
    std::fprintf(stderr, "ts4panels: cannot write %s\n", qPrintable(file));
    return 1;
  }
  return 0;
}
