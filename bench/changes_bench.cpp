// What a list of ten new changes costs out of a short and out of a long change log: the ratio of the two, from
// requests that take turns.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/frames.h"
#include "bench/served_process.h"
#include "emulator/seam/current_device.h"
#include "platform/files.h"
#include "platform/property_database.h"

namespace bench {
namespace {

constexpr unsigned kAppointment = 2;
constexpr unsigned kGetChanges = 11;

constexpr std::uint32_t kShortLog = 1'000;
/// More than the platform's own databases take.
constexpr std::uint32_t kLongLog = 1'000'000;
constexpr std::uint32_t kNewChanges = 10;
constexpr int kRequests = 20'000;

constexpr CEPROPID kOid = 0x12010003;
constexpr CEPROPID kSequence = 0x12020003;
constexpr CEPROPID kKind = 0x12030003;
constexpr CEPROPID kName = 0x1205001F;

CEPROPVAL number(CEPROPID property, DWORD value) {
  CEPROPVAL result{};
  result.propid = property;
  result.val.ulVal = value;
  return result;
}

/// A database sorted on one property, newest first; the caller closes it.
HANDLE openSorted(std::u16string name, CEPROPID property) {
  SORTORDERSPEC stored{property, CEDB_SORT_DESCENDING};
  CeCreateDatabase(name.data(), 0, 1, &stored);
  SORTORDERSPECEX order{};
  order.wVersion = 1;
  order.wNumProps = 1;
  order.rgPropID[0] = property;
  CEGUID volume = kSystemVolume;
  CEOID oid = 0;
  const HANDLE database = CeOpenDatabaseEx2(&volume, &oid, name.data(), &order, 0, nullptr);
  if (database == INVALID_HANDLE_VALUE) throw std::runtime_error("a database was refused");
  return database;
}

template <std::size_t Count>
void write(HANDLE database, CEPROPVAL (&values)[Count]) {
  if (CeWriteRecordProps(database, 0, Count, values) == 0) throw std::runtime_error("a record was refused");
}

/// A log of so many changes, and a contract that knows all but the newest.
void fillLog(emulator::Device& device, std::uint32_t changes) {
  const emulator::CurrentDevice current(device);
  const HANDLE log = openSorted(u"\\QorvAppointmentLog", kSequence);
  for (std::uint32_t i = 1; i <= changes; ++i) {
    CEPROPVAL change[] = {number(kOid, i), number(kSequence, i), number(kKind, 2)};
    write(log, change);
  }
  CloseHandle(log);
  const HANDLE contracts = openSorted(u"\\QorvContracts", kName);
  std::u16string name = u"PC";
  CEPROPVAL contract[] = {number(kName, 0), number(kSequence, changes - kNewChanges)};
  contract[0].val.lpwstr = name.data();
  write(contracts, contract);
  CloseHandle(contracts);
}

Payload changesRequest() {
  Payload bytes = request(kGetChanges, kAppointment, {4});
  for (const char c : {'P', '\0', 'C', '\0'}) bytes.push_back(static_cast<std::uint8_t>(c));
  return bytes;
}

/// The times that one device took, request by request.
class Asked {
 public:
  explicit Asked(std::uint32_t changes)
      : device_([&](emulator::Device& device) { fillLog(device, changes); }) {}

  void ask() {
    const auto start = std::chrono::steady_clock::now();
    sendFrame(device_.socket(), request_);
    if (!receiveFrame(device_.socket(), reply_)) throw std::runtime_error("the session ended");
    const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
    if (numberAt(reply_, 2) != kNewChanges) throw std::runtime_error("not the new changes");
    microseconds_.push_back(took.count());
  }

  /// What a request takes when nothing else wants the machine: a tenth of them took no longer.
  double undisturbed() {
    const auto tenth = microseconds_.begin() + static_cast<std::ptrdiff_t>(microseconds_.size() / 10);
    std::ranges::nth_element(microseconds_, tenth);
    return *tenth;
  }

 private:
  ServedProcess device_;
  Payload request_ = changesRequest();
  Payload reply_;
  std::vector<double> microseconds_;
};

void tenNewChanges(benchmark::State& state) {
  Asked shortLog(kShortLog);
  Asked longLog(kLongLog);
  // Each goes first as often as the other.
  Asked* first = &shortLog;
  Asked* second = &longLog;
  for (auto _ : state) {
    first->ask();
    second->ask();
    std::swap(first, second);
  }
  state.counters["us_of_1000"] = shortLog.undisturbed();
  state.counters["us_of_1000000"] = longLog.undisturbed();
  state.counters["ratio"] = longLog.undisturbed() / shortLog.undisturbed();
}

BENCHMARK(tenNewChanges)->Iterations(kRequests)->UseRealTime();

}  // namespace
}  // namespace bench

BENCHMARK_MAIN();
