#include <cmath>
#include <gtest/gtest.h>

#include "emulator/snapshot/base64.h"
#include "emulator/snapshot/json_path.h"
#include "emulator/snapshot/time_text.h"

namespace emulator {
namespace {

Bytes bytesOf(std::string_view text) {
  return Bytes(text.begin(), text.end());
}

TEST(Base64, writesAndReadsThePublishedExamples) {
  // The test vectors of RFC 4648, section 10.
  const std::pair<std::string_view, std::string_view> examples[] = {{"", ""},
                                                                    {"f", "Zg=="},
                                                                    {"fo", "Zm8="},
                                                                    {"foo", "Zm9v"},
                                                                    {"foob", "Zm9vYg=="},
                                                                    {"fooba", "Zm9vYmE="},
                                                                    {"foobar", "Zm9vYmFy"}};
  for (const auto& [plain, text] : examples) {
    EXPECT_EQ(toBase64(bytesOf(plain)), text);
    EXPECT_EQ(fromBase64(text), bytesOf(plain)) << text;
  }
}

TEST(Base64, usesTheWholeAlphabet) {
  // 0xFB 0xFF 0xBF is 62, 63, 62, 63 in groups of six bits.
  EXPECT_EQ(toBase64(Bytes{0xFB, 0xFF, 0xBF}), "+/+/");
  EXPECT_EQ(fromBase64("+/+/"), (Bytes{0xFB, 0xFF, 0xBF}));
}

TEST(Base64, refusesWhatItWouldNotWrite) {
  for (const char* text :
       {"Z", "Zg", "Zg=", "Zg===", "Z===", "====", "Zm9v\n", "Zm 9", "Zm-_", "=Zg=", "Zg==Zg==",
        // Bits behind the last byte.
        "Zh==", "Zm9="}) {
    EXPECT_EQ(fromBase64(text), std::nullopt) << text;
  }
}

TEST(LocalTime, isCountedInDaysFrom1899_12_30) {
  EXPECT_EQ(parseLocal("1899-12-30T00:00:00.000"), 0.0);
  EXPECT_EQ(parseLocal("1900-01-01T12:00:00.000"), 2.5);
  // 2005-03-14 is 38425 days after 1899-12-30; noon and 9:00 are binary fractions of a day.
  EXPECT_EQ(parseLocal("2005-03-14T09:00:00.000"), 38425.375);
  EXPECT_EQ(localText(38425.375), "2005-03-14T09:00:00.000");
}

TEST(LocalTime, countsTheTimeForwardBeforeTheFirstDayToo) {
  // Six hours into the day before the first one: the whole part goes back, the fraction forward.
  EXPECT_EQ(parseLocal("1899-12-29T06:00:00.000"), -1.25);
  EXPECT_EQ(localText(-1.25), "1899-12-29T06:00:00.000");
}

TEST(LocalTime, keepsMilliseconds) {
  for (const char* text : {"2005-03-14T14:35:10.250", "2999-12-31T23:59:59.999", "1970-01-01T00:00:00.001"}) {
    EXPECT_EQ(localText(parseLocal(text).value()), text);
  }
  // Half a millisecond before midnight is nearer to the next day.
  EXPECT_EQ(localText(38426 - 0.4 / 86400000), "2005-03-15T00:00:00.000");
}

TEST(LocalTime, refusesAnyOtherForm) {
  for (const char* text :
       {"", "2005-03-14", "2005-03-14T09:00:00", "2005-03-14T09:00:00.0000", "2005-03-14 09:00:00.000",
        "2005-03-14T09:00:00.000Z", "2005-02-29T09:00:00.000", "2005-13-01T00:00:00.000",
        "2005-00-01T00:00:00.000", "2005-03-14T24:00:00.000", "2005-03-14T09:60:00.000",
        "2005-03-14T09:00:60.000", "+005-03-14T09:00:00.000", "2005-03-14T09:00:00,000"}) {
    EXPECT_EQ(parseLocal(text), std::nullopt) << text;
  }
}

TEST(UtcTime, isCountedFrom1601) {
  EXPECT_EQ(parseUtc("1601-01-01T00:00:00.000Z"), 0);
  // The Unix epoch is 11644473600 seconds later.
  EXPECT_EQ(parseUtc("1970-01-01T00:00:00.001Z"), 11644473600 * kTicksPerSecond + kTicksPerMillisecond);
  EXPECT_EQ(utcText(11644473600 * kTicksPerSecond + 2 * kTicksPerMillisecond - 1),
            "1970-01-01T00:00:00.001Z");
}

TEST(UtcTime, refusesAnyOtherForm) {
  for (const char* text : {"", "Z", "1970-01-01T00:00:00.000", "1970-01-01T00:00:00.000z",
                           "1970-01-01T00:00:00Z", "1600-12-31T23:59:59.999Z", "1970-02-30T00:00:00.000Z"}) {
    EXPECT_EQ(parseUtc(text), std::nullopt) << text;
  }
}

TEST(JsonPath, setsPlainNamesOffWithDotsAndOthersInBrackets) {
  std::string path;
  appendKey(path, "mail");
  appendKey(path, "Sent Items");
  appendIndex(path, 3);
  appendKey(path, "Subject");
  EXPECT_EQ(path, R"(mail["Sent Items"][3].Subject)");
}

TEST(JsonPath, isOneLineWhateverTheKey) {
  std::string path;
  appendKey(path, "two\nlines");
  appendKey(path, "");
  EXPECT_EQ(path, R"(["two\nlines"][""])");
}

}  // namespace
}  // namespace emulator
