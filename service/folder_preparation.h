// A second object-model application, through which a host application has all changes of the folders
// notified.
#pragma once

#include "platform/outlook.h"
#include "service/com_ptr.h"

namespace qorv {

/// Kept for the whole process, like the window that the notifications are for.
struct FolderPreparation {
  HWND owner = nullptr;  ///< what the application logs on with; set by the host application
  ComPtr<IPOutlookApp> application;
};
FolderPreparation& folderPreparation();

/// Makes the application, logs on and asks calendar, contacts and tasks to notify all changes. True when at
/// least one of the three took the wish. What was made stays until releaseObjectModelFolders, also after a
/// failure.
bool prepareObjectModelFolders();

/// Releases the application and leaves the component library.
void releaseObjectModelFolders();

}  // namespace qorv
