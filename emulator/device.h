// One emulated device: everything it has, over one file.
#pragma once

#include <iostream>
#include <string>

#include "emulator/database/object_information.h"
#include "emulator/database/property_databases.h"
#include "emulator/ink/rich_ink.h"
#include "emulator/messaging/messaging.h"
#include "emulator/pim/host_memory.h"
#include "emulator/pim/object_model.h"
#include "emulator/recorder/change_recorder.h"
#include "emulator/store/object_store.h"
#include "emulator/system/clock.h"
#include "emulator/system/com_apartment.h"
#include "emulator/system/configuration.h"
#include "emulator/system/debug_output.h"
#include "emulator/system/file_search.h"
#include "emulator/system/file_system.h"
#include "emulator/system/file_tree.h"
#include "emulator/system/handle_table.h"
#include "emulator/system/last_error.h"
#include "emulator/system/message_boxes.h"
#include "emulator/system/modules.h"
#include "emulator/system/processes.h"
#include "emulator/system/registry.h"
#include "emulator/system/sockets.h"
#include "emulator/system/temp_files.h"
#include "emulator/system/windows.h"

namespace emulator {

/// What a device is made with.
struct NewDevice {
  OsVersion osVersion;
  TIME_ZONE_INFORMATION timeZone = utcZone();
  std::u16string modulePath{kDefaultModulePath};
  Clock::Source hostClock = hostTime;
};

/// How a device is opened.
struct DeviceOptions {
  Clock::Pace pace = Clock::Pace::Skipping;
  Clock::Source hostClock = hostTime;
  std::ostream& messages =
      std::cerr;  ///< where message boxes and debugger output are reported; must outlive the device
  /// Where the device allocates for the agent, when not in the program's own memory; must outlive the device.
  PlatformMemory* memory = nullptr;
};

/// The members use each other: a later one those before it.
struct Device {
  /// Makes a device file with the folders of a fresh device and the agent's. Throws StoreError, see
  /// ObjectStore::create, and std::invalid_argument when no file can be at the module's path; nothing is left
  /// at the path of the device file then.
  static void create(const std::string& path, const NewDevice& description);

  /// Opens a device file. Throws StoreError; see ObjectStore.
  explicit Device(const std::string& path, const DeviceOptions& options = {});
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;
  ~Device() = default;

  /// From now on no change is recorded, whoever makes it.
  void stopRecording();

  /// Makes what changed since the last commit permanent. Called before a reply leaves the device.
  void commit();
  /// Undoes what changed in the device file since the last commit. Open handles stay.
  void rollback();

  ObjectStore store;
  LastError lastError;
  HandleTable handles;
  Configuration configuration;
  Clock clock;
  Registry registry;
  FileTree fileTree;
  FileSystem files;
  FileSearch searches;
  TempFiles tempFiles;
  Windows windows;
  RichInk richInk;
  Processes processes;
  MessageBoxes messageBoxes;
  DebugOutput debugOutput;
  Sockets sockets;
  Modules modules;
  ComApartment com;
  HostMemory hostMemory;
  PlatformMemory& memory;  ///< where the device's calls allocate for the agent
  DatabaseStore databaseStore;
  PropertyDatabases databases;
  ObjectInformation objects;
  ObjectModel objectModel;
  Messaging messaging;
  ChangeRecorder recorder;
};

}  // namespace emulator
