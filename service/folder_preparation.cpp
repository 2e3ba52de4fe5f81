#include "service/folder_preparation.h"

#include "platform/errors.h"

namespace qorv {

namespace {

/// Changes by other processes, 1, and by this one, 2.
constexpr ULONG kAllChanges = 3;

/// The object model takes a window as a number of 32 bits.
LONG windowNumber(HWND window) {
  return static_cast<LONG>(reinterpret_cast<std::uintptr_t>(window));
}

ComPtr<IPOutlookApp> createApplication() {
  void* object = nullptr;
  if (FAILED(CoCreateInstance(CLSID_Application, nullptr, CLSCTX_INPROC_SERVER, kInterfaceId<IPOutlookApp>,
                              &object))) {
    return {};
  }
  return ComPtr<IPOutlookApp>(static_cast<IPOutlookApp*>(object));
}

bool notifyAllChanges(IPOutlookApp& application, int folderNumber) {
  ComPtr<IFolder> folder;
  if (FAILED(application.GetDefaultFolder(folderNumber, folder.put())) || !folder) return false;
  const auto properties = queryInterface<IItem>(*folder);
  if (!properties) return false;
  CEPROPVAL wish{};
  wish.propid = PIMPR_FOLDERNOTIFICATIONS;
  wish.val.ulVal = kAllChanges;
  return SUCCEEDED(properties->SetProps(0, 1, &wish));
}

}  // namespace

FolderPreparation& folderPreparation() {
  static FolderPreparation preparation;
  return preparation;
}

bool prepareObjectModelFolders() {
  FolderPreparation& preparation = folderPreparation();
  CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  preparation.application = createApplication();
  if (!preparation.application) return false;
  IPOutlookApp& application = *preparation.application;
  if (FAILED(application.Logon(windowNumber(preparation.owner)))) return false;
  bool isAnyPrepared = false;
  for (const int folder : {olFolderCalendar, olFolderContacts, olFolderTasks}) {
    if (notifyAllChanges(application, folder)) isAnyPrepared = true;
  }
  return isAnyPrepared;
}

void releaseObjectModelFolders() {
  folderPreparation().application.reset();
  CoUninitialize();
}

}  // namespace qorv
