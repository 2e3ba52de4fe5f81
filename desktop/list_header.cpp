#include "desktop/list_header.h"

#include "desktop/device_error.h"

namespace desktop {

ListHeader readListHeader(WireReader& reader) {
  ListHeader header;
  header.done = reader.byte() == 1;
  header.status = reader.byte();
  header.count = reader.number();
  reader.byte();  // the last record's field count
  return header;
}

void expectEntries(const WireReader& reader, const ListHeader& header, std::size_t size) {
  if (reader.left() == std::size_t{header.count} * size) return;
  throw ProtocolError("a list of " + std::to_string(header.count) + " entries has " +
                      std::to_string(reader.left()) + " bytes");
}

}  // namespace desktop
