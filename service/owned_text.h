// Owns a text that the object model handed out.
#pragma once

#include "platform/outlook.h"

namespace qorv {

/// Freed through the application that handed it out. A text that never came reads as empty.
class OwnedText {
 public:
  explicit OwnedText(IPOutlookApp& application) : application_(application) {}
  OwnedText(const OwnedText&) = delete;
  OwnedText& operator=(const OwnedText&) = delete;
  ~OwnedText() {
    if (text_) application_.SysFreeString(text_);
  }

  [[nodiscard]] BSTR* put() { return &text_; }
  [[nodiscard]] LPCWSTR get() const { return text_ ? text_ : u""; }
  explicit operator bool() const { return text_ != nullptr; }

 private:
  IPOutlookApp& application_;
  BSTR text_ = nullptr;
};

}  // namespace qorv
