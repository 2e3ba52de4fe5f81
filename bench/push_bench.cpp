// What contacts cost that are pushed in one session, beside what the emulated store takes to insert the same
// contacts by itself: the ratio of the two, from one run.

#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "bench/served_process.h"
#include "bench/temporary_folder.h"
#include "desktop/item_push.h"
#include "desktop/socket_stream.h"
#include "emulator/device.h"

namespace bench {
namespace {

constexpr int kContacts = 10'000;
/// As many as a push sends in one request, after which the device commits.
constexpr int kCommitted = 64;
constexpr desktop::Seconds kTimeout{60};

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

std::u16string numbered(std::u16string_view text, int number) {
  const std::string digits = std::to_string(number);
  return std::u16string(text) + std::u16string(digits.begin(), digits.end());
}

/// A contact as people have them: a dozen fields.
desktop::Contact contact(int number) {
  desktop::Contact made;
  made.firstName = numbered(u"Ann ", number);
  made.lastName = numbered(u"Lee ", number);
  made.company = u"Acme";
  made.jobTitle = u"Head of Research";
  made.email1 = numbered(u"ann@example.org/", number);
  made.mobilePhone = numbered(u"+44 7700 ", number);
  made.homePhone = numbered(u"+44 1904 ", number);
  made.homeStreet = numbered(u"Mill Lane ", number);
  made.homeCity = u"York";
  made.homePostalCode = u"YO1 7AA";
  made.categories = u"Business,Climbing";
  made.body = u"Met at the fair in Leeds.\r\nSend the prints by post.";
  return made;
}

/// The properties that the contact has on the device.
void putAll(emulator::Device& device, emulator::ItemRecord& record, const desktop::Contact& contact) {
  using emulator::contactProperty;
  const auto put = [&](std::size_t place, const std::u16string& text) {
    if (device.objectModel.items().put(record, place, text) != 0)
      throw std::runtime_error("a text was refused");
  };
  put(contactProperty("FirstName"), contact.firstName);
  put(contactProperty("LastName"), contact.lastName);
  put(contactProperty("CompanyName"), contact.company);
  put(contactProperty("JobTitle"), contact.jobTitle);
  put(contactProperty("Email1Address"), contact.email1);
  put(contactProperty("MobileTelephoneNumber"), contact.mobilePhone);
  put(contactProperty("HomeTelephoneNumber"), contact.homePhone);
  put(contactProperty("HomeAddressStreet"), contact.homeStreet);
  put(contactProperty("HomeAddressCity"), contact.homeCity);
  put(contactProperty("HomeAddressPostalCode"), contact.homePostalCode);
  put(contactProperty("Categories"), contact.categories);
  put(contactProperty("Body"), contact.body);
}

/// Microseconds for each contact that the store inserts by itself, changes recorded as in a session.
double insertedByTheStore() {
  const TemporaryFolder folder;
  const std::string file = folder.path() / "device";
  emulator::Device::create(file, {});
  emulator::Device device(file);
  auto& items = device.objectModel.items();
  const auto start = Clock::now();
  for (int i = 0; i < kContacts; ++i) {
    auto item = items.make(emulator::ObjectKind::Contact);
    putAll(device, item.properties, contact(i));
    if (items.add(item) != 0) throw std::runtime_error("a contact was refused");
    if (i % kCommitted == kCommitted - 1) device.commit();
  }
  device.commit();
  return Microseconds(Clock::now() - start).count() / kContacts;
}

struct PushTimes {
  double whole = 0;     ///< microseconds for each contact
  double written = 0;   ///< of these, in requests that write
  double readBack = 0;  ///< and in requests that read
};

PushTimes pushed() {
  const ServedProcess served([](emulator::Device&) {});
  std::vector<desktop::FileItem> items;
  for (int i = 0; i < kContacts; ++i) items.push_back({"book.vcf", {}, contact(i), {}});
  PushTimes times;
  const auto watch = [&](const desktop::Exchange& exchange) {
    const double took = static_cast<double>(exchange.duration.count()) / kContacts;
    if (exchange.command == desktop::Command::WriteItems) times.written += took;
    if (exchange.command == desktop::Command::ReadItems) times.readBack += took;
  };
  desktop::Session session(std::make_unique<desktop::SocketStream>(desktop::Descriptor(dup(served.socket())),
                                                                   "the device", kTimeout),
                           watch);
  int same = 0;
  const auto count = [&](const desktop::FileItem&, const desktop::PushOutcome& outcome) {
    if (outcome.oid != 0 && outcome.differences.empty()) ++same;
  };
  const auto start = Clock::now();
  desktop::pushItems(session, items, count);
  times.whole = Microseconds(Clock::now() - start).count() / kContacts;
  if (same != kContacts) throw std::runtime_error("not all contacts arrived as they were sent");
  return times;
}

void tenThousandContacts(benchmark::State& state) {
  double store = 0;
  PushTimes push;
  for (auto _ : state) {
    push = pushed();
    store = insertedByTheStore();
  }
  state.counters["us_store"] = store;
  state.counters["us_push"] = push.whole;
  state.counters["us_written"] = push.written;
  state.counters["us_read_back"] = push.readBack;
  state.counters["ratio"] = push.whole / store;
  state.counters["ratio_written"] = push.written / store;
}

BENCHMARK(tenThousandContacts)->Iterations(1)->Repetitions(3)->UseRealTime()->Unit(benchmark::kSecond);

}  // namespace
}  // namespace bench

BENCHMARK_MAIN();
