#include "emulator/system/message_boxes.h"

#include <array>

#include "emulator/system/one_line.h"

namespace emulator {
namespace {

constexpr int kOk = 1;
constexpr int kRetry = 4;
constexpr int kYes = 6;
/// By the style's low four bits: OK, OK/Cancel, Abort/Retry/Ignore, Yes/No/Cancel, Yes/No, Retry/Cancel.
constexpr std::array kAgreeing{kOk, kOk, kRetry, kYes, kYes, kRetry};

}  // namespace

int MessageBoxes::show(std::u16string_view text, std::u16string_view caption, UINT style) {
  shown_.push_back({std::u16string(text), std::u16string(caption), style});
  report_ << "message box \"" << onOneLine(caption) << "\": " << onOneLine(text) << std::endl;
  const UINT buttons = style & 0xF;
  return buttons < kAgreeing.size() ? kAgreeing[buttons] : kOk;
}

}  // namespace emulator
