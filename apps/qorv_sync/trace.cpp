#include <csignal>
#include <memory>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <sys/signalfd.h>

#include "apps/qorv_sync/commands.h"
#include "desktop/text.h"
#include "desktop/trace_listener.h"

namespace qorv_sync {

namespace {

struct Arguments {
  std::string address = "127.0.0.1:4321";  // where agents send to unless they were built otherwise
  std::uint32_t count = 0;
};

/// A person ends the trace from the keyboard; what was said and the account for scripts must not be lost then.
class EndSignals {
 public:
  EndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    descriptor_ = desktop::Descriptor(::signalfd(-1, &signals, SFD_CLOEXEC));
  }

  /// True when the other descriptor is readable, false when the run is to end.
  [[nodiscard]] bool await(int other) const {
    pollfd waiting[] = {{other, POLLIN, 0}, {descriptor_.get(), POLLIN, 0}};
    return ::poll(waiting, std::size(waiting), -1) > 0 && waiting[1].revents == 0;
  }

 private:
  desktop::Descriptor descriptor_;
};

void tell(Report& report, const desktop::TraceMessage& message) {
  const std::string text = desktop::toUtf8(message.text);
  report.say(text);
  report.flush();
  if (message.isOdd) report.remark("the datagram from " + message.from + " ends in half a character");
  report.data()["messages"].push_back({{"from", message.from}, {"text", text}});
}

void trace(Run& run, const Arguments& arguments) {
  desktop::TraceListener listener(arguments.address);
  const EndSignals signals;
  run.report.remark("listening on " + listener.address());
  run.report.data()["messages"] = nlohmann::json::array();
  std::uint32_t told = 0;
  while ((arguments.count == 0 || told < arguments.count) && signals.await(listener.descriptor())) {
    tell(run.report, listener.receive());
    ++told;
  }
}

}  // namespace

Action defineTrace(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_option("--listen", arguments->address, "Where agents send to: HOST:PORT")
      ->capture_default_str();
  command.add_option("--count", arguments->count, "End after so many messages")->check(CLI::PositiveNumber);
  return [arguments](Run& run) { trace(run, *arguments); };
}

}  // namespace qorv_sync
