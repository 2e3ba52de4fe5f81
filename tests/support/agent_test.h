// The agent against a fresh emulated device, request by request.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/appointment.h"
#include "platform/outlook.h"
#include "platform/recurrence.h"
#include "service/com_ptr.h"
#include "tests/emulator/device_test.h"
#include "tests/support/bytes.h"
#include "tests/support/scripted_stream.h"
#include "tests/support/tested_agent.h"

namespace emulator {
class CallMonitor;
}

namespace test {

inline constexpr unsigned kContact = 1;
inline constexpr unsigned kAppointment = 2;
inline constexpr unsigned kTask = 3;
inline constexpr unsigned kMail = 4;
inline constexpr unsigned kInkNote = 5;

/// Command and data type; the arguments follow.
inline Bytes request(unsigned command, unsigned type) {
  return Bytes().u8(command).u8(type);
}

/// The agent outlives the device, which may allocate in its memory.
class AgentHolder {
 protected:
  const std::unique_ptr<TestedAgent> agent_ = chosenAgent();
};

/// After every test nothing that the platform handed out is left: objects, texts, blocks, handles.
class AgentTest : private AgentHolder, public emulator::test::DeviceTest {
 protected:
  AgentTest();
  ~AgentTest() override;
  void TearDown() override;

  /// One invocation of the export; the stream is tapped when calls are observed.
  HRESULT invoke(ScriptedStream& stream);
  /// One session of these requests and the end command. Their replies, without the end's empty one.
  std::vector<Bytes> session(const std::vector<Bytes>& requests);
  /// The reply to one request in a session of its own.
  Bytes reply(const Bytes& request);
  /// Unloads the agent, which keeps nothing then, and loads it anew.
  void reloadAgent();
  /// Runs code of the agent in the device outside a session, with the same faults and the same log. It is
  /// always this program's own code.
  void perform(const std::function<void()>& agentCode);

  /// Whether the sessions are served by this program's own objects, into which a test can look.
  [[nodiscard]] bool canLookInside() const { return agent_->isTransparent(); }

  /// Makes calls fail from now on; rules as on the command line.
  void fault(const std::string& rule) { faults_.push_back(rule); }
  void clearFaults() { faults_.clear(); }
  /// Keeps a log of the sessions from now on, each replacing the one before.
  void observeCalls() { observing_ = true; }
  /// The logged calls, all or those whose name begins so.
  [[nodiscard]] std::vector<nlohmann::json> calls(const std::string& prefix = "") const;
  [[nodiscard]] std::vector<std::string> callNames(const std::string& prefix = "") const;

  /// The device's own object model, for arranging and looking; its calls are not the agent's.
  IPOutlookApp& outlook();
  qorv::ComPtr<IAppointment> appointment(DWORD oid);

 private:
  void atDevice(const std::function<void(emulator::CallMonitor*)>& run);
  std::string logFile() const { return folder_.file("calls"); }

  qorv::ComPtr<IPOutlookApp> outlook_;
  std::vector<std::string> faults_;
  bool observing_ = false;
  /// A session that is kept after a failed log-on holds objects of the monitor that it ran under.
  std::vector<std::unique_ptr<emulator::CallMonitor>> monitors_;
};

/// A text of the object model as a value.
std::u16string textOf(IPOutlookApp& application, IAppointment& item, HRESULT (IAppointment::*get)(BSTR*));

}  // namespace test
