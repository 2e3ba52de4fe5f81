#include "tests/emulator/messaging_test.h"

#include <cstring>

#include "emulator/seam/libraries.h"

namespace emulator::test {

EntryBytes entryOf(const SPropValue& value) {
  if ((value.ulPropTag & 0xFFFF) != PT_BINARY) return {};
  return {value.Value.bin.lpb, value.Value.bin.lpb + value.Value.bin.cb};
}

std::uint32_t wordOf(const EntryBytes& entry, std::size_t offset) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i) word |= std::uint32_t{entry.at(offset + i)} << (8 * i);
  return word;
}

MessagingTest::MessagingTest(const std::string& snapshot) {
  load(snapshot);
  provideLibraries(device());
  current_.emplace(device());
  library_ = LoadLibraryW(u"CEMAPI.DLL");
}

MessagingTest::~MessagingTest() {
  EXPECT_EQ(device().messaging.liveObjects().total(), 0u);
  EXPECT_EQ(device().memory.liveBlocks(), 0u);
}

ComReference<IMAPISession> MessagingTest::logon() {
  ComReference<IMAPISession> session;
  const auto logonEx = reinterpret_cast<MAPILogonEx_t>(GetProcAddressW(library_, u"MAPILogonEx"));
  EXPECT_EQ(logonEx(0, nullptr, nullptr, 0, session.out()), S_OK);
  return session;
}

ComReference<IMsgStore> MessagingTest::store() {
  ComReference<IMsgStore> store;
  EXPECT_EQ(logon()->OpenMsgStore(0, 0, nullptr, nullptr, 0, store.out()), S_OK);
  return store;
}

ComReference<IMAPIFolder> MessagingTest::folder(PropertyTag tag, ULONG flags) {
  auto opened = store();
  return open<IMAPIFolder>(*opened.get(), entryProperty(*opened.get(), tag), flags, MAPI_FOLDER);
}

ComReference<IMAPITable> MessagingTest::contents(PropertyTag folderTag) {
  ComReference<IMAPITable> table;
  EXPECT_EQ(folder(folderTag)->GetContentsTable(0, table.out()), S_OK);
  return table;
}

std::vector<EntryBytes> MessagingTest::entries(PropertyTag folderTag) {
  auto table = contents(folderTag);
  EXPECT_EQ(table->SetColumns(Tags{PR_ENTRYID}, 0), S_OK);
  std::vector<EntryBytes> entries;
  const Rows all = rows(*table.get(), 1000000);
  for (std::size_t row = 0; row < all.size(); ++row) entries.push_back(entryOf(all.at(row, 0)));
  return entries;
}

std::vector<Oid> MessagingTest::ids(PropertyTag folderTag) {
  std::vector<Oid> ids;
  for (const EntryBytes& entry : entries(folderTag)) ids.push_back(wordOf(entry, 4));
  return ids;
}

ComReference<IMessage> MessagingTest::message(PropertyTag folderTag, std::size_t place, ULONG flags) {
  return open<IMessage>(*store().get(), entries(folderTag).at(place), flags, MAPI_MESSAGE);
}

EntryBytes MessagingTest::entryProperty(IMAPIProp& object, PropertyTag tag) {
  Values values;
  EXPECT_EQ(object.GetProps(Tags{tag}, MAPI_UNICODE, values.count(), values.out()), S_OK);
  return values.size() == 1 ? entryOf(values[0]) : EntryBytes();
}

Rows MessagingTest::rows(IMAPITable& table, LONG count) {
  SRowSet* rows = poison<SRowSet>();
  EXPECT_EQ(table.QueryRows(count, 0, &rows), S_OK);
  return Rows(rows);
}

ULONG MessagingTest::rowCount(IMAPITable& table) {
  ULONG count = kPoison;
  EXPECT_EQ(table.GetRowCount(0, &count), S_OK);
  return count;
}

ComReference<IStream> MessagingTest::stream(IMAPIProp& object, PropertyTag tag, ULONG flags) {
  ComReference<IStream> stream;
  IUnknown* opened = poison<IUnknown>();
  EXPECT_EQ(object.OpenProperty(tag, nullptr, 0, flags, &opened), S_OK);
  *stream.out() = static_cast<IStream*>(opened);
  return stream;
}

std::string MessagingTest::readAll(IStream& stream) {
  STATSTG statistics;
  std::memset(static_cast<void*>(&statistics), 0xDB, sizeof statistics);
  EXPECT_EQ(stream.Stat(&statistics, STATFLAG_NONAME), S_OK);
  std::string bytes(static_cast<std::uint64_t>(statistics.cbSize), '?');
  ULONG moved = kPoison;
  EXPECT_EQ(stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &moved), S_OK);
  EXPECT_EQ(moved, bytes.size());
  return bytes;
}

void MessagingTest::write(IStream& stream, std::string_view bytes) {
  ULONG moved = kPoison;
  EXPECT_EQ(stream.Write(bytes.data(), static_cast<ULONG>(bytes.size()), &moved), S_OK);
  EXPECT_EQ(moved, bytes.size());
}

}  // namespace emulator::test
