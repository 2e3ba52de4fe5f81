#include "emulator/calls/call_log.h"

#include <cerrno>
#include <cstring>

namespace emulator {

CallLog::CallLog(const std::string& file) : file_(file), out_(file, std::ios::binary | std::ios::trunc) {
  if (!out_) throw CallLogError(file + ": the call log can't be written: " + std::strerror(errno));
}

CallLog::Line& CallLog::begin(std::string_view call) {
  Line& line = open_.emplace_back();
  line.json_.beginObject();
  line.json_.key("call");
  line.json_.text(call);
  line.json_.key("args");
  line.json_.beginArray();
  return line;
}

void CallLog::Line::endArguments() {
  json_.endArray();
  json_.key("result");
}

void CallLog::end(Line& line) {
  line.json_.endObject();
  line.complete_ = true;
  for (; !open_.empty() && open_.front().complete_; open_.pop_front())
    out_ << open_.front().json_.str() << '\n';
  // A device that is killed leaves the log of everything that it did.
  if (open_.empty()) out_.flush();
}

void CallLog::check() const {
  if (!out_) throw CallLogError(file_ + ": the call log is not complete: a line could not be written");
}

}  // namespace emulator
