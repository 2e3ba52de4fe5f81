#include <memory>

#include "apps/qorv_sync/commands.h"
#include "desktop/file_transfer.h"
#include "desktop/text.h"

namespace qorv_sync {

namespace {

struct Arguments {
  std::filesystem::path file;
  std::string devicePath;
  bool verifyWhole = false;
};

std::string spellMegabytes(std::uint64_t bytes) {
  constexpr std::uint64_t kTenth = 100'000;
  const std::uint64_t tenths = bytes / kTenth;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " MB";
}

void finish(Report& report, const std::string& from, const std::string& to, std::uint64_t bytes) {
  report.say(from + " -> " + to + ": " + std::to_string(bytes) + " bytes");
  report.data() = {{"from", from}, {"to", to}, {"bytes", bytes}};
}

void put(Run& run, const Arguments& arguments) {
  desktop::InputFile file(arguments.file);
  const std::u16string devicePath = desktop::toUtf16(arguments.devicePath);
  const auto verify = arguments.verifyWhole ? desktop::Verify::Whole : desktop::Verify::Tail;
  desktop::putFile(run.connect(), file, devicePath, verify, [&](std::uint64_t bytes) {
    run.report.progress("sent " + spellMegabytes(bytes) + " of " + spellMegabytes(file.size()));
  });
  finish(run.report, arguments.file.string(), arguments.devicePath, file.size());
}

void get(Run& run, const Arguments& arguments) {
  const std::u16string devicePath = desktop::toUtf16(arguments.devicePath);
  desktop::OutputFile file(arguments.file);
  const std::uint64_t bytes = desktop::getFile(run.connect(), devicePath, file, [&](std::uint64_t got) {
    run.report.progress("got " + spellMegabytes(got));
  });
  file.commit();
  finish(run.report, arguments.devicePath, arguments.file.string(), bytes);
}

}  // namespace

Action definePut(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_option("FILE", arguments->file, "A file on this computer")->required();
  command
      .add_option("DEVICE-PATH", arguments->devicePath, "Its new name on the device, like '\\Temp\\a.bin'")
      ->required();
  command.add_flag("--verify", arguments->verifyWhole, "Read the whole file back, not only its end");
  return [arguments](Run& run) { put(run, *arguments); };
}

Action defineGet(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_option("DEVICE-PATH", arguments->devicePath, "A file on the device")->required();
  command.add_option("FILE", arguments->file, "Its name on this computer; a file of that name is replaced")
      ->required();
  return [arguments](Run& run) { get(run, *arguments); };
}

}  // namespace qorv_sync
