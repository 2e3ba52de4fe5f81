// The trace as it is printed.
#include <arpa/inet.h>
#include <chrono>
#include <nlohmann/json.hpp>
#include <sys/socket.h>
#include <thread>

#include "tests/apps/journey.h"

namespace {

class TraceJourney : public Journey {
 protected:
  /// Starts the program in the background, on any free port.
  void start(const std::string& options) {
    ASSERT_EQ(
        run("( '" QORV_SYNC "' " + options +
            " trace --listen 127.0.0.1:0 --count 2 > trace.out 2> trace.err; echo $? > trace.status ) &"),
        0);
    const std::regex saysPort("listening on 127\\.0\\.0\\.1:(\\d+)\n");
    std::smatch found;
    std::string said;
    while (!std::regex_search(said = read(folder_.file("trace.err")), found, saysPort)) pause();
    port_ = static_cast<std::uint16_t>(std::stoi(found[1]));
  }
  void send(std::u16string_view text) {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    to.sin_port = htons(port_);
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    EXPECT_EQ(::sendto(socket, text.data(), text.size() * 2, 0, reinterpret_cast<sockaddr*>(&to), sizeof to),
              static_cast<ssize_t>(text.size() * 2));
    ::close(socket);
  }
  std::string awaitStatus() {
    while (read(folder_.file("trace.status")).empty()) pause();
    return read(folder_.file("trace.status"));
  }
  static void pause() { std::this_thread::sleep_for(std::chrono::milliseconds(10)); }

  std::uint16_t port_ = 0;
};

TEST_F(TraceJourney, eachMessageIsALine) {
  start("");
  send(u"3 items, last Ärger");
  send(u"two\nlines");
  EXPECT_EQ(awaitStatus(), "0\n");
  EXPECT_EQ(read(folder_.file("trace.out")), "3 items, last Ärger\ntwo lines\n");
}

TEST_F(TraceJourney, scriptsGetAllMessagesAtTheEnd) {
  start("--json");
  send(u"one");
  send(u"");
  EXPECT_EQ(awaitStatus(), "0\n");
  const auto messages = nlohmann::json::parse(read(folder_.file("trace.out")))["messages"];
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0]["text"], "one");
  EXPECT_EQ(messages[1]["text"], "");
}

TEST_F(TraceJourney, anAddressThatIsNoneIsRefused) {
  EXPECT_EQ(run("'" QORV_SYNC "' trace --listen nowhere"), 2);
  EXPECT_EQ(err_, "qorv-sync: can't listen on 'nowhere': it is not HOST:PORT\n");
}

}  // namespace
