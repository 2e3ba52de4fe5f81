#include "desktop/attachment_list.h"

#include <gtest/gtest.h>

namespace {

using namespace desktop;
using List = std::vector<AttachedFile>;

TEST(AttachmentList, fromTheDeviceHasPathsAndNamesInTurns) {
  const List files = readAttachmentList(u"\\Temp\\QRV1.tmp\na.txt\n\\Temp\\QRV2.TMP\nÜ 2.bin\n");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].path, u"\\Temp\\QRV1.tmp");
  EXPECT_EQ(files[0].name, u"a.txt");
  EXPECT_EQ(files[1].path, u"\\Temp\\QRV2.TMP");
  EXPECT_EQ(files[1].name, u"Ü 2.bin");
}

TEST(AttachmentList, withoutEntriesTellsThatThereAreFilesThatCannotBeHad) {
  const List files = readAttachmentList(u"");
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].path, u"");
  EXPECT_EQ(files[0].name, u"");
}

TEST(AttachmentList, keepsALineEndInAName) {
  const List files = readAttachmentList(u"\\Temp\\QRV1.tmp\nline\none\n\\Temp\\QRV2.tmp\nb\n");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[0].name, u"line\none");
  EXPECT_EQ(files[1].name, u"b");
}

TEST(AttachmentList, takesNoNameForAPathOfAnotherFolder) {
  const List files = readAttachmentList(u"\\Temp\\QRV1.tmp\na\n\\My Documents\\QRV2.tmp\n");
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].name, u"a\n\\My Documents\\QRV2.tmp");
}

TEST(AttachmentList, thatBeginsWithNoTemporaryFileGivesNone) {
  const List files = readAttachmentList(u"\\Windows\\system.dll\na\n");
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].path, u"");
}

TEST(AttachmentList, cutShortStillNamesItsPaths) {
  const List files = readAttachmentList(u"\\Temp\\QRV1.tmp\na\n\\Temp\\QRV2.tmp");
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(files[1].path, u"\\Temp\\QRV2.tmp");
}

TEST(AttachmentList, toTheDeviceHasLengthsBeforeItsTexts) {
  EXPECT_EQ(writeAttachmentList({{u"a.txt", {}, u"\\a.txt"}}), u"1 6 \\a.txt5 a.txt");
  EXPECT_EQ(writeAttachmentList({{u"one", {}, u"\\x"}, {u"Ü", {}, u"\\Temp\\y"}}),
            u"2 2 \\x3 one7 \\Temp\\y1 Ü");
}

}  // namespace
