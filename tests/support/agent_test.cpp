#include "tests/support/agent_test.h"

#include <fstream>

#include "emulator/calls/call_monitor.h"
#include "emulator/seam/current_device.h"
#include "emulator/seam/libraries.h"

namespace test {

AgentTest::AgentTest() : DeviceTest(agent_->memory()) {
  emulator::provideLibraries(device());
  const emulator::CurrentDevice current(device());
  agent_->attach();
}

AgentTest::~AgentTest() = default;

void AgentTest::TearDown() {
  outlook_.reset();
  {
    // What a failed log-on left behind goes with the agent.
    const emulator::CurrentDevice current(device());
    agent_->detach();
  }
  monitors_.clear();
  EXPECT_EQ(device().objectModel.liveObjects().total(), 0u);
  // Every mail request leaves two of the store's folders open, on purpose.
  const emulator::LiveObjects& mail = device().messaging.liveObjects();
  EXPECT_EQ(mail.total(), mail.count(emulator::ModelClass::MailFolder));
  EXPECT_EQ(device().objectModel.memory().liveTexts(), 0u);
  EXPECT_EQ(device().objectModel.memory().liveBlocks(), 0u);
  EXPECT_EQ(device().handles.count<emulator::KernelObject>(), 0u);
  // The messaging library stays loaded for the life of the process.
  EXPECT_TRUE(agent_->mayKeepLoaded(device().modules.loadCount())) << device().modules.loadCount();
}

void AgentTest::atDevice(const std::function<void(emulator::CallMonitor*)>& run) {
  if (!observing_ && faults_.empty()) {
    const emulator::CurrentDevice current(device());
    return run(nullptr);
  }
  std::vector<emulator::FaultRule> rules;
  for (const std::string& rule : faults_) rules.push_back(emulator::parseFaultRule(rule));
  std::optional<emulator::CallLog> log;
  if (observing_) log.emplace(logFile());
  monitors_.push_back(
      std::make_unique<emulator::CallMonitor>(std::move(log), emulator::Faults(std::move(rules)),
                                              [this](DWORD error) { device().lastError.set(error); }));
  const emulator::CurrentDevice current(device(), monitors_.back().get());
  run(monitors_.back().get());
}

void AgentTest::reloadAgent() {
  const emulator::CurrentDevice current(device());
  agent_->detach();
  agent_->attach();
}

HRESULT AgentTest::invoke(ScriptedStream& stream) {
  stream.setBeforeRead([this] { device().commit(); });
  HRESULT result = E_UNEXPECTED;
  atDevice([&](emulator::CallMonitor* monitor) {
    IRAPIStream* given = monitor ? monitor->tapped<IRAPIStream>(&stream) : &stream;
    result = agent_->serve(given);
    if (!monitor) return;
    monitor->taps().end(&stream);
    // A session object that outlives its invocation would hold objects of this monitor.
    agent_->dropSession();
  });
  return result;
}

void AgentTest::perform(const std::function<void()>& agentCode) {
  atDevice([&](emulator::CallMonitor*) { agentCode(); });
}

std::vector<Bytes> AgentTest::session(const std::vector<Bytes>& requests) {
  Bytes script;
  for (const Bytes& bytes : requests) script.append(frame(bytes));
  ScriptedStream stream(script.append(frame(request(1, kAppointment))));
  EXPECT_EQ(invoke(stream), 0);
  EXPECT_EQ(stream.references(), 0u);
  auto replies = stream.replies();
  EXPECT_EQ(replies.size(), requests.size() + 1);
  if (!replies.empty()) replies.pop_back();
  return replies;
}

Bytes AgentTest::reply(const Bytes& request) {
  const auto replies = session({request});
  return replies.empty() ? Bytes() : replies.front();
}

std::vector<nlohmann::json> AgentTest::calls(const std::string& prefix) const {
  std::vector<nlohmann::json> found;
  std::ifstream file(logFile());
  for (std::string line; std::getline(file, line);) {
    nlohmann::json call = nlohmann::json::parse(line);
    if (call["call"].get<std::string>().starts_with(prefix)) found.push_back(std::move(call));
  }
  return found;
}

std::vector<std::string> AgentTest::callNames(const std::string& prefix) const {
  std::vector<std::string> names;
  for (const auto& call : calls(prefix)) names.push_back(call["call"]);
  return names;
}

IPOutlookApp& AgentTest::outlook() {
  if (!outlook_) {
    void* object = nullptr;
    device().objectModel.createInstance(CLSID_Application, kInterfaceId<IPOutlookApp>, &object);
    outlook_ = qorv::ComPtr<IPOutlookApp>(static_cast<IPOutlookApp*>(object));
    outlook_->Logon(0);
  }
  return *outlook_;
}

qorv::ComPtr<IAppointment> AgentTest::appointment(DWORD oid) {
  qorv::ComPtr<IDispatch> any;
  if (outlook().GetItemFromOid(static_cast<LONG>(oid), any.put()) < 0) return {};
  return qorv::queryInterface<IAppointment>(*any);
}

std::u16string textOf(IPOutlookApp& application, IAppointment& item, HRESULT (IAppointment::*get)(BSTR*)) {
  BSTR text = nullptr;
  if ((item.*get)(&text) < 0 || text == nullptr) return {};
  std::u16string value = text;
  application.SysFreeString(text);
  return value;
}

}  // namespace test
