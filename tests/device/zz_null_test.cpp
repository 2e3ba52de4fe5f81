#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include "emulator/arm/traps.h"
#include "emulator/session/session_error.h"
#include "tests/device/loaded_library.h"
#include "tests/device/tiny_library.h"
namespace test { namespace {
TEST(Null, each) {
  emulator::test::TemporaryFolder files;
  for (const auto& trap : emulator::arm::platformTraps()) {
    if (trap.interface) continue;
    TinyLibrary lib{.session={kTakeSlots,kPushLink,0xE24DD020,0xE3A00000,0xE3A01000,0xE3A02000,0xE3A03000,
      0xE58D0000,0xE58D0004,0xE58D0008,0xE58D000C,0xE58D0010,0xE58D0014,0xE58D0018,kLinkBehindNext,kCallFirstImport,0xE28DD020,kPopAndReturn},.imports={std::string(trap.name)}};
    auto b=lib.bytes();
    auto f=files.write("t.dll",std::string(b.begin(),b.end()));
    pid_t p=fork();
    if(p==0){ alarm(5); int rc=0; try { LoadedLibrary l(f); ScriptedStream s{Bytes()}; l.agent->serve(&s);} catch(const std::exception&e){ fprintf(stderr,"%s: %s\n",std::string(trap.name).c_str(),e.what()); rc=1;} _exit(rc);}
    int st; waitpid(p,&st,0); if(WIFSIGNALED(st)) fprintf(stderr,"CRASH %s sig %d\n",std::string(trap.name).c_str(),WTERMSIG(st));
  }
}}}
