// How the library ends when it can't go on: a fault that the device reports against the program.

#include <cstdlib>
#include <exception>

extern "C" {

[[noreturn]] void abort() {
  __builtin_trap();
}

[[noreturn]] void __cxa_pure_virtual() {
  abort();
}
}

namespace __cxxabiv1 {
// The run time's own handler prints what escaped, for which it brings a demangler and the standard streams.
extern std::terminate_handler __terminate_handler;
std::terminate_handler __terminate_handler = &std::abort;
}  // namespace __cxxabiv1
