// The session object: the logged-on object model and the response buffer of one session.
#pragma once

#include "channel/response_buffer.h"
#include "platform/outlook.h"
#include "service/com_ptr.h"

namespace qorv {

class COutlook {
 public:
  COutlook() = default;
  COutlook(const COutlook&) = delete;
  COutlook& operator=(const COutlook&) = delete;
  /// Logs off and releases the application.
  virtual ~COutlook();

  /// Initialises COM, makes the application object and logs on. An application that is set counts as logged
  /// on, also one whose log-on failed: a later invocation goes on with it.
  bool logOn();

  [[nodiscard]] IPOutlookApp* application() const { return application_.get(); }
  [[nodiscard]] ResponseBuffer& responseBuffer() { return responseBuffer_; }

 private:
  HRESULT createApplication();

  ComPtr<IPOutlookApp> application_;
  ResponseBuffer responseBuffer_;
};

}  // namespace qorv
