#include "qtsql/sql_type_mapping.h"

#include <gtest/gtest.h>

namespace {

using ts4::TSQLColumnType;

TEST(SQLTypeMapping, DeclaredTypesOfBothEnginesMapToFieldTypes) {
  const struct {
    const char* declared;
    TSQLColumnType expected;
  } cases[] = {
      // SQLite, as written in CREATE TABLE (names alone are looked up in one table)
      {"DATE", {ts4::ftDate, 0}},
      {"NUMERIC(10,2)", {ts4::ftBCD, 2}},
      {"numeric ( 12 , 4 )", {ts4::ftBCD, 4}},
      {"DECIMAL(8)", {ts4::ftBCD, 0}},
      {"NUMERIC", {ts4::ftFloat, 0}},
      {"VARCHAR(40)", {ts4::ftString, 40}},
      {"CHAR(2)", {ts4::ftFixedChar, 2}},
      {"INTEGER", {ts4::ftInteger, 0}},
      {"TEXT", {ts4::ftString, 0}},
      {"", {ts4::ftString, 0}},
      {"VARCHAR(99999)", {ts4::ftString, 65535}},
      // SQLite's affinity for names of its own
      {"UNSIGNED BIG INT", {ts4::ftInteger, 0}},
      {"VARYING CHARACTER(255)", {ts4::ftString, 0}},
      {"FLOATING POINT", {ts4::ftInteger, 0}},  // "INT" comes first, as SQLite reads it
      {"DOUBLE PRECISION FLOAT", {ts4::ftFloat, 0}},
      {"MEDIUMBLOB", {ts4::ftBlob, 0}},
      // PostgreSQL, as format_type reports them
      {"character varying(30)", {ts4::ftString, 30}},
      {"character varying", {ts4::ftString, 0}},
      {"character(5)", {ts4::ftFixedChar, 5}},
      {"timestamp without time zone", {ts4::ftDateTime, 0}},
      {"timestamp(3) with time zone", {ts4::ftDateTime, 0}},
      {"integer[]", {ts4::ftString, 0}},
      {"mood", {ts4::ftString, 0}},
      // Text that is no type at all
      {"((", {ts4::ftString, 0}},
      {"VARCHAR(x)", {ts4::ftString, 0}},
      {"NUMERIC(-3,-1)", {ts4::ftBCD, 0}},
  };
  for (const auto& c : cases) {
    const TSQLColumnType type = ts4::FieldTypeOfSQLType(c.declared);
    EXPECT_EQ(type, c.expected) << c.declared << " gave " << ts4::FldTypeToStr(type.Type) << " " << type.Size;
  }
}

}  // namespace
