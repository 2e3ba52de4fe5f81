#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/item_types.h"
#include "desktop/device_error.h"
#include "desktop/raw_record.h"

namespace qorv_sync {

namespace {

struct Arguments {
  std::string type;
  std::uint32_t oid = 0;
  bool raw = false;
};

std::string inHex(desktop::BytesView bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    char spelled[4];
    std::snprintf(spelled, sizeof spelled, "%02X ", byte);
    text += spelled;
  }
  if (!text.empty()) text.pop_back();
  return text;
}

void sayPart(Report& report, const desktop::RawPart& part) {
  constexpr std::size_t kBytesInALine = 16;
  char offset[16];
  std::snprintf(offset, sizeof offset, "%6zu  ", part.offset);
  report.say(offset + part.name + (part.value.empty() ? "" : ": " + part.value));
  for (desktop::BytesView rest = part.bytes; !rest.empty();) {
    const desktop::BytesView line = rest.first(std::min(kBytesInALine, rest.size()));
    report.say("        " + inHex(line));
    rest = rest.subspan(line.size());
  }
}

void dump(Run& run, const Arguments& arguments) {
  const desktop::ItemKind& kind = kindNamed(arguments.type);
  const std::string name = arguments.type + " " + std::to_string(arguments.oid) + ": ";
  desktop::Bytes record;
  try {
    record = desktop::readRawRecord(run.connect(), kind, arguments.oid);
  } catch (const desktop::DeviceRefusal& refusal) {
    return run.report.fail(name + refusal.what());
  }
  const desktop::RawParts taken = desktop::takeApart(record, kind.layouts);
  nlohmann::json& data = run.report.data();
  data = {{"type", arguments.type}, {"oid", arguments.oid}, {"parts", nlohmann::json::array()}};
  for (const desktop::RawPart& part : taken.parts) {
    sayPart(run.report, part);
    data["parts"].push_back(
        {{"offset", part.offset}, {"name", part.name}, {"value", part.value}, {"bytes", inHex(part.bytes)}});
  }
  if (!taken.fault.empty()) throw desktop::ProtocolError(name + taken.fault);
}

}  // namespace

Action defineDump(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_flag("--raw", arguments->raw, "The record's bytes, with the names of its fields")->required();
  command.add_option("TYPE", arguments->type, spellKinds())->required();
  command.add_option("OID", arguments->oid, "The item's identifier")->required();
  return [arguments](Run& run) { dump(run, *arguments); };
}

}  // namespace qorv_sync
