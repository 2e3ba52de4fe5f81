// Device files: what is refused, identifiers that are never used again, and commits that outlive the process.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

#include "emulator/store/object_store.h"
#include "emulator/store/schema.h"
#include "tests/emulator/temporary_folder.h"

namespace emulator {
namespace {

using testing::HasSubstr;

class DeviceFile : public testing::Test {
 protected:
  std::string createAt(const std::string& name) {
    const std::string path = folder_.file(name);
    ObjectStore::create(path, [](ObjectStore&) {});
    return path;
  }

  static std::string refusal(const std::string& path) {
    try {
      ObjectStore store(path);
    } catch (const StoreError& error) {
      return error.what();
    }
    return "it was opened";
  }

  static std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  test::TemporaryFolder folder_;
};

TEST_F(DeviceFile, thatDoesNotExistIsRefused) {
  const std::string path = folder_.file("none");
  EXPECT_EQ(refusal(path), path + ": no such file");
  EXPECT_TRUE(folder_.isEmpty());
}

TEST_F(DeviceFile, thatIsADirectoryIsRefused) {
  const std::string path = folder_.file("");
  EXPECT_EQ(refusal(path), path + ": is a directory");
}

TEST_F(DeviceFile, thatIsEmptyIsRefusedAndStaysEmpty) {
  const std::string path = folder_.write("empty", "");
  EXPECT_EQ(refusal(path), path + ": not a device file");
  EXPECT_EQ(contents(path), "");
}

TEST_F(DeviceFile, thatIsATextIsRefusedAndStaysAsItIs) {
  const std::string text(5000, 'x');
  const std::string path = folder_.write("text", text);
  EXPECT_EQ(refusal(path), path + ": not a device file");
  EXPECT_EQ(contents(path), text);
}

TEST_F(DeviceFile, ofAnotherProgramIsRefusedAndStaysAsItIs) {
  const std::string path = folder_.write("other", "");
  {
    Connection other(path, "other");
    other.execute("CREATE TABLE t (x)");
  }
  const std::string before = contents(path);
  EXPECT_EQ(refusal(path), path + ": not a device file");
  EXPECT_EQ(contents(path), before);
}

TEST_F(DeviceFile, ofANewerVersionIsRefused) {
  const std::string path = createAt("device");
  {
    Connection device(path, "device");
    device.execute(("PRAGMA user_version = " + std::to_string(kSchemaVersion + 1)).c_str());
  }
  EXPECT_THAT(refusal(path), HasSubstr(path + ": made by a newer version of this program"));
}

TEST_F(DeviceFile, ofAnEarlierVersionGetsTheTablesThatItLacks) {
  const std::string path = createAt("device");
  {
    Connection device(path, "device");
    for (const char* table : {"record_key", "record", "sort_property", "sort_order", "property_database"}) {
      device.execute((std::string("DROP TABLE ") + table).c_str());
    }
    device.execute("PRAGMA user_version = 1");
  }
  for (int opening = 0; opening < 2; ++opening) {
    ObjectStore store(path);
    EXPECT_FALSE(store.connection().query("SELECT * FROM record_key").next());
    EXPECT_FALSE(store.connection().query("SELECT * FROM property_database").next());
  }
}

TEST_F(DeviceFile, namedLikeADatabaseInMemoryIsAFileAllTheSame) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.file(""));
  ObjectStore::create(":memory:", [](ObjectStore& store) { store.claim(5, ObjectKind::Task); });
  EXPECT_EQ(ObjectStore(":memory:").kindOf(5), ObjectKind::Task);
  std::filesystem::current_path(before);
}

TEST_F(DeviceFile, isNotMadeOverAnExistingFile) {
  const std::string path = folder_.write("something", "precious");
  try {
    createAt("something");
    FAIL() << "it was overwritten";
  } catch (const StoreError& error) {
    EXPECT_EQ(std::string(error.what()), path + ": already exists");
  }
  EXPECT_EQ(contents(path), "precious");
}

TEST_F(DeviceFile, isNotMadeInAFolderThatDoesNotExist) {
  EXPECT_THROW(createAt("no/such/folder/device"), StoreError);
  EXPECT_TRUE(folder_.isEmpty());
}

TEST_F(DeviceFile, leavesNothingBehindWhenItsCreationFails) {
  const auto fill = [](ObjectStore& store) {
    store.allocate(ObjectKind::Contact);
    throw StoreError("somewhere", "no room");
  };
  EXPECT_THROW(ObjectStore::create(folder_.file("device"), fill), StoreError);
  EXPECT_TRUE(folder_.isEmpty());
}

TEST_F(DeviceFile, keepsWhatWasCommittedWhenTheProcessIsKilled) {
  const std::string path = createAt("device");
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    ObjectStore store(path);
    store.claim(17, ObjectKind::Contact);
    store.commit();
    store.claim(18, ObjectKind::Contact);
    _exit(0);  // No destructor runs: as if the process had been killed.
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  ObjectStore store(path);
  EXPECT_EQ(store.kindOf(17), ObjectKind::Contact);
  EXPECT_EQ(store.kindOf(18), std::nullopt);
}

class ObjectIdentifiers : public DeviceFile {
 protected:
  ObjectStore store_{createAt("device")};
};

TEST_F(ObjectIdentifiers, countUpFromTheFirst) {
  EXPECT_EQ(store_.allocate(ObjectKind::File), kFirstOid);
  EXPECT_EQ(store_.allocate(ObjectKind::Task), kFirstOid + 1);
  EXPECT_EQ(store_.kindOf(kFirstOid), ObjectKind::File);
  EXPECT_EQ(store_.kindOf(kFirstOid + 1), ObjectKind::Task);
  EXPECT_EQ(store_.kindOf(kFirstOid + 2), std::nullopt);
}

TEST_F(ObjectIdentifiers, areNeverUsedAgain) {
  std::set<Oid> seen;
  for (int i = 0; i < 20; ++i) {
    const Oid oid = store_.allocate(ObjectKind::Contact);
    EXPECT_TRUE(seen.insert(oid).second) << oid;
    store_.release(oid);
    EXPECT_EQ(store_.kindOf(oid), std::nullopt);
  }
}

TEST_F(ObjectIdentifiers, areNotUsedAgainAfterTheDeviceWasClosed) {
  const std::string path = createAt("second");
  Oid first = 0;
  {
    ObjectStore store(path);
    first = store.allocate(ObjectKind::Contact);
    store.release(first);
    store.commit();
  }
  EXPECT_EQ(ObjectStore(path).allocate(ObjectKind::Contact), first + 1);
}

TEST_F(ObjectIdentifiers, thatWereClaimedAheadOfTheCountArePassedOver) {
  store_.claim(kFirstOid, ObjectKind::Contact);
  store_.claim(kFirstOid + 2, ObjectKind::Contact);
  EXPECT_EQ(store_.allocate(ObjectKind::Task), kFirstOid + 1);
  EXPECT_EQ(store_.allocate(ObjectKind::Task), kFirstOid + 3);
}

TEST_F(ObjectIdentifiers, thatWereClaimedAndReleasedAreNotAllocated) {
  store_.claim(kFirstOid, ObjectKind::Contact);
  store_.release(kFirstOid);
  EXPECT_EQ(store_.kindOf(kFirstOid), std::nullopt);
  EXPECT_EQ(store_.allocate(ObjectKind::Task), kFirstOid + 1);
}

TEST_F(ObjectIdentifiers, canBeClaimedBackByTheirNumber) {
  store_.claim(17, ObjectKind::Contact);
  store_.release(17);
  store_.claim(17, ObjectKind::Task);
  EXPECT_EQ(store_.kindOf(17), ObjectKind::Task);
}

TEST_F(ObjectIdentifiers, thatAnObjectHoldsCannotBeClaimed) {
  store_.claim(17, ObjectKind::Contact);
  EXPECT_THROW(store_.claim(17, ObjectKind::Contact), StoreError);
  EXPECT_THROW(store_.claim(17, ObjectKind::Task), StoreError);
  EXPECT_THROW(store_.claim(store_.allocate(ObjectKind::File), ObjectKind::Task), StoreError);
}

TEST_F(ObjectIdentifiers, areNeverZero) {
  EXPECT_THROW(store_.claim(0, ObjectKind::Contact), StoreError);
}

TEST_F(ObjectIdentifiers, reachTheHighestNumberAndThenEnd) {
  store_.settings().put("next_oid", 0xFFFFFFFEu);
  EXPECT_EQ(store_.allocate(ObjectKind::Contact), 0xFFFFFFFEu);
  EXPECT_EQ(store_.allocate(ObjectKind::Contact), 0xFFFFFFFFu);
  EXPECT_THROW(store_.allocate(ObjectKind::Contact), StoreError);
  store_.release(0xFFFFFFFF);
  EXPECT_THROW(store_.allocate(ObjectKind::Contact), StoreError);
}

TEST_F(ObjectIdentifiers, ofARolledBackUnitOfWorkAreFree) {
  const Oid oid = store_.allocate(ObjectKind::Contact);
  store_.rollback();
  EXPECT_EQ(store_.kindOf(oid), std::nullopt);
}

TEST_F(DeviceFile, isKeptSafelyAndItsTextsAsTheyAre) {
  ObjectStore store(createAt("device"));
  const auto pragma = [&store](std::string_view sql) {
    Cursor row = store.connection().query(sql);
    return row.next() ? row.get<std::string>(0) : "nothing";
  };
  EXPECT_EQ(pragma("PRAGMA journal_mode"), "wal");
  EXPECT_EQ(pragma("PRAGMA synchronous"), "1");  // NORMAL
  EXPECT_EQ(pragma("PRAGMA foreign_keys"), "1");
  EXPECT_EQ(pragma("PRAGMA encoding"), "UTF-16le");
}

TEST_F(DeviceFile, isLeftByARefusedOpeningAsItWas) {
  const std::string path = createAt("device");
  {
    Connection device(path, "device");
    device.execute("PRAGMA user_version = 99");
  }
  const std::string before = contents(path);
  EXPECT_THAT(refusal(path), HasSubstr("newer version"));
  EXPECT_EQ(contents(path), before);
}

TEST_F(DeviceFile, canBeOpenedTwiceAndEachSeesWhatTheOtherCommitted) {
  const std::string path = createAt("device");
  ObjectStore first(path);
  ObjectStore second(path);
  const Oid mine = first.allocate(ObjectKind::Contact);
  EXPECT_EQ(second.kindOf(mine), std::nullopt);
  first.commit();
  EXPECT_EQ(second.kindOf(mine), ObjectKind::Contact);
  EXPECT_NE(second.allocate(ObjectKind::Contact), mine);
}

TEST_F(DeviceFile, keepsItsSettings) {
  const std::string path = createAt("device");
  {
    ObjectStore store(path);
    EXPECT_EQ(store.settings().get<std::int64_t>("offset"), std::nullopt);
    store.settings().put("offset", std::int64_t{-3});
    store.settings().put("module", std::u16string(u"\\Windows\\X.dll"));
    store.settings().put("offset", std::int64_t{12});
    store.commit();
  }
  ObjectStore store(path);
  EXPECT_EQ(store.settings().get<std::int64_t>("offset"), 12);
  EXPECT_EQ(store.settings().get<std::u16string>("module"), u"\\Windows\\X.dll");
}

}  // namespace
}  // namespace emulator
