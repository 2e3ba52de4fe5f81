// What contacts cost that are pushed in one session, beside what the emulated store takes to insert the same
// contacts by itself: the ratio of the two, from one run.

#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "bench/sample_contact.h"
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
    putSample(device, item.properties, sampleContact(i));
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
  for (int i = 0; i < kContacts; ++i) items.push_back({"book.vcf", {}, sampleContact(i), {}});
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
