// Attachments on their way through temporary files.
#include <gtest/gtest.h>

#include "tests/mail/mail_test.h"

namespace qorv {
namespace {

using namespace test;
using Json = nlohmann::json;
using Names = std::vector<std::string>;

class MailAttachments : public MailTest {
 protected:
  /// A message with these attachments, name and data in base64.
  void put(const Json& attachments) {
    load(Json{{"mail", {{"Inbox", Json::array({{{"Id", 20}, {"Attachments", attachments}}})}}}}.dump());
  }
  static Json attachment(const std::string& name, const std::string& data) {
    return {{"Name", name}, {"Data", data}};
  }
  /// The lines of the attachment list: path, name, path, name ...
  Names lines() {
    Names found;
    const std::u16string text = read(20).text(kAttachments);
    std::istringstream in(std::string(text.begin(), text.end()));
    for (std::string line; std::getline(in, line);) found.push_back(line);
    EXPECT_TRUE(text.empty() || text.back() == u'\n') << "every line is ended";
    return found;
  }
  /// A device file.
  void putFile(const std::string& path, const std::string& base64) {
    load(Json{{"files", Json::array({{{"path", path}, {"data", base64}}})}}.dump());
  }
  /// A message with the attachments of a list; what the device then has.
  Json addWith(const std::u16string& list) {
    add(mailRecord(2).append(mailText(kSubject, u"x")).append(mailText(kAttachments, list)));
    return folder("Inbox").back()["Attachments"];
  }
};

TEST_F(MailAttachments, areReadIntoTemporaryFiles) {
  put({attachment("a.txt", "aGk="), attachment("b c.bin", "AAEC")});
  const Names found = lines();
  ASSERT_EQ(found.size(), 4u);
  for (const std::size_t path : {0u, 2u}) {
    EXPECT_TRUE(found[path].starts_with("\\temp\\QRV")) << found[path];
    EXPECT_TRUE(found[path].ends_with(".TMP")) << found[path];
  }
  EXPECT_NE(found[0], found[2]);
  EXPECT_EQ(found[1], "a.txt");
  EXPECT_EQ(found[3], "b c.bin");
  EXPECT_EQ(file(found[0]), "hi");
  EXPECT_EQ(file(found[2]), std::string("\0\1\2", 3));
}

TEST_F(MailAttachments, onlyTheFirst255AreRead) {
  Json all = Json::array();
  for (int i = 0; i < 256; ++i) all.push_back(attachment(std::to_string(i), ""));
  put(all);
  const Names found = lines();
  ASSERT_EQ(found.size(), 2u * 255u);
  EXPECT_EQ(found.back(), "254");
}

TEST_F(MailAttachments, callsToReadOneInTheirForm) {
  put(Json::array({attachment("a.txt", "aGk=")}));
  observeCalls();
  lines();
  EXPECT_EQ(calls("IMessage.GetAttachmentTable")[0]["args"], Json::array({0x80000000u}));
  EXPECT_EQ(calls("IMessage.OpenAttach")[0]["args"], Json::array({0, nullptr, 0}));
  EXPECT_EQ(calls("IAttach.OpenProperty")[0]["args"], Json::array({0x37010102, nullptr, 0, 0}));
  EXPECT_EQ(calls("IStream.Seek")[0]["args"], Json::array({0, 0}));
  EXPECT_EQ(calls("IStream.Read")[0]["args"], Json::array({2}));
  EXPECT_EQ(calls("GetTempPathW")[0]["args"], Json::array({260}));
  EXPECT_EQ(calls("GetTempFileNameW")[0]["args"], Json::array({"\\temp\\", "QRV", 0}));
  const Json create = calls("CreateFileW")[0]["args"];
  EXPECT_EQ(create[1], 0x40000000);
  EXPECT_EQ(create[2], 2);
  EXPECT_EQ(create[4], 2);
  EXPECT_EQ(create[5], 0x80);
  EXPECT_EQ(calls("WriteFile")[0]["args"][1], Json::parse(R"({"bytes": 2})"));
  EXPECT_EQ(calls("IAttach.GetProps")[0]["args"],
            Json::parse(R"([{"aulPropTag": [923009055], "cValues": 1}, 2147483648])"));  // 0x3704001F
}

TEST_F(MailAttachments, emptyOnesAndLargeOnesAreFilesToo) {
  // 150,000 zero bytes are 200,000 characters "A" in base64.
  put({attachment("none", ""), attachment("large", std::string(200000, 'A'))});
  const Names found = lines();
  ASSERT_EQ(found.size(), 4u);
  EXPECT_EQ(file(found[0]), "");
  EXPECT_EQ(file(found[2])->size(), 100000u) << "as much as was asked for";
}

TEST_F(MailAttachments, aFolderPathOfThreeCharactersBecomesADot) {
  put(Json::array({attachment("a.txt", "aGk=")}));
  load(R"({"files": [{"path": "\\t", "directory": true}],
           "registry": {"HKEY_LOCAL_MACHINE\\SYSTEM\\FileSys": {"TempPath": "\\t\\"}}})");
  observeCalls();
  EXPECT_EQ(lines(), Names());
  EXPECT_EQ(calls("GetTempFileNameW")[0]["args"][0], ".");
}

TEST_F(MailAttachments, withoutATemporaryNameTheUserIsToldAndTheListIsEmpty) {
  put({attachment("a.txt", "aGk="), attachment("b.txt", "aGk=")});
  observeCalls();
  fault("GetTempFileNameW=3*1");
  const Names found = lines();
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[1], "b.txt");
  ASSERT_EQ(calls("MessageBoxW").size(), 1u);
  EXPECT_EQ(calls("MessageBoxW")[0]["args"],
            Json::array({nullptr, "GetTempFileName\n failed", "CCEMail2", 0x10000}));
  EXPECT_EQ(calls("CreateFileW")[0]["args"][0], "");
  clearFaults();
  fault("GetTempFileNameW=3");
  EXPECT_EQ(read(20).text(kAttachments), u"") << "there is a list when there are attachments";
}

class SkippedAttachment : public MailAttachments, public testing::WithParamInterface<const char*> {};

TEST_P(SkippedAttachment, isLeftOutAndTheRestGoesOn) {
  put({attachment("a.txt", "aGk="), attachment("b.txt", "aG8=")});
  fault(GetParam());
  const Names found = lines();
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[1], "b.txt");
  clearFaults();
  EXPECT_EQ(file(found[0]), "ho");
}

INSTANTIATE_TEST_SUITE_P(Calls, SkippedAttachment,
                         testing::Values("IMessage.OpenAttach=0x80004005*1",
                                         "IAttach.OpenProperty=0x8004010F*1", "IStream.Stat=0x80004005*1",
                                         "IStream.Seek=0x80004005*1", "IStream.Read=0x80004005*1",
                                         "IAttach.GetProps=0x80004005*1", "CreateFileW=5*1",
                                         "WriteFile=112*1"));

TEST_F(MailAttachments, aFileThatCannotBeWrittenIsNotLeftEmpty) {
  put(Json::array({attachment("a.txt", "aGk=")}));
  observeCalls();
  fault("WriteFile=112");
  EXPECT_EQ(lines(), Names());
  EXPECT_EQ(calls("DeleteFileW")[0]["args"][0], calls("CreateFileW")[0]["args"][0]);
}

TEST_F(MailAttachments, onesWithoutANameAreLeftOut) {
  put(Json::array({attachment("", "aGk=")}));
  EXPECT_EQ(read(20).text(kAttachments), u"");
}

TEST_F(MailAttachments, areStoredFromTheirFilesWhichAreConsumed) {
  putFile("\\a.txt", "aGk=");
  EXPECT_EQ(addWith(u"1 6 \\a.txt5 a.txt"), Json::array({attachment("a.txt", "aGk=")}));
  EXPECT_EQ(file("\\a.txt"), std::nullopt);
}

TEST_F(MailAttachments, callsToStoreOneInTheirOrder) {
  putFile("\\a.txt", "aGk=");
  observeCalls();
  addWith(u"1 6 \\a.txt5 b.txt");
  const Names all = callNames();
  Names names(std::ranges::find(all, "wcstol"), all.end());
  names.erase(std::ranges::find(names, "IRAPIStream.Write"), names.end());
  EXPECT_EQ(names, (Names{"wcstol", "wcstol", "wcstol", "IMessage.CreateAttach", "IAttach.SetProps",
                          "IAttach.OpenProperty", "CreateFileW", "ReadFile", "IStream.Write", "CloseHandle",
                          "DeleteFileW", "IStream.Release", "IAttach.Release", "IMessage.Release"}));
  EXPECT_EQ(calls("IMessage.CreateAttach")[0]["args"], Json::array({nullptr, 0}));
  EXPECT_EQ(calls("IAttach.SetProps")[0]["args"][1][0]["ulPropTag"], 0x3704001F);
  EXPECT_EQ(calls("IAttach.SetProps")[0]["args"][1][0]["Value"], "b.txt");
  EXPECT_EQ(calls("IAttach.OpenProperty")[0]["args"], Json::array({0x37010102, nullptr, 0, 3}));
  const Json create = calls("CreateFileW")[0]["args"];
  EXPECT_EQ(create, Json::array({"\\a.txt", 0x80000000u, 1, nullptr, 3, 0x80, create[6]}));
  EXPECT_EQ(calls("DeleteFileW")[0]["args"], Json::array({"\\a.txt"}));
  EXPECT_EQ(callNames("IMessage.SaveChanges").size(), 1u) << "not once more after the attachments";
}

TEST_F(MailAttachments, areCopiedInBlocksOf1024BytesUntilOneIsShort) {
  struct Copy {
    std::size_t triples;  ///< of bytes, four characters each in base64
    std::size_t reads;
  };
  // 0, 3, 1023, 1026 and 3072 bytes.
  for (const Copy copy : {Copy{0, 1}, Copy{1, 1}, Copy{341, 1}, Copy{342, 2}, Copy{1024, 4}}) {
    const std::string data(copy.triples * 4, 'A');
    putFile("\\a.bin", data);
    observeCalls();
    add(mailRecord(1).append(mailText(kAttachments, u"1 6 \\a.bin1 b")));
    EXPECT_EQ(callNames("ReadFile").size(), copy.reads) << copy.triples;
    EXPECT_EQ(folder("Inbox").back()["Attachments"][0]["Data"], data) << copy.triples;
  }
}

TEST_F(MailAttachments, oneWithoutAFileStaysWithoutDataAndTheRestGoesOn) {
  putFile("\\b.txt", "aG8=");
  EXPECT_EQ(addWith(u"3 6 \\a.txt1 a6 \\b.txt1 b0 1 c"),
            Json::array({attachment("a", ""), attachment("b", "aG8="), attachment("c", "")}));
}

TEST_F(MailAttachments, absurdListsAreAnsweredAndLeaveTheRest) {
  putFile("\\b.txt", "aG8=");
  EXPECT_EQ(addWith(u"99999999 6 \\b.txt1 b-5 \\c"), Json::array({attachment("b", "aG8=")}));
  for (const char16_t* list : {u"", u"-1 6 \\b.txt1 b", u"2147483647", u"1 2147483647 \\b.txt1 b", u"x"}) {
    EXPECT_EQ(addWith(list), Json::array())
        << std::string(list, list + std::char_traits<char16_t>::length(list));
  }
}

TEST_F(MailAttachments, aFileThatDidNotArriveWholeIsKept) {
  for (const char* rule : {"IAttach.OpenProperty=0x80004005", "ReadFile=5*1", "IStream.Write=0x80004005"}) {
    putFile("\\b.txt", "aG8=");
    fault(rule);
    add(mailRecord(1).append(mailText(kAttachments, u"1 6 \\b.txt1 b")));
    clearFaults();
    EXPECT_EQ(file("\\b.txt"), "ho") << rule;
  }
}

TEST_F(MailAttachments, oneThatCannotBeMadeLeavesItsFile) {
  putFile("\\a.txt", "aGk=");
  putFile("\\b.txt", "aG8=");
  fault("IMessage.CreateAttach=0x80004005*1");
  EXPECT_EQ(addWith(u"2 6 \\a.txt1 a6 \\b.txt1 b"), Json::array({attachment("b", "aG8=")}));
  EXPECT_EQ(file("\\a.txt"), "hi");
}

TEST_F(MailAttachments, aChangeAddsToThoseOfTheMessage) {
  put(Json::array({attachment("a.txt", "aGk=")}));
  putFile("\\b.txt", "aG8=");
  reply(request(3, kMail).u32(20).append(mailRecord(1).append(mailText(kAttachments, u"1 6 \\b.txt1 b"))));
  EXPECT_EQ(folder("Inbox")[0]["Attachments"],
            Json::array({attachment("a.txt", "aGk="), attachment("b", "aG8=")}));
}

}  // namespace
}  // namespace qorv
