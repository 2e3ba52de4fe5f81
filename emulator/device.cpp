#include "emulator/device.h"

#include <stdexcept>

#include "emulator/pim/local_clock.h"
#include "emulator/system/path_folders.h"
#include "emulator/system/utf16.h"

namespace emulator {
namespace {

constexpr std::u16string_view kFreshFolders[] = {u"\\Windows", u"\\Temp", u"\\My Documents"};

void fill(ObjectStore& store, const NewDevice& description) {
  Configuration configuration(store.settings());
  configuration.setOsVersion(description.osVersion);
  configuration.setTimeZone(description.timeZone);
  configuration.setModulePath(description.modulePath);
  const Clock clock(store.settings(), description.hostClock, Clock::Pace::Skipping);
  FileTree files(store, clock);
  for (const std::u16string_view folder : kFreshFolders) files.makeFolders(folder);
  if (const auto reason = makeModuleFolder(files, description.modulePath)) {
    throw std::invalid_argument('"' + toUtf8(description.modulePath) + "\": " + *reason);
  }
}

}  // namespace

void Device::create(const std::string& path, const NewDevice& description) {
  ObjectStore::create(path, [&description](ObjectStore& newStore) { fill(newStore, description); });
}

Device::Device(const std::string& path, const DeviceOptions& options)
    : store(path),
      configuration(store.settings()),
      clock(store.settings(), options.hostClock, options.pace),
      registry(store.connection(), handles),
      fileTree(store, clock),
      files(fileTree, handles, lastError),
      searches(fileTree, handles, lastError),
      tempFiles(fileTree, registry, clock, lastError),
      windows(lastError),
      richInk(windows),
      processes(fileTree, windows, clock, handles, lastError),
      messageBoxes(options.messages),
      debugOutput(options.messages),
      sockets(lastError),
      modules(configuration, lastError),
      memory(options.memory == nullptr ? hostMemory : *options.memory),
      databaseStore(store, clock),
      databases(databaseStore, memory, handles, lastError),
      objects(store, fileTree, databaseStore, lastError),
      objectModel(store, memory, localClock(clock, configuration)),
      messaging(store, memory),
      recorder(databaseStore, registry, configuration) {
  const auto record = [this](const ItemChange& change) { recorder.record(change); };
  objectModel.items().setListener(record);
  messaging.mailbox().setListener(record);
}

void Device::stopRecording() {
  objectModel.items().setListener({});
  messaging.mailbox().setListener({});
}

void Device::commit() {
  store.commit();
  recorder.endRequest();
}

void Device::rollback() {
  store.rollback();
  clock.reload();
  databaseStore.forgetUndone();
  recorder.endRequest();
}

}  // namespace emulator
