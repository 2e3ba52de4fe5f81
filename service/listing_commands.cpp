// The list of all items of a type.

#include "service/api_base.h"
#include "service/item_access.h"

namespace qorv {

/// A failure at any step leaves the item out.
void CQorvApiBase::listItem(IPOutlookItemCollection& items, int index) {
  ComPtr<IDispatch> any;
  if (FAILED(items.Item(index, any.put())) || !any) return;
  const auto item = queryInterface<IItem>(*any);
  LONG oid = 0;
  if (!item || FAILED(item->get_Oid(&oid)) || oid == 0) return;
  if (AcceptItem(static_cast<DWORD>(oid), 0) && WriteDword(static_cast<DWORD>(oid))) ++listHeader_.count;
}

void CQorvApiBase::listFolder(IPOutlookItemCollection& items, int count) {
  for (int i = count; i >= 1 && !bufferFull(); --i) listItem(items, i);
  // Nobody shall take a part for the whole.
  listHeader_.result = bufferFull() ? 0 : 1;
}

bool CQorvApiBase::GetAllItems() {
  setResponseLength(0);
  DWORD position = 0;
  skipTypeByte(position);
  listHeader_.result = 0;
  writeListHeader();
  const FolderItems folder = openFolder(application(), traits_.defaultFolder);
  if (folder.items) listFolder(*folder.items, folder.count);
  copyListHeader(0);
  return listHeader_.result != 0;
}

}  // namespace qorv
