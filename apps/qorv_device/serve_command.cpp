#include "apps/qorv_device/serve_command.h"

#include <cstdint>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <unistd.h>

#include "apps/qorv_device/call_log_place.h"
#include "apps/qorv_device/one_line.h"
#include "emulator/arm/arm_agent.h"
#include "emulator/seam/current_device.h"
#include "emulator/seam/libraries.h"
#include "emulator/session/agent_module.h"
#include "emulator/session/listener.h"
#include "emulator/session/session.h"
#include "emulator/session/session_error.h"
#include "emulator/session/stop_signals.h"

namespace qorv_device {
namespace {

constexpr int kSessionFailed = 1;

struct Options {
  std::string device;
  bool standardStreams = false;
  std::string listen;
  std::string agent;
  std::uint64_t sessions = std::numeric_limits<std::uint64_t>::max();
  std::string calls;
  std::vector<std::string> faults;
  bool realTime = false;
};

std::vector<emulator::FaultRule> faultRules(const std::vector<std::string>& texts) {
  std::vector<emulator::FaultRule> rules;
  rules.reserve(texts.size());
  for (const std::string& text : texts) rules.push_back(emulator::parseFaultRule(text));
  return rules;
}

std::filesystem::path agentFile(const Options& options) {
  if (options.agent.empty()) return emulator::AgentModule::besideProgram();
  return options.agent;
}

/// The memory of a library for the device's processor; a module of the host has the program's.
std::unique_ptr<emulator::arm::GuestSpace> spaceFor(const std::filesystem::path& agent) {
  if (!emulator::arm::ArmAgent::isDeviceLibrary(agent)) return nullptr;
  return std::make_unique<emulator::arm::GuestSpace>();
}

emulator::DeviceOptions deviceOptions(const Options& options, emulator::arm::GuestSpace* space) {
  using Pace = emulator::Clock::Pace;
  emulator::DeviceOptions chosen;
  chosen.pace = options.realTime ? Pace::RealTime : Pace::Skipping;
  if (space != nullptr) chosen.memory = &space->heap;
  return chosen;
}

std::unique_ptr<emulator::Agent> loadAgent(const std::filesystem::path& file,
                                           emulator::arm::GuestSpace* space) {
  HMODULE const module = emulator::Modules::agent();
  if (space == nullptr) return std::make_unique<emulator::AgentModule>(file, module);
  return std::make_unique<emulator::arm::ArmAgent>(*space, file, module);
}

/// Serves sessions with one device and one loaded agent, or the one that takes the place of a broken one.
class Server {
 public:
  Server(const Options& options, std::vector<emulator::FaultRule> rules)
      : agentFile_(agentFile(options)),
        space_(spaceFor(agentFile_)),
        device_(options.device, deviceOptions(options, space_.get())),
        current_(device_),
        calls_(options.calls),
        rules_(std::move(rules)) {
    emulator::provideLibraries(device_);
    agent_ = loadAgent(agentFile_, space_.get());
  }

  /// Opens the call log, when there is to be one: the last thing that can keep sessions from being served.
  void observe() {
    if (calls_.empty() && rules_.empty()) return;
    std::optional<emulator::CallLog> log;
    if (!calls_.empty()) log.emplace(calls_);
    monitor_.emplace(std::move(log), emulator::Faults(std::move(rules_)),
                     [this](DWORD error) { device_.lastError.set(error); });
  }

  void serve(const emulator::Peer& peer) {
    const HRESULT result = runSession(*agent_, device_, monitor_ ? &*monitor_ : nullptr, peer);
    if (result == S_OK) return;
    std::cerr << "rsCeApiMgr returned 0x" << std::hex << static_cast<std::uint32_t>(result) << std::dec
              << '\n';
    failed_ = true;
  }

  /// The exit status, once everything was served.
  int status() const {
    if (monitor_) monitor_->checkLog();
    return failed_ ? kSessionFailed : kSuccess;
  }

  /// As `serve`, and loads the agent anew when it breaks, so that the next session can be served.
  void serveAndGoOn(const emulator::Peer& peer) {
    try {
      serve(peer);
    } catch (const emulator::AgentBroken& broken) {
      std::cerr << oneLine(broken.what()) << '\n';
      failed_ = true;
      agent_.reset();
      agent_ = loadAgent(agentFile_, space_.get());
    }
  }

 private:
  std::filesystem::path agentFile_;
  std::unique_ptr<emulator::arm::GuestSpace> space_;
  emulator::Device device_;
  emulator::CurrentDevice current_;  ///< the agent may call the platform while it is attached and detached
  std::optional<emulator::CallMonitor> monitor_;  ///< outlives the agent, which may keep objects to its end
  std::unique_ptr<emulator::Agent> agent_;
  std::string calls_;
  std::vector<emulator::FaultRule> rules_;
  bool failed_ = false;
};

void serveListener(Server& server, const emulator::Listener& listener, std::uint64_t sessions, int stop) {
  std::cerr << "listening on " << listener.address() << std::endl;
  for (; sessions > 0; --sessions) {
    const auto desktop = listener.accept(stop);
    if (!desktop) return;
    server.serveAndGoOn(emulator::Peer(desktop->get(), desktop->get(), stop));
  }
}

int serve(const Options& options) {
  if (!options.calls.empty()) requireHarmlessLog(options.calls, options.device, agentFile(options));
  const emulator::StopSignals signals;
  Server server(options, faultRules(options.faults));
  if (options.standardStreams) {
    server.observe();
    server.serve(emulator::Peer(STDIN_FILENO, STDOUT_FILENO, signals.descriptor()));
  } else {
    const emulator::Listener listener(options.listen);
    server.observe();
    serveListener(server, listener, options.sessions, signals.descriptor());
  }
  return server.status();
}

/// More than anybody serves; a greater number is a slip of the hand.
constexpr std::uint64_t kMostSessions = 1'000'000'000;

/// A value that was left empty by mistake is no wish for the default.
CLI::Validator notEmpty() {
  return CLI::Validator(
      [](const std::string& value) {
        return value.empty() ? std::string("must not be empty") : std::string();
      },
      "");
}

}  // namespace

Action defineServe(CLI::App& command) {
  const auto options = std::make_shared<Options>();
  command.add_option("DEVICE", options->device, "Device file")->required();
  auto* const where = command.add_option_group("where");
  where->add_flag("--stdio", options->standardStreams, "One session over standard input and output");
  auto* const listen = where->add_option(
      "--listen", options->listen, "One session after another; 127.0.0.1:PORT (0: any free) or unix:PATH");
  where->require_option(1);
  command.add_option("--agent", options->agent, "The agent to load [the one beside this program]")
      ->check(notEmpty());
  command.add_option("--sessions", options->sessions, "How many sessions to serve [no end]")
      ->needs(listen)
      ->check(CLI::Range(std::uint64_t{1}, kMostSessions));
  command.add_option("--calls", options->calls, "Log every platform call of the agent to this file")
      ->check(notEmpty());
  command.add_option("--fault", options->faults, "Make a call fail: CALL[#FIRST]=RESULT[*COUNT]")
      ->allow_extra_args(false);
  command.add_flag("--real-time", options->realTime, "Let sleeps of the device take their time");
  return [options] { return serve(*options); };
}

}  // namespace qorv_device
