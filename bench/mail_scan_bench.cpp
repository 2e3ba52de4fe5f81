// What the scan of a mailbox costs whose messages come in random order of their numbers, against the same
// messages in ascending order: the ratio of the two, from requests that take turns.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <numeric>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

#include "bench/frames.h"
#include "bench/served_process.h"

namespace bench {
namespace {

constexpr unsigned kMail = 4;
constexpr unsigned kListItems = 13;
constexpr std::uint32_t kMessages = 20'000;
constexpr int kRequests = 100;

using Numbers = std::vector<std::uint32_t>;

Numbers ascending() {
  Numbers numbers(kMessages);
  std::iota(numbers.begin(), numbers.end(), 1);
  return numbers;
}

Numbers shuffled() {
  Numbers numbers = ascending();
  std::ranges::shuffle(numbers, std::mt19937(1));
  return numbers;
}

/// The messages arrive in the order of the numbers, half of them in the Sent Items and half in the Inbox.
void fill(emulator::Device& device, const Numbers& numbers) {
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const bool isSent = i < numbers.size() / 2;
    device.messaging.mailbox().add(isSent ? emulator::MailFolder::SentItems : emulator::MailFolder::Inbox,
                                   numbers[i]);
  }
}

/// The times that one device took, request by request.
class Listed {
 public:
  explicit Listed(const Numbers& numbers)
      : device_([&](emulator::Device& device) { fill(device, numbers); }) {}

  void ask() {
    const auto start = std::chrono::steady_clock::now();
    sendFrame(device_.socket(), request_);
    if (!receiveFrame(device_.socket(), reply_)) throw std::runtime_error("the session ended");
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    if (numberAt(reply_, 2) != kMessages) throw std::runtime_error("not all messages");
    milliseconds_.push_back(took.count());
  }

  /// What a request takes when nothing else wants the machine: a tenth of them took no longer.
  double undisturbed() {
    const auto tenth = milliseconds_.begin() + static_cast<std::ptrdiff_t>(milliseconds_.size() / 10);
    std::ranges::nth_element(milliseconds_, tenth);
    return *tenth;
  }

 private:
  ServedProcess device_;
  Payload request_ = request(kListItems, kMail);
  Payload reply_;
  std::vector<double> milliseconds_;
};

void scan20000Messages(benchmark::State& state) {
  Listed inOrder(ascending());
  Listed inDisorder(shuffled());
  // Each goes first as often as the other.
  Listed* first = &inOrder;
  Listed* second = &inDisorder;
  for (auto _ : state) {
    first->ask();
    second->ask();
    std::swap(first, second);
  }
  state.counters["ms_ascending"] = inOrder.undisturbed();
  state.counters["ms_random"] = inDisorder.undisturbed();
  state.counters["ratio"] = inDisorder.undisturbed() / inOrder.undisturbed();
}

BENCHMARK(scan20000Messages)->Iterations(kRequests)->UseRealTime();

}  // namespace
}  // namespace bench

BENCHMARK_MAIN();
