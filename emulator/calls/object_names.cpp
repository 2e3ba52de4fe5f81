#include "emulator/calls/object_names.h"

namespace emulator {

namespace {

constexpr std::string_view kAnyObject = "object";

}  // namespace

const std::string& ObjectNames::named(Key key, std::string_view kind) {
  const auto [entry, isNew] = names_.try_emplace(std::move(key));
  if (isNew) {
    const unsigned number = ++counts_.try_emplace(std::string(kind)).first->second;
    entry->second.append("@").append(kind).append("#").append(std::to_string(number));
  }
  return entry->second;
}

const std::string& ObjectNames::name(std::string_view kind, const void* value) {
  return named({std::string(kind), value}, kind);
}

const std::string& ObjectNames::objectName(std::string_view kind, const void* object) {
  return named({std::string(kAnyObject), object}, kind);
}

void ObjectNames::forget(std::string_view kind, const void* value) {
  names_.erase({std::string(kind), value});
}

void ObjectNames::forgetObject(const void* object) {
  names_.erase({std::string(kAnyObject), object});
}

}  // namespace emulator
