// What a request costs over a socket, beside a raw echo of the same bytes over the same kind of socket.

#include <benchmark/benchmark.h>
#include <memory>

#include "bench/echo_server.h"
#include "bench/frames.h"
#include "bench/served_device.h"

namespace bench {
namespace {

constexpr unsigned kAppointment = 2;
constexpr unsigned kCountItems = 6;
constexpr unsigned kReadItem = 7;
constexpr unsigned kListItems = 13;
constexpr unsigned kReadItems = 16;
constexpr unsigned kNoCommand = 0;

/// More than fit a reply: a record of the device's own defaults takes 127 bytes, the limit is 110592.
constexpr std::uint32_t kMoreThanFit = 1000;

/// One device at a time, because a process has one: the cases stand in the order that makes each once.
ServedDevice& device(int appointments) {
  static std::unique_ptr<ServedDevice> served;
  static int filledWith = 0;
  if (!served || filledWith != appointments) {
    served.reset();
    served = std::make_unique<ServedDevice>(appointments);
    filledWith = appointments;
  }
  return *served;
}

Payload answer(int socket, const Payload& bytes) {
  Payload reply;
  sendFrame(socket, bytes);
  if (!receiveFrame(socket, reply)) throw std::runtime_error("the session ended");
  return reply;
}

using MakeRequest = Payload (*)(const ServedDevice& device);

Payload emptyRequest(const ServedDevice&) {
  return request(kNoCommand, kAppointment);
}
Payload readOne(const ServedDevice& served) {
  return request(kReadItem, kAppointment, {served.firstOid()});
}
Payload countAll(const ServedDevice&) {
  return request(kCountItems, kAppointment);
}
Payload listAll(const ServedDevice&) {
  return request(kListItems, kAppointment);
}
Payload readMany(const ServedDevice& served) {
  Payload bytes = request(kReadItems, kAppointment, {kMoreThanFit});
  for (std::uint32_t i = 0; i < kMoreThanFit; ++i) {
    const Payload oid = request(0, 0, {served.firstOid() + i});
    bytes.insert(bytes.end(), oid.begin() + 2, oid.end());
  }
  return bytes;
}

void runRequest(benchmark::State& state, MakeRequest make) {
  ServedDevice& served = device(static_cast<int>(state.range(0)));
  const Payload bytes = make(served);
  Payload reply;
  for (auto _ : state) {
    sendFrame(served.socket(), bytes);
    receiveFrame(served.socket(), reply);
  }
  state.counters["reply_bytes"] = static_cast<double>(reply.size());
}

void runEcho(benchmark::State& state, MakeRequest make) {
  ServedDevice& served = device(static_cast<int>(state.range(0)));
  const Payload bytes = make(served);
  const EchoServer echo(answer(served.socket(), bytes));
  Payload reply;
  for (auto _ : state) {
    sendFrame(echo.socket(), bytes);
    receiveFrame(echo.socket(), reply);
  }
  state.counters["reply_bytes"] = static_cast<double>(reply.size());
}

struct Case {
  const char* name;
  MakeRequest make;
  int appointments;
};

constexpr Case kCases[] = {
    {"empty", emptyRequest, 1000}, {"one appointment", readOne, 1000},
    {"full list", readMany, 1000}, {"count", countAll, 1000},
    {"list", listAll, 1000},       {"count", countAll, 50000},
    {"list", listAll, 50000},
};

/// Each case stands beside its floor, so that the ratio of the two comes from one run.
void registerCases() {
  for (const Case& each : kCases) {
    const std::string name = each.name;
    benchmark::RegisterBenchmark((name + "/agent").c_str(), runRequest, each.make)
        ->Arg(each.appointments)
        ->UseRealTime();
    benchmark::RegisterBenchmark((name + "/echo").c_str(), runEcho, each.make)
        ->Arg(each.appointments)
        ->UseRealTime();
  }
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  bench::registerCases();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
