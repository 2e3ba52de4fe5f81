// Runs each kind of request once per call that it makes, and lets that call fail: once, and from then on.
// Every request is answered, the session goes on, and nothing is left behind.
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "tests/mail/mail_test.h"

namespace qorv {
namespace {

using namespace test;

constexpr const char* kMailbox = R"({"files": [{"path": "\\a.txt", "data": "aGk="}], "mail": {
    "Inbox": [{"Id": 20, "Sender": "ann@x", "To": ["bo@y", "cy@z"], "Cc": ["di@y"], "Bcc": ["ed@y"],
               "Subject": "Hi", "Delivered": "2005-03-14T13:35:10.250Z", "Body": "Yo", "Where": "Room",
               "Attachments": [{"Name": "a.txt", "Data": "aGk="}]}],
    "Drafts": [{"Id": 21}], "Deleted Items": [{"Id": 22}]}})";

Bytes message() {
  return mailRecord(6)
      .append(mailText(kSender, u"ann@x"))
      .append(mailText(kTo, u"bo@y"))
      .append(mailText(kBcc, u"cy@z"))
      .append(Bytes().u32(kDelivered).time(2005, 3, 0, 14, 13))
      .append(mailText(kBody, u"Yo"))
      .append(mailText(kAttachments, u"1 6 \\a.txt5 a.txt"));
}

/// An addition and a change.
Bytes writeList() {
  return request(15, kMail).u32(2).u8(2).u8(4).u32(7).append(message()).u8(3).u8(4).u32(20).append(message());
}

struct Case {
  const char* name;
  Bytes request;
};

void PrintTo(const Case& each, std::ostream* out) {
  *out << each.name;
}

/// Giving back is what these do; when they fail what they were given is rightly left.
bool givesBack(const std::string& call) {
  static const std::set<std::string> kCalls{"CloseHandle", "RegCloseKey", "LocalFree", "MAPIFreeBuffer",
                                            "FreeProws"};
  return call.ends_with(".Release") || kCalls.contains(call);
}

class EveryFault : public MailTest, public testing::WithParamInterface<Case> {
 protected:
  /// The calls of a request, with how often each is made; those of the session around it are left out.
  std::map<std::string, int> callsOfRequest() {
    observeCalls();
    load(kMailbox);
    reply(GetParam().request);
    std::map<std::string, int> counts;
    bool isWithin = false;
    for (const std::string& name : callNames()) {
      if (name == "MAPILogonEx") isWithin = true;
      if (name == "IRAPIStream.Write") break;
      if (isWithin) ++counts[name];
    }
    return counts;
  }

  void expectNothingLeft(const std::string& rule) {
    const emulator::LiveObjects& mail = device().messaging.liveObjects();
    EXPECT_EQ(mail.total(), mail.count(emulator::ModelClass::MailFolder)) << rule;
    EXPECT_EQ(device().memory.liveBlocks(), 0u) << rule;
    EXPECT_EQ(device().handles.count<emulator::KernelObject>(), 0u) << rule;
  }

  void runWith(const std::string& rule) {
    // Whatever the run before left of the messages is made anew.
    load(kMailbox);
    load(R"({"deleted": [20, 21, 22]})");
    load(kMailbox);
    fault(rule);
    const auto replies = session({GetParam().request, request(20, 1)});
    clearFaults();
    ASSERT_EQ(replies.size(), 2u) << rule;
    EXPECT_EQ(replies[1], hex("01000000")) << rule << ": the session goes on";
    expectNothingLeft(rule);
  }
};

TEST_P(EveryFault, isAnsweredAndLeavesNothing) {
  const auto counts = callsOfRequest();
  ASSERT_GT(counts.size(), 5u);
  for (const auto& [call, count] : counts) {
    // Without the library's own functions nothing can be given back: messaging_library_test.cpp has those.
    if (givesBack(call) || call == "GetProcAddressW") continue;
    for (int nth = 1; nth <= count; ++nth) {
      const std::string first = call + "#" + std::to_string(nth);
      runWith(first + "=0x80004005*1");
      runWith(first + "=0x80004005");
      // A success without what the call should have given.
      runWith(first + "=0*1");
      if (HasFatalFailure()) return;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Requests, EveryFault,
                         testing::Values(Case{"Read", request(7, kMail).u32(20)},
                                         Case{"Add", request(2, kMail).u32(7).append(message())},
                                         Case{"Change", request(3, kMail).u32(20).append(message())},
                                         Case{"Delete", request(4, kMail).u32(21)},
                                         Case{"DeleteAll", request(5, kMail)},
                                         Case{"Count", request(6, kMail)}, Case{"List", request(13, kMail)},
                                         Case{"Changes", request(11, kMail).text(u"PC")},
                                         Case{"Commit", request(12, kMail).text(u"PC")},
                                         Case{"WriteList", writeList()},
                                         Case{"ReadList", request(16, kMail).u32(3).u32(20).u32(7).u32(21)},
                                         Case{"DeleteList", request(17, kMail).u32(2).u32(21).u32(7)}),
                         [](const auto& each) { return each.param.name; });

}  // namespace
}  // namespace qorv
