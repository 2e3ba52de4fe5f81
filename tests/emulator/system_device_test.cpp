// The device as a whole: what it is made with, and its units of work.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/emulator/file_test.h"

namespace emulator {
namespace {

using WholeDevice = test::FileTest;

TEST_F(WholeDevice, hasItsDefaultsWhenItIsFresh) {
  EXPECT_EQ(device().configuration.osVersion(), (OsVersion{4, 20, 14053}));
  EXPECT_EQ(device().configuration.modulePath(), u"\\Windows\\QORVAPIMGR.dll");
  EXPECT_EQ(device().configuration.timeZone().information().Bias, 0);
  EXPECT_EQ(device().configuration.timeZone().periodAt(hostNow_), TIME_ZONE_ID_UNKNOWN);
  for (const std::u16string_view folder : {u"\\Windows", u"\\Temp", u"\\My Documents"}) {
    EXPECT_TRUE(node(folder)->isFolder());
  }
}

TEST_F(WholeDevice, isMadeWithWhatItsMakerChose) {
  NewDevice description;
  description.osVersion = {3, 0, 11171};
  description.modulePath = u"\\Windows\\042\\QORVAPIMGR.dll";
  description.timeZone.Bias = 480;
  description.timeZone.DaylightDate = {0, 4, 0, 1, 2, 0, 0, 0};
  const std::string path = folder_.file("other");
  Device::create(path, description);
  Device other(path);
  EXPECT_EQ(other.configuration.osVersion(), (OsVersion{3, 0, 11171}));
  EXPECT_EQ(other.configuration.modulePath(), u"\\Windows\\042\\QORVAPIMGR.dll");
  EXPECT_EQ(other.configuration.timeZone().information().Bias, 480);
  EXPECT_EQ(other.configuration.timeZone().information().DaylightDate.wMonth, 4);
}

TEST_F(WholeDevice, isNotMadeOverAnother) {
  make(u"\\Temp\\a", "x");
  reopen();
  EXPECT_THROW(Device::create(path_, NewDevice()), StoreError);
  EXPECT_EQ(contents(u"\\Temp\\a"), "x");
}

TEST_F(WholeDevice, rollbackUndoesEverythingSinceTheLastCommit) {
  make(u"\\Temp\\kept", "x");
  device().commit();
  make(u"\\Temp\\undone", "x");
  device().registry.put(u"HKEY_LOCAL_MACHINE\\X", numberValue(u"n", 1));
  device().clock.sleep(1000);
  device().rollback();
  EXPECT_TRUE(node(u"\\Temp\\kept"));
  EXPECT_FALSE(node(u"\\Temp\\undone"));
  EXPECT_FALSE(device().registry.get(u"HKEY_LOCAL_MACHINE\\X", u"n"));
  EXPECT_EQ(device().clock.now(), hostNow_);
}

TEST_F(WholeDevice, keepsWhatWasAnsweredWhenItsProcessIsKilled) {
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    Device session(path_);
    const HANDLE file = session.files.createFile(u"\\Temp\\a", GENERIC_WRITE, 0, CREATE_NEW, 0);
    session.files.writeFile(file, "answered", 8, nullptr);
    session.commit();
    session.files.writeFile(file, "not yet", 7, nullptr);
    _exit(0);  // No destructor runs: as if the process had been killed.
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(contents(u"\\Temp\\a"), "answered");
}

}  // namespace
}  // namespace emulator
