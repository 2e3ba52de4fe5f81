#include "desktop/item_reader.h"

#include <algorithm>

#include "desktop/device_error.h"
#include "desktop/list_header.h"

namespace desktop {

namespace {

/// About as many everyday appointments as the device puts into one reply.
constexpr std::size_t kReadBatch = 128;
constexpr std::size_t kOidSize = 4;
/// The answer to a list with an unknown item in it has this many unused bytes at its end.
constexpr std::size_t kUnknownItemTail = 7;

Bytes requestRecords(Session& session, ItemType type, std::span<const std::uint32_t> oids) {
  WireWriter arguments;
  arguments.number(static_cast<std::uint32_t>(oids.size()));
  for (const std::uint32_t oid : oids) arguments.number(oid);
  return session.request(Command::ReadItems, type, arguments.take());
}

ReadFailure whyNothing(const Bytes& reply, const ListHeader& header) {
  if (!header.done) return ReadFailure::Refused;
  return reply.size() == kListHeaderSize + kUnknownItemTail ? ReadFailure::NotFound : ReadFailure::TooLarge;
}

/// How many of the batch's first items are settled. None are when a list of several holds an unknown item, or
/// begins with one that is too large: the device doesn't say which it was.
std::size_t readBatch(Session& session, ItemType type, std::span<const std::uint32_t> oids,
                      const ItemSink& sink) {
  const Bytes reply = requestRecords(session, type, oids);
  WireReader reader(reply);
  const ListHeader header = readListHeader(reader);
  if (header.count > oids.size()) {
    throw ProtocolError("a reply lists " + std::to_string(header.count) + " items; " +
                        std::to_string(oids.size()) + " were asked for");
  }
  if (!header.done || header.count == 0) {
    if (oids.size() > 1) return 0;
    sink.failure(oids.front(), whyNothing(reply, header));
    return 1;
  }
  for (const std::uint32_t oid : oids.first(header.count)) sink.record(reader, oid);
  // A list that stopped early ends with what it had of the next record.
  if (header.count == oids.size()) reader.expectEnd();
  return header.count;
}

}  // namespace

std::optional<std::uint32_t> countItems(Session& session, ItemType type) {
  const Bytes reply = session.request(Command::CountItems, type);
  WireReader reader(reply);
  const bool done = reader.byte() == 1;
  reader.byte();
  const std::uint32_t count = reader.number();
  reader.expectEnd();
  return done ? std::optional(count) : std::nullopt;
}

std::vector<std::uint32_t> listItems(Session& session, ItemType type) {
  const Bytes reply = session.request(Command::GetAllItems, type);
  WireReader reader(reply);
  const ListHeader header = readListHeader(reader);
  if (!header.done) throw DeviceRefusal("the device can't list all its items");
  expectEntries(reader, header, kOidSize);
  std::vector<std::uint32_t> oids(header.count);
  for (std::uint32_t& oid : oids) oid = reader.number();
  return oids;
}

std::string spell(ReadFailure failure) {
  switch (failure) {
    case ReadFailure::NotFound:
      return "the device has no such item";
    case ReadFailure::TooLarge:
      return "too large for the device to send";
    case ReadFailure::NotSupported:
      return "the device's platform can't convert it";
    case ReadFailure::Refused:
      break;
  }
  return "the device refused to send it";
}

void readItems(Session& session, ItemType type, std::span<const std::uint32_t> oids, const ItemSink& sink) {
  std::size_t batch = kReadBatch;
  while (!oids.empty()) {
    const std::size_t asked = std::min(batch, oids.size());
    const std::size_t settled = readBatch(session, type, oids.first(asked), sink);
    oids = oids.subspan(settled);
    // Halving closes in on an item that spoils its list; doubling leaves it behind.
    batch = settled == 0 ? asked / 2 : std::min(batch * 2, kReadBatch);
  }
}

}  // namespace desktop
