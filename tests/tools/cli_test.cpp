#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "cli_run.h"
#include "foundation/strings.h"

namespace {

const std::string Data = TS4_EXAMPLE_DATA;
const std::string Structure = Data + "/sales.str";
const std::string BigOrders = Data + "/big-orders.qry";

struct TRun {
  int status;
  std::string out;
  std::string err;
};

TRun RunTool(const std::vector<std::string>& args, const std::string& input = {}) {
  std::istringstream in(input);
  std::ostringstream out;
  std::ostringstream err;
  const int status = ts4::cli::RunTs4(args, in, out, err);
  return {status, out.str(), err.str()};
}

// Qt SQL loads its drivers through the application object; the tool's main
// makes one, and so does this program, once.
void NeedApplication() {
  static int argc = 1;
  static char name[] = "tools_tests";
  static char* argv[] = {name, nullptr};
  static const QCoreApplication* app = new QCoreApplication(argc, argv);
  (void)app;
}

// The file's lines, each ended by `eol`.
std::string ReadText(const std::string& file, const char* eol = "\r\n") {
  ts4::TStrings lines;
  lines.LoadFromFile(file);
  std::string text;
  for (const std::string& line : lines) text += line + eol;
  return text;
}

TEST(Cli, BadUsageGivesStatusTwoAndTheUsageLine) {
  const std::vector<std::vector<std::string>> cases = {
      {},
      {"frobnicate"},
      {"sql", Structure},
      {"structure", Structure, "extra"},
      {"sql", Structure, BigOrders, "--syntax", "sql3"},
      {"sql", Structure, BigOrders, "--options", "soSelectDistinct,soFast"},
      {"sql", Structure, BigOrders, "--no-such-option"},
      {"sql", "-", "-"},
      {"structure", Structure, "--syntax", "sql1"},
      {"--help", "sql"},
      {"import"},
  };
  for (const auto& args : cases) {
    const TRun run = RunTool(args);
    EXPECT_EQ(run.status, 2) << ::testing::PrintToString(args);
    EXPECT_TRUE(run.out.empty());
    EXPECT_EQ(run.err.rfind("ts4: ", 0), 0U) << run.err;
    EXPECT_NE(run.err.find("\nusage: ts4 sql STRUCTURE QUERY"), std::string::npos) << run.err;
  }
}

TEST(Cli, SqlPrintsTheStatementLines) {
  const TRun run = RunTool({"sql", Structure, BigOrders});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "SELECT DISTINCT C.COMPANY, O.ORDER_ID, O.ORDER_DATE, O.TOTAL\n"
            "FROM CUSTOMERS C\n"
            "     LEFT OUTER JOIN ORDERS O ON (C.CUST_ID=O.CUST_ID)\n"
            "WHERE\n"
            " (\n"
            "C.COUNTRY = 'DE' AND\n"
            "O.ORDER_DATE between '2024-01-01' and '2024-12-31' AND\n"
            "O.TOTAL >= 1000\n"
            ")\n"
            "ORDER BY 4 DESC\n");
  EXPECT_TRUE(run.err.empty());
}

TEST(Cli, SqlOptionsSyntaxAndMainTable) {
  const TRun sql1 = RunTool({"sql", Structure, BigOrders, "--syntax", "sql1", "--options", ""});
  ASSERT_EQ(sql1.status, 0) << sql1.err;
  EXPECT_EQ(sql1.out.rfind("SELECT C.COMPANY", 0), 0U) << sql1.out;
  EXPECT_NE(sql1.out.find("FROM CUSTOMERS C, \n     ORDERS O\n"), std::string::npos) << sql1.out;

  const TRun fromOrders = RunTool({"sql", Structure, BigOrders, "--main-table", "o"});
  ASSERT_EQ(fromOrders.status, 0) << fromOrders.err;
  EXPECT_NE(fromOrders.out.find("FROM ORDERS O\n     RIGHT OUTER JOIN CUSTOMERS C"), std::string::npos)
      << fromOrders.out;

  const TRun unknown =
      RunTool({"sql", Structure, BigOrders, "--main-table", "NOPE", "--options", "soBracketJoins"});
  EXPECT_EQ(unknown.status, 1);
  EXPECT_EQ(unknown.err, "ts4: No such table NOPE\n");
}

TEST(Cli, StandardInputWithCrLf) {
  const TRun fromStdin = RunTool({"sql", Structure, "-"}, ReadText(BigOrders));  // lines ended by CR LF
  ASSERT_EQ(fromStdin.status, 0) << fromStdin.err;
  EXPECT_EQ(fromStdin.out, RunTool({"sql", Structure, BigOrders}).out);
}

TEST(Cli, HelpVersionStructureAndPath) {
  const TRun help = RunTool({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("ts4 path STRUCTURE ALIAS1 ALIAS2"), std::string::npos);
  const TRun version = RunTool({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.rfind("ts4 ", 0), 0U);
  const TRun structure = RunTool({"structure", "-"}, ReadText(Structure));
  ASSERT_EQ(structure.status, 0) << structure.err;
  EXPECT_EQ(structure.out, ReadText(Structure, "\n"));
  const TRun path = RunTool({"path", Structure, "c", "P"});
  ASSERT_EQ(path.status, 0) << path.err;
  EXPECT_EQ(path.out, "C\nO\nI\nP\n");
}

TEST(Cli, ParseReadsTheStatementBackIntoAQueryText) {
  const TRun sql = RunTool({"sql", Structure, Data + "/orders-to-chase.qry", "--syntax", "oracle"});
  ASSERT_EQ(sql.status, 0) << sql.err;
  const TRun parsed = RunTool({"parse", Structure, "-"}, sql.out);
  ASSERT_EQ(parsed.status, 0) << parsed.err;
  EXPECT_EQ(parsed.out.rfind("[Main]\n", 0), 0u) << parsed.out;
  EXPECT_NE(parsed.out.find("\n[RFields]\n"), std::string::npos);
  // The query text it printed writes the same statement.
  const TRun again =
      RunTool({"sql", Structure, "-", "--syntax", "oracle", "--options", "soSelectDistinct"}, parsed.out);
  ASSERT_EQ(again.status, 0) << again.err;
  EXPECT_EQ(again.out, sql.out);
}

TEST(Cli, ImportPrintsTheStructureADatabaseMakes) {
  NeedApplication();
  std::vector<std::string> connections = {"sqlite:" + std::string(TS4_SAMPLE_DB)};
  if (const char* url = std::getenv("TS4_PG_URL")) connections.emplace_back(url);
  for (const std::string& connection : connections) {
    const TRun run = RunTool({"import", connection});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.rfind("[Main]\n", 0), 0u) << run.out;
    EXPECT_NE(run.out.find("\nTableCount=5\n"), std::string::npos) << connection;
    EXPECT_NE(run.out.find("\nDisplayName=Order Items\n"), std::string::npos) << connection;
    EXPECT_EQ(run.out.find("[DBSpecInfo]"), std::string::npos) << "no connection name of this run";
    // What it printed is a structure the other commands read.
    const TRun path = RunTool({"path", "-", "C", "P"}, run.out);
    EXPECT_EQ(path.out, "C\nO\nOI\nP\n") << path.err;
    const TRun again = RunTool({"structure", "-"}, run.out);
    EXPECT_EQ(again.out, run.out);
  }
  if (connections.size() == 1) GTEST_SKIP() << "no PostgreSQL: run the tests through with-postgres.sh";
}

TEST(Cli, ImportOfADatabaseThatCannotBeOpenedGivesTheDriversMessage) {
  NeedApplication();
  const struct {
    std::string connection;
    std::string message;  // the start of the error line
  } cases[] = {
      {"sqlite:" + Data + "/no-such.db", "ts4: "},
      {"postgresql://nobody@127.0.0.1:1/none", "ts4: "},
      {"mysql://host/db", "ts4: Unknown database \"mysql://host/db\": use sqlite:PATH or postgresql://"},
  };
  for (const auto& c : cases) {
    const TRun run = RunTool({"import", c.connection});
    EXPECT_EQ(run.status, 1) << c.connection;
    EXPECT_TRUE(run.out.empty());
    EXPECT_EQ(run.err.rfind(c.message, 0), 0u) << run.err;
    EXPECT_GT(run.err.size(), 8u) << "the driver says why";
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << "one line: " << run.err;
  }
}

TEST(Cli, LibraryErrorsGiveStatusOneAndTheMessage) {
  std::string broken = ReadText(Structure);
  const std::size_t at = broken.find("Operators=Equal");
  ASSERT_NE(at, std::string::npos);
  broken.replace(at, 15, "Operators=Foo");
  const struct {
    std::vector<std::string> args;
    std::string input;
    std::string message;
  } cases[] = {
      {{"structure", Data + "/missing.str"}, "", "ts4: Cannot open file \"" + Data + "/missing.str\"\n"},
      {{"sql", "-", BigOrders}, broken, "ts4: Operator not found: Foo\n"},
      {{"path", Structure, "C", "X"}, "", "ts4: No such table X\n"},
      {{"parse", Structure, "-"},
       "SELECT *\nFROM CUSTOMERS C\nWHERE (C.CITY = 'a' C.CITY = 'b')",
       "ts4: Lost bracket\r\nLine:3\n"},
      {{"parse", Structure, "-"},
       "SELECT * FROM CUSTOMERS C\nWHERE (C.CITY = 'a'",
       "ts4: Lost bracket\r\nLine:2\n"},
      {{"parse", Structure, "-"},
       "SELECT C.CITY FROM CUSTOMERS C\nLIMIT 5",
       "ts4: Wrong SQL statement\r\nLine:2\n"},
      {{"parse", Structure, "-"},
       "SELECT * FROM CUSTOMERS C WHERE C.NOPE = 1",
       "ts4: Unknown field in expression: C.NOPE\n"},
  };
  for (const auto& c : cases) {
    const TRun run = RunTool(c.args, c.input);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.out.empty()) << run.out;
    EXPECT_EQ(run.err, c.message);
  }
}

}  // namespace
