#include "desktop/session.h"

#include <array>
#include <exception>

#include "desktop/device_error.h"

namespace desktop {

namespace {

/// Length word and payload leave as one piece: in two, the second would wait for the first one's
/// acknowledgement.
Bytes frame(Command command, ItemType type, BytesView arguments) {
  WireWriter message;
  message.number(static_cast<std::uint32_t>(2 + arguments.size()));
  message.byte(static_cast<std::uint8_t>(command));
  message.byte(static_cast<std::uint8_t>(type));
  message.raw(arguments);
  return message.take();
}

}  // namespace

Session::~Session() {
  if (!inStep_) return;
  try {
    end();
  } catch (const std::exception&) {
    // Whatever brought us here without an end is what the user is told.
  }
}

Bytes Session::request(Command command, ItemType type, BytesView arguments) {
  const auto begin = std::chrono::steady_clock::now();
  inStep_ = false;
  stream_->write(frame(command, type, arguments));
  Bytes reply = readReply();
  inStep_ = true;
  if (watcher_) {
    const auto duration = std::chrono::steady_clock::now() - begin;
    watcher_({command, type, 2 + arguments.size(), reply.size(),
              std::chrono::duration_cast<std::chrono::microseconds>(duration)});
  }
  return reply;
}

void Session::end() {
  const Bytes reply = request(Command::EndSession, ItemType::Appointment);
  inStep_ = false;
  WireReader(reply).expectEnd();
  stream_->finish();
}

Bytes Session::readReply() {
  std::array<std::uint8_t, 4> word;
  const std::size_t got = readUpTo(word);
  if (got == 0) throw NoDevice(stream_->endReason() + " without an answer");
  if (got < word.size()) throw ProtocolError("the stream ended inside the length of a reply");
  const std::uint32_t length = WireReader(word).number();
  if (length > kReplyBufferSize) {
    throw ProtocolError("a reply claims " + std::to_string(length) + " bytes; the device's buffer holds " +
                        std::to_string(kReplyBufferSize));
  }
  Bytes reply(length);
  const std::size_t read = readUpTo(reply);
  if (read < length) {
    throw ProtocolError("the stream ended after " + std::to_string(read) + " of a reply's " +
                        std::to_string(length) + " bytes");
  }
  return reply;
}

std::size_t Session::readUpTo(std::span<std::uint8_t> room) {
  std::size_t filled = 0;
  while (filled < room.size()) {
    const std::size_t got = stream_->read(room.subspan(filled));
    if (got == 0) break;
    filled += got;
  }
  return filled;
}

}  // namespace desktop
