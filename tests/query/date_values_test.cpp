// Dates and times between their ISO form and an SQL date format.
#include <gtest/gtest.h>

#include <cmath>

#include "query/date_values.h"
#include "query/query.h"

namespace {

TEST(DateValues, ReadingISOText) {
  const struct {
    const char* text;
    bool valid;
    const char* iso;
  } cases[] = {
      {"2000-01-02", true, "2000-01-02"},
      {" 2024-02-29T23:59:59.5 ", true, "2024-02-29 23:59:59"},
      {"2000-1-2 7:05", true, "2000-01-02 07:05:00"},
      {"12:30", true, "12:30:00"},
      {"2023-02-29", false, ""},
      {"1900-02-29", false, ""},
      {"2000-13-01", false, ""},
      {"24:00", false, ""},
      {"2000-01-02x", false, ""},
      {"20000-01-02", false, ""},
      {"", false, ""},
      {"today", false, ""},
  };
  for (const auto& c : cases) {
    const auto parts = ts4::ParseISODateTime(c.text);
    EXPECT_EQ(parts.has_value(), c.valid) << c.text;
    if (parts) {
      EXPECT_EQ(ts4::ISODateTimeText(*parts), c.iso) << c.text;
    }
  }
}

TEST(DateValues, FormatsBothWays) {
  const auto parts = *ts4::ParseISODateTime("2009-03-07 08:04:05.250");
  const struct {
    const char* format;
    const char* text;
    bool readsBack;
  } cases[] = {
      {"yyyy-mm-dd hh:nn:ss", "2009-03-07 08:04:05", true},
      {"dd.mm.yyyy", "07.03.2009", true},
      {"d/m/yy", "7/3/09", true},
      {"hh:mm", "08:04", true},  // m after h is minutes
      {"mm/dd/yyyy h:m:s.zzz", "03/07/2009 8:4:5.250", true},
      {"'Date:' yyyymmdd", "Date: 20090307", true},
      {"ddd, d mmm yyyy", "Sat, 7 Mar 2009", false},
      {"dddd mmmm", "Saturday March", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ts4::FormatDateTime(c.format, parts), c.text) << c.format;
    const auto back = ts4::ParseDateTime(c.format, c.text);
    EXPECT_EQ(back.has_value(), c.readsBack) << c.format;
    if (back) {
      EXPECT_EQ(ts4::FormatDateTime(c.format, *back), c.text) << c.format;
    }
  }
  EXPECT_FALSE(ts4::ParseDateTime("dd.mm.yyyy", "31.02.2009"));
  EXPECT_FALSE(ts4::ParseDateTime("dd.mm.yyyy", "07-03-2009"));
}

TEST(DateValues, DateTimeNumbers) {
  const std::pair<const char*, double> cases[] = {
      {"2000-01-01", 36526},       {"2000-01-01 12:00", 36526.5},
      {"1899-12-30", 0},           {"06:00", 0.25},
      {"1899-12-29 06:00", -1.25},  // the fraction counts forward from midnight before day 0 too
      {"0001-01-01", -693593},     {"9999-12-31 23:59:59.999", 2958465 + 86399999.0 / 86400000},
  };
  for (auto [text, number] : cases) {
    const auto parts = *ts4::ParseISODateTime(text);
    EXPECT_EQ(ts4::DateTimeToNumber(parts), number) << text;
    const auto back = ts4::NumberToDateTime(number);
    ASSERT_TRUE(back) << text;
    EXPECT_EQ(ts4::DateTimeToNumber(*back), number) << text;
    EXPECT_EQ(back->Millisecond, parts.Millisecond) << text;
  }
  EXPECT_EQ(ts4::ISODateTimeText(*ts4::NumberToDateTime(36526.99999999999)), "2000-01-02 00:00:00");
  EXPECT_FALSE(ts4::NumberToDateTime(-693594));
  EXPECT_FALSE(ts4::NumberToDateTime(2958466));
  EXPECT_FALSE(ts4::NumberToDateTime(std::nan("")));
}

TEST(DateValues, QueryConvertsByFieldType) {
  ts4::TWDBStructure db;
  ts4::TSQLFormats formats;
  formats.SetDateFormat("dd.mm.yyyy");
  db.SetSQLFormats(formats);
  ts4::TWQuery query(&db);
  EXPECT_EQ(query.ProcessDateValue(ts4::ftDate, "2000-01-02 10:00", true), "02.01.2000");
  EXPECT_EQ(query.ProcessDateValue(ts4::ftDate, "02.01.2000", false), "2000-01-02");
  EXPECT_EQ(query.ProcessDateValue(ts4::ftDateTime, "2000-01-02", true), "2000-01-02 00:00:00");
  EXPECT_EQ(query.ProcessDateValue(ts4::ftTime, "2000-01-02", true), "2000-01-02");  // no time in it
  EXPECT_EQ(query.ProcessDateValue(ts4::ftTime, "9:15", true), "09:15:00");
  EXPECT_EQ(query.ProcessDateValue(ts4::ftString, "2000-01-02", true), "2000-01-02");
  EXPECT_EQ(query.ProcessDateValue(ts4::ftDate, ":Param", true), ":Param");
}

}  // namespace
