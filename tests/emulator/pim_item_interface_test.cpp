// The property interface of items: values by their identifiers, the stored recurrence, the body as a stream.
#include <cstring>

#include "emulator/pim/ansi_text.h"
#include "platform/files.h"
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;

class ItemInterface : public test::PimTest {
 protected:
  /// The one value asked for, in a block that the test must free.
  CEPROPVAL* get(IItem& item, CEPROPID id) {
    auto* values = reinterpret_cast<CEPROPVAL*>(1);
    ULONG size = 0;
    EXPECT_EQ(item.GetProps(&id, CEDB_ALLOWREALLOC, 1, &values, &size, heap_), S_OK);
    EXPECT_GE(size, sizeof(CEPROPVAL));
    EXPECT_EQ(values->propid, id);
    return values;
  }

  std::vector<std::uint8_t> blob(IUnknown* object, CEPROPID id) {
    auto item = as<IItem>(object);
    CEPROPVAL* values = get(*item.get(), id);
    std::vector<std::uint8_t> bytes;
    EXPECT_EQ(values->wFlags & CEDB_PROPNOTFOUND, 0);
    if (values->wFlags == 0)
      bytes.assign(values->val.blob.lpb, values->val.blob.lpb + values->val.blob.dwCount);
    EXPECT_TRUE(memory_.freeBlock(heap_, values));
    return bytes;
  }

  static std::uint32_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t offset) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + offset, sizeof word);
    return word;
  }

  ComReference<IStream> open(IItem& item, DWORD mode) {
    ComReference<IStream> stream;
    EXPECT_EQ(item.OpenProperty(PIMPR_BODY_BINARY, mode, stream.out()), S_OK);
    return stream;
  }
};

TEST_F(ItemInterface, givesTheStoredRecurrenceOfTheWorkedExample) {
  // Mondays, Thursdays and Fridays from 2007-03-26, 10:00 to 10:30, 12 times; the bytes are those of the
  // public description's example.
  const std::vector<std::uint8_t> expected{
      0x04, 0x30, 0x04, 0x30, 0x0B, 0x20, 0x01, 0x00, 0x00, 0x00, 0xC0, 0x21, 0x00, 0x00, 0x01, 0x00,
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x32, 0x00, 0x00, 0x00, 0x22, 0x20, 0x00, 0x00, 0x0C, 0x00,
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x80, 0x20,
      0xBC, 0x0C, 0x20, 0xAD, 0xBC, 0x0C, 0x06, 0x30, 0x00, 0x00, 0x09, 0x30, 0x00, 0x00, 0x58, 0x02,
      0x00, 0x00, 0x76, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
  auto appointment = savedAppointment(date(2007, 3, 26, 10));
  EXPECT_EQ(appointment->put_End(date(2007, 3, 26, 10, 30)), S_OK);
  auto weekly = pattern(appointment);
  EXPECT_EQ(weekly->put_DayOfWeekMask(2 + 16 + 32), S_OK);
  EXPECT_EQ(weekly->put_Occurrences(12), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  EXPECT_EQ(blob(appointment.get(), kAppointmentRecurrenceProperty), expected);
}

TEST_F(ItemInterface, tellsHowASeriesEnds) {
  auto appointment = savedAppointment(date(2005, 3, 14, 9));
  auto weekly = pattern(appointment);
  const auto endType = [&](std::size_t offset) {
    EXPECT_EQ(appointment->Save(), S_OK);
    return wordAt(blob(appointment.get(), kAppointmentRecurrenceProperty), offset);
  };
  EXPECT_EQ(endType(26), 0x2023u);
  weekly->put_Occurrences(3);
  EXPECT_EQ(endType(26), 0x2022u);
  weekly->put_PatternEndDate(date(2005, 3, 28));
  EXPECT_EQ(endType(26), 0x2021u);
  weekly->put_RecurrenceType(olRecursDaily);
  EXPECT_EQ(endType(22), 0x2021u);
  weekly->put_RecurrenceType(olRecursYearly);
  EXPECT_EQ(endType(26), 0x2021u);
  weekly->put_RecurrenceType(olRecursMonthNth);
  EXPECT_EQ(endType(30), 0x2021u);
}

TEST_F(ItemInterface, listsExceptionsInTheStoredRecurrence) {
  auto series = savedSeries(5);
  auto weekly = pattern(series);
  auto moved = occurrence(weekly, date(2005, 3, 28));
  EXPECT_EQ(moved->put_Start(date(2005, 3, 30, 9)), S_OK);
  ASSERT_EQ(moved->Save(), S_OK);
  ASSERT_EQ(occurrence(weekly, date(2005, 3, 21))->Delete(), S_OK);
  // Two dates replaced, on 21 and 28 March; one of them went to 30 March. In minutes from 1601, day 147637 x
  // 1440, day 147644 x 1440 and day 147646 x 1440.
  const auto bytes = blob(series.get(), kAppointmentRecurrenceProperty);
  EXPECT_EQ(wordAt(bytes, 38), 2u);
  EXPECT_EQ(wordAt(bytes, 42), 147637u * 1440);
  EXPECT_EQ(wordAt(bytes, 46), 147644u * 1440);
  EXPECT_EQ(wordAt(bytes, 50), 1u);
  EXPECT_EQ(wordAt(bytes, 54), 147646u * 1440);
}

TEST_F(ItemInterface, givesATasksRecurrenceUnderItsOwnIdentifier) {
  auto task = newTask();
  ComReference<IRecurrencePattern> weekly;
  ASSERT_EQ(task->GetRecurrencePattern(weekly.out()), S_OK);
  ASSERT_EQ(task->Save(), S_OK);
  EXPECT_EQ(blob(task.get(), kTaskRecurrenceProperty).size(), 54u);  // no times of day behind the pattern
  auto item = as<IItem>(task.get());
  CEPROPVAL* value = get(*item.get(), kAppointmentRecurrenceProperty);
  EXPECT_EQ(value->wFlags, CEDB_PROPNOTFOUND);
  memory_.freeBlock(heap_, value);
}

TEST_F(ItemInterface, saysWhichValuesAreNotThere) {
  auto appointment = savedAppointment(date(2005, 3, 14));
  auto item = as<IItem>(appointment.get());
  const CEPROPID ids[] = {0x0020001F, kAppointmentRecurrenceProperty, 0x12340003, 0x10000066, 0x00450013,
                          0x0028000B};
  CEPROPVAL* values = nullptr;
  ULONG size = 0;
  ASSERT_EQ(item->GetProps(ids, CEDB_ALLOWREALLOC, 6, &values, &size, heap_), S_OK);
  EXPECT_EQ(std::u16string(values[0].val.lpwstr), u"Standup");
  EXPECT_EQ(values[1].wFlags, CEDB_PROPNOTFOUND);
  EXPECT_EQ(values[2].wFlags, CEDB_PROPNOTFOUND);
  EXPECT_EQ(static_cast<LONG>(values[3].val.ulVal), number(appointment, &IAppointment::get_Oid));
  EXPECT_EQ(values[4].val.lVal, olBusy);
  EXPECT_EQ(values[5].val.boolVal, FALSE);
  EXPECT_EQ(memory_.liveBlocks(), 1u);
  EXPECT_FALSE(memory_.freeBlock(nullptr, values));  // another heap's
  EXPECT_TRUE(memory_.freeBlock(heap_, values));
}

TEST_F(ItemInterface, hasNoValuesBeforeTheFirstSave) {
  auto appointment = newAppointment();
  auto item = as<IItem>(appointment.get());
  const CEPROPID id = 0x0020001F;
  auto* values = reinterpret_cast<CEPROPVAL*>(1);
  ULONG size = 1;
  EXPECT_EQ(item->GetProps(&id, CEDB_ALLOWREALLOC, 1, &values, &size, heap_), MAPI_W_ERRORS_RETURNED);
  EXPECT_EQ(values, nullptr);
  EXPECT_EQ(size, 0u);
}

TEST_F(ItemInterface, refusesWhatItCannotAnswer) {
  auto appointment = savedAppointment(date(2005, 3, 14));
  auto item = as<IItem>(appointment.get());
  const CEPROPID id = 0x0020001F;
  CEPROPVAL* values = nullptr;
  ULONG size = 0;
  EXPECT_EQ(item->GetProps(&id, 0, 1, &values, &size, heap_), E_INVALIDARG);
  EXPECT_EQ(item->GetProps(nullptr, CEDB_ALLOWREALLOC, 1, &values, &size, heap_), E_INVALIDARG);
  EXPECT_EQ(item->GetProps(&id, CEDB_ALLOWREALLOC, 1, nullptr, &size, heap_), E_POINTER);
  ComReference<IStream> stream;
  EXPECT_EQ(item->OpenProperty(0x0020001F, GENERIC_READ, stream.out()), E_INVALIDARG);
}

TEST_F(ItemInterface, setsValuesThatAreStoredBySave) {
  auto appointment = savedAppointment(date(2005, 3, 14));
  auto item = as<IItem>(appointment.get());
  std::u16string location = u"Room 3";
  CEPROPVAL values[2]{};
  values[0].propid = 0x0041001F;
  values[0].val.lpwstr = location.data();
  values[1].propid = 0x00210013;
  values[1].val.lVal = olPrivate;
  EXPECT_EQ(item->SetProps(0, 2, values), S_OK);
  EXPECT_EQ(item->Save(), S_OK);
  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  EXPECT_EQ(text(again, &IAppointment::get_Location), u"Room 3");
  EXPECT_EQ(number(again, &IAppointment::get_Sensitivity), olPrivate);
  values[0].propid = 0x12340003;
  EXPECT_EQ(item->SetProps(0, 1, values), E_INVALIDARG);
}

TEST_F(ItemInterface, savesAndDeletesLikeTheItemsOwnInterface) {
  auto contact = newContact();
  auto item = as<IItem>(contact.get());
  EXPECT_EQ(item->Save(), S_OK);
  const LONG oid = number(item, &IItem::get_Oid);
  EXPECT_EQ(oid, number(contact, &IContact::get_Oid));
  EXPECT_EQ(item->Delete(), S_OK);
  EXPECT_FALSE(find<IContact>(oid));
}

TEST_F(ItemInterface, writesTheBodyAsAnsiTextThatReadsBack) {
  for (const std::size_t length : {std::size_t{5}, std::size_t{70000}}) {
    auto appointment = savedAppointment(date(2005, 3, 14));
    const LONG oid = number(appointment, &IAppointment::get_Oid);
    put(appointment, &IAppointment::put_Body, u"an older and longer body");
    ASSERT_EQ(appointment->Save(), S_OK);
    auto writer = find<IAppointment>(oid);
    auto item = as<IItem>(writer.get());
    auto stream = open(*item.get(), GENERIC_WRITE);
    std::vector<std::uint8_t> bytes(length, 0xE9);
    bytes[0] = 0x80;
    ULONG written = 0;
    EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(length), &written), S_OK);
    EXPECT_EQ(written, length);
    EXPECT_EQ(stream->Commit(0), S_OK);
    auto before = find<IAppointment>(oid);
    EXPECT_EQ(text(before, &IAppointment::get_Body), u"an older and longer body");
    EXPECT_EQ(item->Save(), S_OK);
    auto after = find<IAppointment>(oid);
    EXPECT_EQ(text(after, &IAppointment::get_Body), u"\u20AC" + std::u16string(length - 1, u'\u00E9'));
  }
}

TEST_F(ItemInterface, forgetsABodyThatWasNotCommitted) {
  auto task = newTask();
  put(task, &ITask::put_Body, u"kept");
  ASSERT_EQ(task->Save(), S_OK);
  auto item = as<IItem>(task.get());
  {
    auto stream = open(*item.get(), GENERIC_WRITE);
    EXPECT_EQ(stream->Write("lost", 4, nullptr), S_OK);
  }
  EXPECT_EQ(item->Save(), S_OK);
  EXPECT_EQ(text(task, &ITask::get_Body), u"kept");
}

TEST_F(ItemInterface, readsTheBodyAsAStream) {
  auto contact = newContact();
  put(contact, &IContact::put_Body, u"Caf\u00e9 \u20ac \u65e5");
  ASSERT_EQ(contact->Save(), S_OK);
  auto item = as<IItem>(contact.get());
  auto stream = open(*item.get(), GENERIC_READ);
  STATSTG statistics{};
  EXPECT_EQ(stream->Stat(&statistics, STATFLAG_NONAME), S_OK);
  EXPECT_EQ(std::uint64_t{statistics.cbSize}, 8u);
  std::string bytes(20, 'x');
  ULONG read = 99;
  EXPECT_EQ(stream->Read(bytes.data(), 4, &read), S_OK);
  EXPECT_EQ(bytes.substr(0, 4), "Caf\xE9");
  EXPECT_EQ(stream->Read(bytes.data(), 20, &read), S_OK);
  EXPECT_EQ(bytes.substr(0, read), " \x80 ?");  // a character that the code page lacks
  EXPECT_EQ(stream->Read(bytes.data(), 20, &read), S_OK);
  EXPECT_EQ(read, 0u);
  ULARGE_INTEGER position{};
  EXPECT_EQ(stream->Seek(-1, STREAM_SEEK_END, &position), S_OK);
  EXPECT_EQ(std::uint64_t{position}, 7u);
  EXPECT_EQ(stream->Read(bytes.data(), 20, &read), S_OK);
  EXPECT_EQ(read, 1u);
  EXPECT_EQ(stream->Seek(-1, STREAM_SEEK_SET, nullptr), STG_E_INVALIDFUNCTION);
  EXPECT_EQ(stream->Seek(0, 3, nullptr), STG_E_INVALIDFUNCTION);
  EXPECT_EQ(stream->Write("x", 1, &read), STG_E_ACCESSDENIED);
  EXPECT_EQ(stream->SetSize(0), STG_E_ACCESSDENIED);
}

TEST_F(ItemInterface, keepsItsItemAliveThroughAStream) {
  auto contact = newContact();
  auto item = as<IItem>(contact.get());
  auto stream = open(*item.get(), GENERIC_WRITE);
  item = {};
  contact = {};
  EXPECT_EQ(model_.liveObjects().count(ModelClass::Contact), 1u);
  EXPECT_EQ(stream->Write("body", 4, nullptr), S_OK);
  EXPECT_EQ(stream->SetSize(2), S_OK);
  EXPECT_EQ(stream->Commit(0), S_OK);
}

TEST(AnsiText, keepsEveryByte) {
  std::vector<std::uint8_t> bytes(256);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i);
  EXPECT_EQ(toAnsi(fromAnsi(bytes)), bytes);
  EXPECT_EQ(fromAnsi(std::vector<std::uint8_t>{0x80, 0x9F, 0x41, 0xFF}), u"\u20AC\u0178A\u00FF");
  EXPECT_EQ(toAnsi(u"\u65e5\xD83D\xDE00\u0153"), (std::vector<std::uint8_t>{'?', '?', '?', 0x9C}));
}

}  // namespace
}  // namespace emulator
