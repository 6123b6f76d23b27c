#include "sqlimport/sql_parser.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "foundation/error.h"
#include "test_support.h"

namespace {

using ts4::TSQLBracket;
using ts4::TSQLCondition;
using ts4::TSQLConditionNode;
using ts4::TWSQLParser;

std::unique_ptr<TWSQLParser> Parsed(std::string_view sql) {
  auto parser = std::make_unique<TWSQLParser>();
  ts4::TStrings lines;
  lines.SetText(sql);
  parser->SetSQL(lines);
  parser->Parse();
  return parser;
}

// The parser's error of that kind at that line: code, line and the documented message.
void ExpectParseError(std::string_view sql, int code, int line) {
  const char* messages[] = {"", "Wrong SQL statement", "Lost bracket",
                            "Brackets are nested more than 1000 levels deep"};
  try {
    Parsed(sql);
    ADD_FAILURE() << "no error";
  } catch (const ts4::ESQLParserError& e) {
    EXPECT_EQ(e.ErrorCode(), code);
    EXPECT_EQ(e.Line(), line);
    EXPECT_EQ(std::string(e.what()), messages[code] + std::string("\r\nLine:") + std::to_string(line));
  }
}
constexpr int Wrong = ts4::pecWrongSQL;
constexpr int Lost = ts4::pecLostBracket;
constexpr int Deep = ts4::pecNestingTooDeep;

// A tree in one line: "and[a = 1, not or[b = 2, c = 3]]"; a condition is
// Expr, operator and value, with "not " when negated.
std::string Tree(const TSQLConditionNode& node) {
  if (!node.IsBracket()) {
    const auto& condition = static_cast<const TSQLCondition&>(node);
    return (condition.Negated ? "not " : "") + condition.Expr + " " + condition.Operator + " " +
           condition.Value;
  }
  const auto& bracket = static_cast<const TSQLBracket&>(node);
  std::string text = (bracket.Negated ? "not " : "") + bracket.LinkOperator + "[";
  for (int i = 0; i < bracket.Items.Count(); ++i) {
    EXPECT_EQ(bracket.Items[i]->Parent, &bracket);
    text += (i > 0 ? ", " : "") + Tree(*bracket.Items[i]);
  }
  return text + "]";
}

std::string WhereTree(std::string_view where) {
  auto parser = Parsed("select * from T where " + std::string(where));
  EXPECT_EQ(parser->Result().Where->Parent, nullptr);
  return Tree(*parser->Result().Where);
}

std::string Tables(TWSQLParser& parser) {
  std::string text;
  for (const ts4::TSQLTable* table : parser.Result().Tables)
    text += table->TableName + " " + table->Alias + ";";
  return text;
}

// Every result field as "SQLExpr/FieldName/Alias/SortOrder/SortIndex;".
std::string Fields(TWSQLParser& parser) {
  std::string text;
  for (const ts4::TSQLResultField* f : parser.Result().ResultFields)
    text += f->SQLExpr + "/" + f->FieldName + "/" + f->Alias + "/" + std::to_string(f->SortOrder) + "/" +
            std::to_string(f->SortIndex) + ";";
  return text;
}

TEST(SQLParser, SelectStar) {
  auto parser = Parsed("select * from T");
  EXPECT_TRUE(parser->Result().AllFields);
  EXPECT_TRUE(parser->Result().ResultFields.AllFields);
  EXPECT_EQ(Tables(*parser), "T T;");
  EXPECT_EQ(Tree(*parser->Result().Where), "[]");

  parser->SetSQL(ts4test::StringsOf({"select a from U"}));  // a second parse starts afresh
  parser->Parse();
  EXPECT_FALSE(parser->Result().AllFields);
  EXPECT_EQ(Tables(*parser), "U U;");
}

TEST(SQLParser, DistinctAliasAndNumberedSort) {
  auto parser = Parsed("select distinct a.X as Y from A a where a.X = 1 order by 1 desc");
  EXPECT_TRUE(parser->Result().Distinct);
  EXPECT_EQ(Fields(*parser), "a.X/X/Y/2/1;");
  EXPECT_EQ(Tables(*parser), "A a;");
  EXPECT_EQ(Tree(*parser->Result().Where), "[a.X = 1]");
  EXPECT_EQ(parser->Result().ResultFields.IndexByAlias("y"), 0);
  EXPECT_EQ(parser->Result().ResultFields.IndexByExpr("A.x"), 0);
  EXPECT_EQ(parser->Result().ResultFields.IndexByExpr("x"), -1);
}

TEST(SQLParser, ResultFieldsKeepTheirTextAsWritten) {
  EXPECT_EQ(Fields(*Parsed("select t.Name, count(*), SUM(I.QUANTITY * I.UNIT_PRICE) as \"Total Sum\",\n"
                           " t.f(x), count(t.x), Code from T t")),
            "t.Name/Name//0/0;count(*)/count(*)//0/0;"
            "SUM(I.QUANTITY * I.UNIT_PRICE)/SUM(I.QUANTITY * I.UNIT_PRICE)/Total Sum/0/0;"
            "t.f(x)/f(x)//0/0;count(t.x)/count(t.x)//0/0;Code/Code//0/0;");
}

TEST(SQLParser, TablesAndJoins) {
  EXPECT_EQ(Tables(*Parsed("select * from dbo.Orders o, (Customers), \"My Db\".\"Order Lines\" l;")),
            "dbo.Orders o;Customers Customers;My Db.Order Lines l;");
  EXPECT_EQ(Tables(*Parsed("select * from CUSTOMERS C\n"
                           "  LEFT OUTER JOIN ORDERS O ON (C.CUST_ID=O.CUST_ID)\n"
                           "  INNER JOIN EMPLOYEES ON (O.EMP_ID=EMPLOYEES.EMP_ID and O.X = 1)\n"
                           "  FULL JOIN S.LINES L ON L.ID = O.ID JOIN P ON P.ID = L.P\n"
                           "where C.X = 1")),
            "CUSTOMERS C;ORDERS O;EMPLOYEES EMPLOYEES;S.LINES L;P P;");
  EXPECT_EQ(
      Tables(*Parsed("select * from (A a LEFT JOIN B b ON (a.ID = b.ID)) RIGHT JOIN C c ON c.ID = b.ID")),
      "A a;B b;C c;");
}

TEST(SQLParser, WhereTrees) {
  struct Case {
    const char* where;
    const char* tree;
  };
  const Case cases[] = {
      {"(a = 1 or b = 2) and c = 3", "and[or[a = 1, b = 2], c = 3]"},
      {"a = 1 or b = 2 and (c = 3)", "or[a = 1, and[b = 2, c = 3]]"},
      {"not not a = 1", "[a = 1]"},
      {"not(a = 1)", "[not a = 1]"},
      {"NOT ((not (a = 1)))", "[a = 1]"},
      {"a NOT BETWEEN 1 AND 5", "[not a between 1 and 5]"},
      {"(x between 1 and 2) and y = 1", "and[x between 1 and 2, y = 1]"},
      {"a not like 'x%' or b not in (1, 2)", "or[not a like 'x%', not b in (1, 2)]"},
      {"a is not null and b is null", "and[a is not null, b is null]"},
      {"a = \"x y\"", "[a = 'x y']"},
      {"Upper(t.A || 'x') >= 'B' -- note\n and b = 'it''s'", "and[Upper(t.A || 'x') >= 'B', b = 'it''s']"},
      {"NOT (a = 1 OR b = 2)", "not or[a = 1, b = 2]"},
      {"not (not (a = 1 or b = 2))", "or[a = 1, b = 2]"},
      {"c = 3 and not (a = 1 or not (b = 2 and (d = 4 or e = 5)))",
       "and[c = 3, not or[a = 1, not and[b = 2, or[d = 4, e = 5]]]]"},
      {"C.ID = O.ID (+) and (O.ID = L.ID (+))", "and[C.ID = O.ID (+), O.ID = L.ID (+)]"},
  };
  for (const Case& c : cases) EXPECT_EQ(WhereTree(c.where), c.tree) << c.where;
}

TEST(SQLParser, SubQueryValue) {
  auto parser = Parsed("select * from T where x in (select id from U where y = 1 and z = 2) and w = 1");
  const auto& root = *parser->Result().Where;
  ASSERT_EQ(root.Items.Count(), 2);
  const auto& in = static_cast<const TSQLCondition&>(*root.Items[0]);
  EXPECT_TRUE(in.IsSubQuery);
  EXPECT_EQ(in.Value, "(select id from U where y = 1 and z = 2)");
  EXPECT_FALSE(static_cast<const TSQLCondition&>(*root.Items[1]).IsSubQuery);
  EXPECT_EQ(in.GetSQLExpr(), "x in (select id from U where y = 1 and z = 2)");
}

std::string Nested(int levels, std::string_view open, std::string_view inner, std::string_view close) {
  std::string text = "select * from T where ";
  for (int i = 0; i < levels; ++i) text += open;
  text += inner;
  for (int i = 0; i < levels; ++i) text += close;
  return text;
}

// The builder writes its root bracket and up to 1000 levels inside it.
TEST(SQLParser, NestingIsBounded) {
  EXPECT_EQ(Tree(*Parsed(Nested(1001, "(", "a = 1", ")"))->Result().Where), "[a = 1]");
  EXPECT_EQ(Tree(*Parsed(Nested(1001, " NOT (\n", "a = 1 OR\nb = 2\n", ")\n"))->Result().Where),
            "not or[a = 1, b = 2]");
  ExpectParseError(Nested(1002, "(", "a = 1", ")"), Deep, 1);
  ExpectParseError(Nested(1002, "not (", "a = 1 or b = 2", ")"), Deep, 1);
  ExpectParseError(Nested(100000, "(", "a = 1", ")"), Deep, 1);
  ExpectParseError(Nested(5000, "(", "a = 1", ""), Lost, 1);
  EXPECT_EQ(Tree(*Parsed(Nested(100000, "not ", "a = 1", ""))->Result().Where), "[a = 1]");
  EXPECT_EQ(Tree(*Parsed(Nested(1001, "not ", "a = 1", ""))->Result().Where), "[not a = 1]");
}

TEST(SQLParser, GroupByTakesExpressions) {
  EXPECT_EQ(Fields(*Parsed("select I.ID, SUM(I.Q * I.P) from I group by I.Q * I.P, ID order by 2")),
            "I.ID/ID//0/0;SUM(I.Q * I.P)/SUM(I.Q * I.P)//1/1;");
  EXPECT_EQ(Fields(*Parsed("select a from T group by a;")), "a/a//0/0;");
}

TEST(SQLParser, OrderByNames) {
  EXPECT_EQ(Fields(*Parsed("select A.X, SUM(I.Q * I.P), B.Y from T order by i.q desc, b.y asc")),
            "A.X/X//0/0;SUM(I.Q * I.P)/SUM(I.Q * I.P)//2/1;B.Y/Y//1/2;");
  EXPECT_EQ(Fields(*Parsed("select SUM(I.Q * I.P), I.Q from T order by i.q")),
            "SUM(I.Q * I.P)/SUM(I.Q * I.P)//0/0;I.Q/Q//1/1;");
  EXPECT_EQ(Fields(*Parsed("select I.Q, SUM(I.Q * I.P) from T order by sum( i.q*i.p ) desc")),
            "I.Q/Q//0/0;SUM(I.Q * I.P)/SUM(I.Q * I.P)//2/1;");
  EXPECT_EQ(Fields(*Parsed("select * from T order by a.x desc, b;")), "a.x/x//2/1;b/b//1/2;");
}

TEST(SQLParser, ErrorsNameTheirKindAndLine) {
  struct Case {
    const char* sql;
    int code;
    int line;
  };
  const Case cases[] = {
      {"selec * from T", Wrong, 1},
      {"select *\nT", Wrong, 2},
      {"select * from", Wrong, 1},
      {"select * from A left B on x = 1", Wrong, 1},
      {"select * from A inner B on x = 1", Wrong, 1},
      {"select * from A join B b c on x = 1", Wrong, 1},
      {"select * from T where a", Wrong, 1},
      {"select * from T where\na =", Wrong, 2},
      {"select * from T where a between 1 or 2", Wrong, 1},
      {"select * from T where (a = 1 or b = 2\n c = 3)", Lost, 2},
      {"select * from T where not (a = 1 x = 2)", Lost, 1},
      {"select * from T group a", Wrong, 1},
      {"select * from T group by a, order by 1", Wrong, 1},
      {"select * from T order a", Wrong, 1},
      {"select a from T order by 0", Wrong, 1},
      {"select a from T order by 2", Wrong, 1},
      {"select a from T order by 99999999999999999999", Wrong, 1},
      {"select a, b from T order by 1, b", Wrong, 1},
      {"select a, b from T order by a, 2", Wrong, 1},
      {"select a.X from A a\nwhere a.X = 1\norder by\n a.Y", Wrong, 4},
      {"select SUM(I.Q) from I order by I", Wrong, 1},
      {"select * from T where a = 'x", Wrong, 1},  // a string never closed
      // Text left over after each clause, and clauses out of order.
      {"select * from T t\nextra", Wrong, 2},
      {"select * from T; select * from U", Wrong, 1},
      {"select * from T where a = 1;\ntrailing", Wrong, 2},
      {"select * from T where a = 1 and", Wrong, 1},
      {"select a from T where a = 1\norder by 1\nwhere b = 2", Wrong, 3},
      {"select a from T group by a\nhaving count(*) > 1", Wrong, 2},
      {"select * from T where a = 5\nlimit 10", Wrong, 2},   // not taken into the value
      {"select * from T order by a.x\nlimit 5", Wrong, 2},   // nor into a sort field
      {"select * from T\nunion select * from U", Wrong, 2},  // nor as an alias
      {"select a from T group by a order by 1 nulls last", Wrong, 1},
      {"select a from T order by a desc\n;;", Wrong, 2},
      // Brackets never closed, at several depths, and closing brackets never opened.
      {"select * from T\nwhere (a = 1 and b = 2", Lost, 2},
      {"select * from T where ((a = 1 or b = 2) and c = 3", Lost, 1},
      {"select * from T where (a = 1 or b = 2) and\n((c = 3 or\n(d = 4 and e = 5)\n)", Lost, 2},
      {"select * from T where a = 1 and\nnot (b = 2", Lost, 2},
      {"select * from T where a in (select x from U\nwhere (y = 1)", Lost, 1},
      {"select count(x\nfrom T", Lost, 1},
      {"select * from (A a\njoin B b on a.x = b.x", Lost, 1},
      {"select * from T where a = 1)", Lost, 1},
      {"select count(x)) from T", Lost, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sql);
    ExpectParseError(c.sql, c.code, c.line);
  }
}

TEST(SQLParseTree, DeleteEmptyBracketsMovesNotOntoTheItem) {
  TSQLBracket root;
  TSQLBracket* outer = TSQLBracket::Create(&root);
  outer->Negated = true;
  TSQLBracket* inner = TSQLBracket::Create(outer);
  inner->LinkOperator = "or";
  TSQLCondition::Create(inner)->Expr = "a";
  TSQLCondition::Create(inner)->Expr = "b";
  TSQLBracket* single = TSQLBracket::Create(&root);
  single->Negated = true;
  TSQLCondition* c = TSQLCondition::Create(single);
  c->Expr = "c";
  c->Negated = true;
  root.DeleteEmptyBrackets();
  EXPECT_EQ(Tree(root), "[not or[a  , b  ], c  ]");
}

}  // namespace
