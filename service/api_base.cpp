#include "service/api_base.h"

namespace qorv {

void CQorvApiBase::setContext(const HandlerContext& context) {
  requestCursor_ = context.request.data();
  setRequestEnd(context.request.data() + context.request.size());
  setResponseBuffer(context.responseBuffer);
  application_ = &context.application;
}

bool CQorvApiBase::ReadItemRecord(IDispatch*, DWORD) {
  return false;
}

bool CQorvApiBase::WriteItemRecord(IDispatch*, const BYTE*, DWORD&, ItemReplyHeader& header) {
  // The reply is then the header alone, not the doubled one of a type with a writer.
  setResponseLength(0);
  header.result = 0;
  header.status = kStatusNoWriter;
  return false;
}

bool CQorvApiBase::AcceptItem(DWORD, DWORD) {
  return true;
}

}  // namespace qorv
