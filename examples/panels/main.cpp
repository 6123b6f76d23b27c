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

#include "common/offscreen_screen.h"
#include "panels_window.h"
#include "structure/structure.h"

int main(int argc, char** argv) {
  QTemporaryFile screenConfig;
  if (!ts4examples::PrepareOffscreenScreen(argc, argv, screenConfig, "ts4panels")) return 1;
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
  return ts4examples::SaveScreenshot(window->grab().toImage(), parser.value(screenshot), "ts4panels");
}
