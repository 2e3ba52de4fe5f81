#include "pim/long_body.h"

#include <gtest/gtest.h>

#include "emulator/seam/current_device.h"
#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"

namespace qorv {
namespace {

using namespace test;

class LongBody : public AgentTest {
 protected:
  DWORD addWithBody(const std::u16string& body) {
    return reply(request(2, kAppointment).u32(1).append(record(1).append(textField(9, body)))).dwordAt(2);
  }
  std::u16string bodyOf(DWORD oid) { return textOf(outlook(), *appointment(oid), &IAppointment::get_Body); }
};

TEST_F(LongBody, of4095CharactersIsPut) {
  observeCalls();
  const DWORD oid = addWithBody(std::u16string(4095, u'b'));
  EXPECT_EQ(callNames("IAppointment.put_Body").size(), 1u);
  EXPECT_TRUE(callNames("IItem.OpenProperty").empty());
  EXPECT_EQ(bodyOf(oid), std::u16string(4095, u'b'));
}

TEST_F(LongBody, of4096CharactersIsWrittenThroughTheStreamAfterTheSave) {
  observeCalls();
  const DWORD oid = addWithBody(std::u16string(4096, u'b'));
  EXPECT_TRUE(callNames("IAppointment.put_Body").empty());
  const auto opened = calls("IItem.OpenProperty");
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0]["args"], nlohmann::json::parse("[1966180, 1073741824]"));  // 0x001E0064, GENERIC_WRITE
  EXPECT_EQ(calls("IStream.Write")[0]["args"], nlohmann::json::parse(R"([{"bytes": 4096}, 4096])"));
  EXPECT_EQ(callNames("IStream.Commit").size(), 1u);
  EXPECT_EQ(callNames("IItem.Save").size(), 1u);
  EXPECT_EQ(bodyOf(oid), std::u16string(4096, u'b'));
}

TEST_F(LongBody, arrivesAsAnsiText) {
  // The euro sign is in code page 1252; the Greek letter becomes its default character.
  std::u16string body(5000, u'x');
  body[0] = u'\u20AC';
  body[1] = u'\u03A9';
  std::u16string expected = body;
  expected[1] = u'?';
  EXPECT_EQ(bodyOf(addWithBody(body)), expected);
}

TEST_F(LongBody, theRoomForTheConversionHasNoneForTheTerminator) {
  observeCalls();
  addWithBody(std::u16string(4096, u'b'));
  const auto conversion = calls("WideCharToMultiByte");
  ASSERT_EQ(conversion.size(), 1u);
  // The conversion of 4097 characters into 4096 bytes is reported as too small; what it stored counts.
  EXPECT_EQ(conversion[0]["result"], 0);
}

class FailingLongBody : public LongBody, public testing::WithParamInterface<const char*> {};

TEST_P(FailingLongBody, leavesTheSavedItemWithoutItsBody) {
  fault(GetParam());
  const DWORD oid = addWithBody(std::u16string(4096, u'b'));
  EXPECT_NE(oid, 0u);
  EXPECT_EQ(bodyOf(oid), u"");
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingLongBody,
                         testing::Values("IPOutlookApp.GetItemFromOid=0x80070057",
                                         "IItem.OpenProperty=0x80004005", "IStream.Write=0x80030005",
                                         "IStream.Commit=0x80030005", "IItem.Save=0x80004005"));

TEST_F(LongBody, aConversionThatYieldsNothingLeavesTheBodyThatIsThere) {
  const DWORD oid = addWithBody(std::u16string(5000, u'a'));
  fault("WideCharToMultiByte=1113");
  reply(request(3, kAppointment).u32(oid).append(record(1).append(textField(9, std::u16string(6000, u'b')))));
  EXPECT_EQ(bodyOf(oid), std::u16string(5000, u'a'));
}

TEST_F(LongBody, tellsWhetherItSucceeded) {
  const DWORD oid = addWithBody(u"short");
  const emulator::CurrentDevice current(device());
  const std::u16string text(4096, u'b');
  EXPECT_TRUE(WriteLongBody(outlook(), nullptr, static_cast<LONG>(oid)));
  EXPECT_TRUE(WriteLongBody(outlook(), u"short", 4711));
  EXPECT_TRUE(WriteLongBody(outlook(), text.c_str(), static_cast<LONG>(oid)));
  EXPECT_FALSE(WriteLongBody(outlook(), text.c_str(), 4711));
}

}  // namespace
}  // namespace qorv
