#include "desktop/trace_listener.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include "desktop/host_port.h"
#include "desktop/input_error.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using wire_bytes::Bytes;
using wire_bytes::hex;

class Trace : public testing::Test {
 protected:
  void send(const Bytes& datagram) {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    to.sin_port = htons(splitHostPort(listener_.address())->port);
    const Descriptor socket(::socket(AF_INET, SOCK_DGRAM, 0));
    ASSERT_EQ(::sendto(socket.get(), datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr*>(&to),
                       sizeof to),
              static_cast<ssize_t>(datagram.size()));
  }

  TraceListener listener_{"127.0.0.1:0"};
};

TEST_F(Trace, isADatagramsCharacters) {
  send(hex("48 00 69 00 3D D8 00 DE"));  // "Hi", and U+1F600 as two units
  const TraceMessage message = listener_.receive();
  EXPECT_EQ(message.text, u"Hi\U0001F600");
  EXPECT_FALSE(message.isOdd);
  EXPECT_TRUE(message.from.starts_with("127.0.0.1:")) << message.from;
}

TEST_F(Trace, mayBeEmpty) {
  send({});
  EXPECT_EQ(listener_.receive().text, u"");
}

TEST_F(Trace, isReadUpToHalfACharacter) {
  send(hex("48 00 69"));
  const TraceMessage message = listener_.receive();
  EXPECT_EQ(message.text, u"H");
  EXPECT_TRUE(message.isOdd);
}

TEST_F(Trace, comesWholeUpToTheLongestMessage) {
  Bytes longest;
  for (int i = 0; i < 1024; ++i) {
    longest.push_back('x');
    longest.push_back(0);
  }
  send(longest);
  EXPECT_EQ(listener_.receive().text, std::u16string(1024, u'x'));
}

TEST(TraceListening, onAPlaceThatIsTakenIsRefused) {
  const TraceListener first("127.0.0.1:0");
  const std::string address = first.address();
  try {
    const TraceListener second(address);
    FAIL() << "two listen on " << address;
  } catch (const InputError& error) {
    EXPECT_EQ(std::string(error.what()), "can't listen on '" + address + "': Address already in use");
  }
}

TEST(TraceListening, onWhatIsNoAddressIsRefused) {
  for (const char* address :
       {"4321", ":4321", "127.0.0.1:", "127.0.0.1:70000", "127.0.0.1:1x", "256.0.0.1:1"}) {
    EXPECT_THROW(TraceListener{address}, InputError) << address;
  }
}

}  // namespace
