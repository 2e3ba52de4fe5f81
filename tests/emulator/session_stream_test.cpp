// The agent's stream: what is read and written, when replies leave, and what happens to the unit of work.
#include <csignal>
#include <gtest/gtest.h>
#include <numeric>
#include <stdexcept>
#include <thread>

#include "emulator/session/rapi_stream.h"
#include "platform/errors.h"
#include "tests/emulator/session_pipe.h"

namespace emulator {
namespace {

using testing::get;
using testing::getAvailable;
using testing::Link;
using testing::Message;
using testing::Pipe;
using testing::put;

constexpr ULONG kPoison = 0xDEADBEEF;

/// A stream over a socket of packets, so that a test sees what left together.
class StreamTest : public ::testing::Test {
 protected:
  void write(const Message& bytes) {
    ULONG written = kPoison;
    ASSERT_EQ(stream_.Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written), S_OK);
    ASSERT_EQ(written, bytes.size());
  }
  Message read(ULONG count) {
    Message bytes(count);
    ULONG done = kPoison;
    EXPECT_EQ(stream_.Read(bytes.data(), count, &done), S_OK);
    bytes.resize(done);
    return bytes;
  }

  std::vector<std::string> events_;
  Link link_{SOCK_SEQPACKET};
  RapiStream stream_{
      Peer(link_.device.get(), link_.device.get(), -1),
      {[this] { events_.emplace_back("commit"); }, [this] { events_.emplace_back("rollback"); }}};
};

TEST_F(StreamTest, sendsLengthAndPayloadTogether) {
  write({3, 0, 0, 0});
  EXPECT_TRUE(getAvailable(link_.desktop).empty());
  write({7, 8, 9});
  EXPECT_EQ(getAvailable(link_.desktop), (Message{3, 0, 0, 0, 7, 8, 9}));
}

TEST_F(StreamTest, sendsAnEmptyReplyOnceItsLengthIsThere) {
  write({0, 0, 0, 0});
  EXPECT_EQ(getAvailable(link_.desktop), (Message{0, 0, 0, 0}));
  write({});
  EXPECT_TRUE(getAvailable(link_.desktop).empty());
}

TEST_F(StreamTest, sendsAReplyThatIsWrittenInPiecesOrTogetherWithTheNext) {
  for (const std::uint8_t byte : Message{2, 0, 0, 0, 5}) write({byte});
  EXPECT_TRUE(getAvailable(link_.desktop).empty());
  write({6, 1, 0, 0, 0, 9, 4, 0});
  EXPECT_EQ(getAvailable(link_.desktop), (Message{2, 0, 0, 0, 5, 6, 1, 0, 0, 0, 9}));
  write({0, 0, 1, 2, 3, 4});
  EXPECT_EQ(getAvailable(link_.desktop), (Message{4, 0, 0, 0, 1, 2, 3, 4}));
}

TEST_F(StreamTest, commitsBeforeAReplyLeaves) {
  write({1, 0, 0, 0});
  EXPECT_TRUE(events_.empty());
  write({1});
  EXPECT_EQ(events_, std::vector<std::string>{"commit"});
}

TEST_F(StreamTest, sendsWhatIsNoWholeReplyBeforeItReadsOn) {
  write({9, 0, 0, 0, 1});
  put(link_.desktop, {42});
  EXPECT_EQ(read(1), Message{42});
  EXPECT_EQ(getAvailable(link_.desktop), (Message{9, 0, 0, 0, 1}));
}

TEST_F(StreamTest, sendsWhatIsNoWholeReplyWhenItIsReleased) {
  write({9, 0});
  stream_.AddRef();
  EXPECT_EQ(stream_.Release(), 1u);
  EXPECT_TRUE(getAvailable(link_.desktop).empty());
  EXPECT_EQ(stream_.Release(), 0u);
  EXPECT_EQ(getAvailable(link_.desktop), (Message{9, 0}));
  EXPECT_EQ(stream_.references(), 0u);
}

TEST_F(StreamTest, undoesARequestThatWasLeftWithoutAReply) {
  put(link_.desktop, {42});
  read(1);
  events_.clear();
  stream_.finish();
  EXPECT_EQ(events_, std::vector<std::string>{"rollback"});
}

TEST_F(StreamTest, commitsWhatWasDoneOutsideRequests) {
  stream_.finish();  // a session that did not get to its first request
  EXPECT_EQ(events_, std::vector<std::string>{"commit"});
  put(link_.desktop, {42});
  read(1);
  write({0, 0, 0, 0});
  events_.clear();
  stream_.finish();
  EXPECT_EQ(events_, std::vector<std::string>{"commit"});
}

TEST_F(StreamTest, commitsBeforeItWaitsForARequestButNotInTheMiddleOfOne) {
  put(link_.desktop, {1});
  put(link_.desktop, {2});
  read(1);
  EXPECT_EQ(events_, std::vector<std::string>{"commit"});
  read(1);
  EXPECT_EQ(events_, std::vector<std::string>{"commit"});
}

TEST_F(StreamTest, offersItsInterfacesAndNoOther) {
  for (const IID& iid : {IUnknown::kIid, ISequentialStream::kIid, IStream::kIid, IRAPIStream::kIid}) {
    void* object = this;
    EXPECT_EQ(stream_.QueryInterface(iid, &object), S_OK);
    EXPECT_EQ(object, static_cast<IRAPIStream*>(&stream_));
    stream_.Release();
  }
  void* object = this;
  EXPECT_EQ(stream_.QueryInterface(IDispatch::kIid, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
}

TEST(DeviceFailure, keepsTheReplyBackAndEndsTheStream) {
  Link link;
  bool rolledBack = false;
  RapiStream stream(
      Peer(link.device.get(), link.device.get(), -1),
      {[] { throw std::runtime_error("device.qdev: disk is full"); }, [&] { rolledBack = true; }});
  const Message reply{1, 0, 0, 0, 7};
  ULONG written = kPoison;
  EXPECT_EQ(stream.Write(reply.data(), 5, &written), E_FAIL);
  EXPECT_EQ(written, 0u);
  EXPECT_TRUE(getAvailable(link.desktop).empty());
  EXPECT_EQ(stream.deviceFailure(), "device.qdev: disk is full");

  std::uint8_t byte = 0;
  ULONG done = kPoison;
  EXPECT_EQ(stream.Read(&byte, 1, &done), E_FAIL);
  EXPECT_EQ(stream.Write(reply.data(), 5, nullptr), E_FAIL);
  EXPECT_EQ(stream.Release(), 0u);
  EXPECT_TRUE(getAvailable(link.desktop).empty());
  stream.finish();
  EXPECT_TRUE(rolledBack);
}

UnitOfWork noWork() {
  return {[] {}, [] {}};
}

TEST(StreamOverPipes, readsUntilEverythingCameHoweverItIsSplit) {
  for (const std::size_t piece : {1u, 2u, 3u, 7u}) {
    Pipe in;
    const Pipe out;
    RapiStream stream(Peer(in.read.get(), out.write.get(), -1), noWork());
    Message sent(100);
    std::iota(sent.begin(), sent.end(), std::uint8_t{0});
    std::thread desktop([&] {
      for (std::size_t i = 0; i < sent.size(); i += piece) {
        put(in.write, Message(sent.begin() + static_cast<std::ptrdiff_t>(i),
                              sent.begin() + static_cast<std::ptrdiff_t>(std::min(i + piece, sent.size()))));
      }
    });
    Message received(sent.size());
    ULONG done = kPoison;
    EXPECT_EQ(stream.Read(received.data(), static_cast<ULONG>(received.size()), &done), S_OK);
    desktop.join();
    EXPECT_EQ(done, sent.size());
    EXPECT_EQ(received, sent);
  }
}

TEST(StreamOverPipes, deliversLessAtTheEnd) {
  Pipe in;
  const Pipe out;
  RapiStream stream(Peer(in.read.get(), out.write.get(), -1), noWork());
  put(in.write, {1, 2});
  in.write = Descriptor();
  std::array<std::uint8_t, 4> buffer{};
  ULONG done = kPoison;
  EXPECT_EQ(stream.Read(buffer.data(), 4, &done), S_OK);
  EXPECT_EQ(done, 2u);
  EXPECT_EQ(stream.Read(buffer.data(), 4, &done), S_OK);
  EXPECT_EQ(done, 0u);
}

TEST(StreamOverPipes, failsOnADescriptorThatCantBeRead) {
  const Descriptor folder(open("/", O_RDONLY | O_CLOEXEC));
  RapiStream stream(Peer(folder.get(), folder.get(), -1), noWork());
  std::uint8_t byte = 0;
  ULONG done = kPoison;
  EXPECT_EQ(stream.Read(&byte, 1, &done), E_FAIL);
  EXPECT_EQ(done, 0u);
}

TEST(StreamOverPipes, sendsMoreThanAPipeHolds) {
  const Pipe in;
  const Pipe out;
  RapiStream stream(Peer(in.read.get(), out.write.get(), -1), noWork());
  constexpr ULONG kSize = 0x36000;
  Message reply(4 + kSize, 0x5A);
  reply[0] = 0;
  reply[1] = 0x60;
  reply[2] = 3;
  reply[3] = 0;
  Message received;
  std::thread desktop([&] { received = get(out.read, reply.size()); });
  EXPECT_EQ(stream.Write(reply.data(), static_cast<ULONG>(reply.size()), nullptr), S_OK);
  desktop.join();
  EXPECT_EQ(received, reply);
}

TEST(StreamOverPipes, failsWhenTheDesktopIsGone) {
  const auto old = std::signal(SIGPIPE, SIG_IGN);
  const Pipe in;
  Pipe out;
  out.read = Descriptor();
  RapiStream stream(Peer(in.read.get(), out.write.get(), -1), noWork());
  const Message reply{0, 0, 0, 0};
  EXPECT_EQ(stream.Write(reply.data(), 4, nullptr), E_FAIL);
  std::signal(SIGPIPE, old);
}

TEST(StreamOverASocket, failsWithoutASignalWhenTheDesktopIsGone) {
  Link link;
  link.desktop = Descriptor();
  RapiStream stream(Peer(link.device.get(), link.device.get(), -1), noWork());
  const Message reply{0, 0, 0, 0};
  EXPECT_EQ(stream.Write(reply.data(), 4, nullptr), E_FAIL);
  EXPECT_EQ(stream.Write(reply.data(), 4, nullptr), E_FAIL);
}

TEST(StreamOverASocket, sendsMoreThanASocketHolds) {
  Link link;
  RapiStream stream(Peer(link.device.get(), link.device.get(), -1), noWork());
  Message reply(4 + 0x400000, 0x5A);
  reply[0] = reply[1] = reply[3] = 0;
  reply[2] = 0x40;
  Message received;
  std::thread desktop([&] { received = get(link.desktop, reply.size()); });
  EXPECT_EQ(stream.Write(reply.data(), static_cast<ULONG>(reply.size()), nullptr), S_OK);
  desktop.join();
  EXPECT_EQ(received, reply);
}

TEST(StoppedStream, endsItsWaits) {
  Link link;
  Pipe stop;
  RapiStream stream(Peer(link.device.get(), link.device.get(), stop.read.get()), noWork());
  put(stop.write, {0});
  std::uint8_t byte = 0;
  ULONG done = kPoison;
  EXPECT_EQ(stream.Read(&byte, 1, &done), E_FAIL);
  EXPECT_EQ(done, 0u);
}

}  // namespace
}  // namespace emulator
