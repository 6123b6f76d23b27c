#pragma once

#include <string_view>

#include "foundation/field_types.h"

namespace ts4 {

/// A column type as the structure keeps it.
struct TSQLColumnType {
  TFieldType Type = ftString;
  int Size = 0;

  friend bool operator==(const TSQLColumnType&, const TSQLColumnType&) = default;
};

/// The field type of a column from the type name its database declares:
/// SQLite's declared types as written in CREATE TABLE, PostgreSQL's as
/// format_type() reports them. Case and blanks around words are ignored;
/// the first rule that applies wins.
///
/// | declared type (examples)                                   | type        | size            |
/// |------------------------------------------------------------|-------------|-----------------|
/// | DATE                                                       | ftDate      | 0               |
/// | TIME, TIME WITHOUT/WITH TIME ZONE, TIMETZ                  | ftTime      | 0               |
/// | DATETIME, TIMESTAMP [WITH[OUT] TIME ZONE], TIMESTAMPTZ     | ftDateTime  | 0               |
/// | BOOLEAN, BOOL, BIT                                         | ftBoolean   | 0               |
/// | SMALLINT, INT2, TINYINT                                    | ftSmallint  | 0               |
/// | BIGINT, INT8, BIGSERIAL                                    | ftLargeint  | 0               |
/// | INTEGER, INT, INT4, SERIAL, MEDIUMINT                      | ftInteger   | 0               |
/// | NUMERIC(p[,s]), DECIMAL(p[,s]), NUMBER(p[,s])               | ftBCD       | s (0 without)   |
/// | NUMERIC, DECIMAL, NUMBER without a precision               | ftFloat     | 0               |
/// | MONEY, CURRENCY, SMALLMONEY                                | ftCurrency  | 0               |
/// | REAL, FLOAT, FLOAT4, FLOAT8, DOUBLE, DOUBLE PRECISION      | ftFloat     | 0               |
/// | CHAR(n), CHARACTER(n), NCHAR(n), BPCHAR(n)                 | ftFixedChar | n               |
/// | VARCHAR(n), CHARACTER VARYING(n), NVARCHAR(n), VARCHAR2(n) | ftString    | n               |
/// | TEXT, STRING, UUID, CITEXT, NAME, INTERVAL, no type at all | ftString    | 0               |
/// | CLOB, MEMO, LONGTEXT, MEDIUMTEXT, JSON, JSONB, XML         | ftMemo      | 0               |
/// | BLOB, BYTEA, BINARY(n), VARBINARY(n), IMAGE                | ftBlob      | 0               |
/// | an array (a name ending in "[]")                           | ftString    | 0               |
/// | any other name holding "INT"                               | ftInteger   | 0               |
/// | any other name holding "CHAR", "CLOB" or "TEXT"            | ftString    | 0               |
/// | any other name holding "BLOB"                              | ftBlob      | 0               |
/// | any other name holding "REAL", "FLOA" or "DOUB"            | ftFloat     | 0               |
/// | anything else (an enumeration, a geometry ...)             | ftString    | 0               |
///
/// Sizes are capped at 65535, as the structure keeps them.
[[nodiscard]] TSQLColumnType FieldTypeOfSQLType(std::string_view declared);

}  // namespace ts4
