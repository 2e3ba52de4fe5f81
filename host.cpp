#include "platform/appointment.h"
#include <dlfcn.h>
#include <cstdio>
#include <typeinfo>
struct Tap { const void* vptr; };
HRESULT thunk(Tap*, DATE d) { std::printf("thunk %g\n", (double)d); return 7; }
struct VT { std::ptrdiff_t top; const std::type_info* t; void* slots[50]; };
int main() {
  static VT vt{0, &typeid(IAppointment), {}};
  for (auto& s : vt.slots) s = (void*)&thunk;
  Tap tap{&vt.slots[0]};
  void* m = dlopen("./agent.so", RTLD_NOW); if (!m) { puts(dlerror()); return 1; }
  auto f = (HRESULT(*)(IAppointment*))dlsym(m, "f");
  auto* a = reinterpret_cast<IAppointment*>(&tap);
  std::printf("local %d\n", a->put_Start(2.5));
  std::printf("%d\n", f(a));
}
