// Names for what has no readable value: handles, windows, blocks and objects, the same name for the same one.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace emulator {

class ObjectNames {
 public:
  /// "@HWND#2" for the second window seen. Values of different kinds never share a name.
  const std::string& name(std::string_view kind, const void* value);
  /// The same for objects, which are told apart by their address alone: an object keeps the name of the kind
  /// under which it was seen first.
  const std::string& objectName(std::string_view kind, const void* object);

  /// What comes later at the same value is another one.
  void forget(std::string_view kind, const void* value);
  void forgetObject(const void* object);

 private:
  using Key = std::pair<std::string, const void*>;
  const std::string& named(Key key, std::string_view kind);

  std::map<Key, std::string> names_;
  std::map<std::string, unsigned, std::less<>> counts_;
};

}  // namespace emulator
