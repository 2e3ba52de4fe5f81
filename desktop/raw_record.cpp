#include "desktop/raw_record.h"

#include "desktop/device_error.h"
#include "desktop/exception_record.h"
#include "desktop/local_time.h"
#include "desktop/recurrence_block.h"
#include "desktop/recurrence_fields.h"
#include "desktop/temporary_files.h"
#include "desktop/text.h"

namespace desktop {

namespace {

std::string spellWireTime(const LocalTime& time) {
  return isNone(time) || isValid(time) ? spellTime(time) : "no time";
}

class RecordTaker {
 public:
  RecordTaker(BytesView record, std::span<const FieldLayout> layouts)
      : record_(record), reader_(record), layouts_(layouts) {}

  RawParts take() {
    try {
      takeHeader();
      if (!layouts_.empty()) {
        for (; fields_ > 0; --fields_) takeField();
        reader_.expectEnd();
      }
    } catch (const ProtocolError& error) {
      result_.fault = error.what();
    }
    const std::size_t done = result_.parts.empty() ? 0 : endOf(result_.parts.back());
    if (done < record_.size()) result_.parts.push_back({done, record_.subspan(done), "the rest", {}});
    return std::move(result_);
  }

 private:
  static std::size_t endOf(const RawPart& part) { return part.offset + part.bytes.size(); }

  std::size_t offset() const { return record_.size() - reader_.left(); }

  /// `read()` takes the part from the reader and spells its value.
  template <typename Read>
  void part(std::string name, Read read) {
    const std::size_t begin = offset();
    std::string value = read();
    result_.parts.push_back(
        {begin, record_.subspan(begin, offset() - begin), std::move(name), std::move(value)});
  }

  void takeHeader() {
    part("result", [&] { return std::to_string(reader_.byte()); });
    part("status", [&] { return std::to_string(reader_.byte()); });
    part("OID", [&] { return std::to_string(reader_.number()); });
    part("fields", [&] {
      fields_ = reader_.byte();
      return std::to_string(fields_);
    });
  }

  const FieldLayout& layoutFor(std::uint32_t tag) const {
    for (const FieldLayout& layout : layouts_) {
      if (layout.tag == tag) return layout;
    }
    throw ProtocolError("there is no field " + std::to_string(tag));
  }

  void takeField() {
    WireReader ahead = reader_;
    const FieldLayout& layout = layoutFor(ahead.number());
    std::uint32_t exceptions = 0;
    part(std::string(layout.name) + " (tag " + std::to_string(layout.tag) + ")", [&] {
      reader_.number();
      if (layout.encoding != FieldEncoding::Recurrence) return takeValue(layout.encoding);
      const RecurrenceBlock block = readRecurrenceBlock(reader_);
      exceptions = block.exceptionCount;
      return std::string(shapeOf(block.rule.type).name);
    });
    for (std::uint32_t i = 1; i <= exceptions; ++i) {
      part("exception " + std::to_string(i), [&] { return spellDay(readException(reader_).originalDate); });
    }
  }

  std::string takeValue(FieldEncoding encoding) {
    switch (encoding) {
      case FieldEncoding::Text:
        return desktop::quoted(reader_.text());
      case FieldEncoding::Time:
        return spellWireTime(reader_.time());
      case FieldEncoding::Number:
      case FieldEncoding::Recurrence:
        break;
    }
    return std::to_string(reader_.number());
  }

  BytesView record_;
  WireReader reader_;
  std::span<const FieldLayout> layouts_;
  int fields_ = 0;
  RawParts result_;
};

/// What the device answers instead of a record: result 0, status 3; or, of a type that it doesn't look up first, a
/// header without result, number and fields.
bool isRefusal(BytesView answer) {
  constexpr std::size_t kRefusalSize = 2;
  return answer.size() == kRefusalSize || (answer.size() == kRecordHeaderSize && answer.front() == 0);
}

}  // namespace

RawParts takeApart(BytesView record, std::span<const FieldLayout> layouts) {
  return RecordTaker(record, layouts).take();
}

Bytes readRawRecord(Session& session, const ItemKind& kind, std::uint32_t oid) {
  WireWriter arguments;
  arguments.number(oid);
  Bytes record = session.request(Command::ReadItem, kind.type, arguments.take());
  if (isRefusal(record)) throw DeviceRefusal("the device has no such item");
  if (kind.files != nullptr) {
    TemporaryFiles left(session);
    left.own(kind.files->inPart(WireReader(record)));
    left.remove();
  }
  return record;
}

}  // namespace desktop
