// Contracts and change logs. The base has none: the reply stays empty.

#include "service/api_base.h"

namespace qorv {

bool CQorvApiBase::CreateContract() {
  return false;
}
bool CQorvApiBase::DeleteContract() {
  return false;
}
bool CQorvApiBase::FindContract() {
  return false;
}
bool CQorvApiBase::GetChanges() {
  return false;
}
bool CQorvApiBase::CommitChanges(bool) {
  return false;
}

}  // namespace qorv
