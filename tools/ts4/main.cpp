#include <QCoreApplication>
#include <iostream>
#include <string>
#include <vector>

#include "cli_run.h"

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const std::vector<std::string> args(argv + 1, argv + argc);
  // Qt SQL loads its drivers through the application object.
  const QCoreApplication app(argc, argv);
  const int status = ts4::cli::RunTs4(args, std::cin, std::cout, std::cerr);
  std::cout.flush();
  return status;
}
