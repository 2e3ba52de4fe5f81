#include "desktop/item_writer.h"

#include <algorithm>

#include "desktop/device_error.h"

namespace desktop {

namespace {

constexpr std::size_t kWriteBatch = 64;
/// Keeps a batch of long bodies to a request that a device takes in one piece.
constexpr std::size_t kWriteBatchBytes = 256 * 1024;
constexpr std::size_t kDeleteBatch = 1000;
constexpr std::size_t kItemReplySize = 10;
/// What a batch's reply ends with at an item that the device can't make or find.
constexpr std::size_t kEarlyEndSize = 2;

constexpr std::uint8_t kAdd = 2;
constexpr std::uint8_t kChange = 3;

/// What the device echoes: an add's own number, a change's item.
std::uint32_t referenceOf(const ItemWrite& write, std::size_t index) {
  return write.oid != 0 ? write.oid : static_cast<std::uint32_t>(index + 1);
}

WriteAnswer readAnswer(WireReader& reader, std::uint32_t reference) {
  WriteAnswer answer;
  answer.accepted = reader.byte() == 1;
  reader.byte();  // the status adds nothing to a refusal
  answer.oid = reader.number();
  const std::uint32_t echoed = reader.number();
  // A lookup or creation that failed leaves both numbers 0.
  if (answer.accepted && echoed != reference) {
    throw ProtocolError("the answer to write " + std::to_string(reference) + " is about " +
                        std::to_string(echoed));
  }
  return answer;
}

/// The first writes that make one request: at least one.
std::span<const ItemWrite> takeBatch(std::span<const ItemWrite> writes) {
  std::size_t count = 0;
  for (std::size_t bytes = 0; count < std::min(kWriteBatch, writes.size()); ++count) {
    bytes += writes[count].record.size();
    if (count > 0 && bytes > kWriteBatchBytes) break;
  }
  return writes.first(count);
}

Bytes requestBatch(Session& session, ItemType type, std::span<const ItemWrite> batch) {
  WireWriter arguments;
  arguments.number(static_cast<std::uint32_t>(batch.size()));
  for (std::size_t i = 0; i < batch.size(); ++i) {
    arguments.byte(batch[i].oid == 0 ? kAdd : kChange);
    arguments.byte(static_cast<std::uint8_t>(type));
    arguments.number(referenceOf(batch[i], i));
    arguments.raw(batch[i].record);
  }
  return session.request(Command::WriteItems, type, arguments.take());
}

WriteAnswer writeOne(Session& session, ItemType type, const ItemWrite& write) {
  const std::uint32_t reference = referenceOf(write, 0);
  WireWriter arguments;
  arguments.number(reference);
  arguments.raw(write.record);
  const Command command = write.oid == 0 ? Command::AddItem : Command::ChangeItem;
  const Bytes reply = session.request(command, type, arguments.take());
  WireReader reader(reply);  // the ten bytes after the answer carry nothing
  return readAnswer(reader, reference);
}

/// The answers of the batch's first items, up to the one at which the device gave up, if it did.
std::vector<WriteAnswer> writeBatch(Session& session, ItemType type, std::span<const ItemWrite> batch) {
  const Bytes reply = requestBatch(session, type, batch);
  const std::size_t answered = reply.size() / kItemReplySize;
  const std::size_t tail = reply.size() % kItemReplySize;
  if (answered > batch.size() || tail != (answered < batch.size() ? kEarlyEndSize : 0)) {
    throw ProtocolError("the answer to " + std::to_string(batch.size()) + " writes has " +
                        std::to_string(reply.size()) + " bytes");
  }
  WireReader reader(reply);
  std::vector<WriteAnswer> answers;
  for (std::size_t i = 0; i < answered; ++i) {
    answers.push_back(readAnswer(reader, referenceOf(batch[i], i)));
  }
  return answers;
}

}  // namespace

std::vector<WriteAnswer> writeItems(Session& session, ItemType type, std::span<const ItemWrite> writes) {
  std::vector<WriteAnswer> answers;
  while (!writes.empty()) {
    const std::span<const ItemWrite> batch = takeBatch(writes);
    std::vector<WriteAnswer> answered = writeBatch(session, type, batch);
    // The device dropped the rest of the batch unread; one by one, each write gets an answer of its own.
    for (std::size_t i = answered.size(); i < batch.size(); ++i) {
      answered.push_back(writeOne(session, type, batch[i]));
    }
    answers.insert(answers.end(), answered.begin(), answered.end());
    writes = writes.subspan(batch.size());
  }
  return answers;
}

std::vector<std::uint32_t> deleteItems(Session& session, ItemType type, std::span<const std::uint32_t> oids) {
  std::vector<std::uint32_t> deleted;
  while (!oids.empty()) {
    const auto batch = oids.first(std::min(kDeleteBatch, oids.size()));
    WireWriter arguments;
    arguments.number(static_cast<std::uint32_t>(batch.size()));
    for (const std::uint32_t oid : batch) arguments.number(oid);
    const Bytes reply = session.request(Command::DeleteItems, type, arguments.take());
    WireReader reader(reply);
    while (reader.left() > 0) {
      deleted.push_back(reader.number());
      if (std::find(batch.begin(), batch.end(), deleted.back()) == batch.end()) {
        throw ProtocolError("the device says it deleted item " + std::to_string(deleted.back()) +
                            ", which it was not told to");
      }
    }
    oids = oids.subspan(batch.size());
  }
  return deleted;
}

}  // namespace desktop
