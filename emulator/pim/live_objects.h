// Counts the live objects of the object model and the messaging library by class, so that tests can prove that nothing leaks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace emulator {

enum class ModelClass : std::uint8_t {
  Application,
  Folder,
  ItemCollection,
  Contact,
  Appointment,
  Task,
  RecurrencePattern,
  Exceptions,
  Exception,
  BodyStream,
  MailSession,
  MailStore,
  MailFolder,
  Message,
  Attachment,
  MailTable,
  MailStream,
  kCount,
};

class LiveObjects {
 public:
  std::size_t count(ModelClass kind) const { return counts_[static_cast<std::size_t>(kind)]; }
  std::size_t total() const { return std::accumulate(counts_.begin(), counts_.end(), std::size_t{0}); }

 private:
  friend class LiveObject;
  std::array<std::size_t, static_cast<std::size_t>(ModelClass::kCount)> counts_{};
};

/// A member of every object: counts it for as long as it lives.
class LiveObject {
 public:
  LiveObject(LiveObjects& objects, ModelClass kind)
      : count_(objects.counts_[static_cast<std::size_t>(kind)]) {
    ++count_;
  }
  LiveObject(const LiveObject&) = delete;
  LiveObject& operator=(const LiveObject&) = delete;
  ~LiveObject() { --count_; }

 private:
  std::size_t& count_;
};

}  // namespace emulator
