// The registry's calls, and how a keeper fills and lists it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "platform/errors.h"
#include "tests/emulator/device_test.h"

namespace emulator {
namespace {

using testing::ElementsAre;

class DeviceRegistry : public test::DeviceTest {
 protected:
  DeviceRegistry() {
    registry().put(kRoot, textValue(u"MachineID", u"ab"));
    registry().put(kRoot, numberValue(u"Count", 0x01020304));
  }

  Registry& registry() { return device().registry; }

  HKEY openRoot() {
    HKEY key = nullptr;
    EXPECT_EQ(registry().openKey(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Halvern", &key), 0);
    return key;
  }

  static constexpr std::u16string_view kRoot = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern";
};

TEST_F(DeviceRegistry, opensAKeyWhateverItsCase) {
  HKEY key = nullptr;
  EXPECT_EQ(registry().openKey(HKEY_LOCAL_MACHINE, u"software\\HALVERN", &key), 0);
  EXPECT_NE(key, nullptr);
  EXPECT_EQ(registry().closeKey(key), 0);
}

TEST_F(DeviceRegistry, doesNotOpenAKeyThatIsMissing) {
  const auto poison = reinterpret_cast<HKEY>(std::uintptr_t{0xDEAD});
  HKEY key = poison;
  EXPECT_EQ(registry().openKey(HKEY_LOCAL_MACHINE, u"SOFTWARE\\Nobody", &key), 2);
  EXPECT_EQ(registry().openKey(HKEY_LOCAL_MACHINE, u"SOFTWARE\\\\Halvern", &key), 2);
  EXPECT_EQ(registry().openKey(poison, u"SOFTWARE", &key), 6);
  EXPECT_EQ(key, poison);
}

TEST_F(DeviceRegistry, opensAKeyBelowAnOpenOne) {
  HKEY software = nullptr;
  HKEY key = nullptr;
  ASSERT_EQ(registry().openKey(HKEY_LOCAL_MACHINE, u"SOFTWARE", &software), 0);
  ASSERT_EQ(registry().openKey(software, u"Halvern", &key), 0);
  EXPECT_EQ(registry().queryValue(key, u"Count", nullptr, nullptr, nullptr), 0);
}

TEST_F(DeviceRegistry, givesAValueWithItsTypeAndSize) {
  DWORD type = 99;
  DWORD size = 8;
  BYTE data[8];
  std::fill_n(data, 8, BYTE{0xCC});
  EXPECT_EQ(registry().queryValue(openRoot(), u"COUNT", &type, data, &size), 0);
  EXPECT_EQ(type, REG_DWORD);
  EXPECT_EQ(size, 4u);
  EXPECT_THAT(data, ElementsAre(4, 3, 2, 1, 0xCC, 0xCC, 0xCC, 0xCC));
}

TEST_F(DeviceRegistry, keepsATextWithItsNul) {
  DWORD size = 6;
  BYTE data[6];
  std::fill_n(data, 6, BYTE{0xCC});
  EXPECT_EQ(registry().queryValue(openRoot(), u"MachineID", nullptr, data, &size), 0);
  EXPECT_EQ(size, 6u);
  EXPECT_THAT(data, ElementsAre('a', 0, 'b', 0, 0, 0));
}

TEST_F(DeviceRegistry, tellsTheSizeWithoutABuffer) {
  DWORD size = 0xCCCC;
  EXPECT_EQ(registry().queryValue(openRoot(), u"MachineID", nullptr, nullptr, &size), 0);
  EXPECT_EQ(size, 6u);
}

TEST_F(DeviceRegistry, leavesABufferThatIsTooSmallAloneAndTellsTheSize) {
  DWORD type = 99;
  DWORD size = 5;
  BYTE data[5];
  std::fill_n(data, 5, BYTE{0xCC});
  EXPECT_EQ(registry().queryValue(openRoot(), u"MachineID", &type, data, &size), 234);
  EXPECT_EQ(size, 6u);
  EXPECT_EQ(type, REG_SZ);
  EXPECT_THAT(data, testing::Each(0xCC));
}

TEST_F(DeviceRegistry, refusesABufferWithoutItsSize) {
  BYTE data[8] = {};
  EXPECT_EQ(registry().queryValue(openRoot(), u"MachineID", nullptr, data, nullptr), 87);
}

TEST_F(DeviceRegistry, saysWhichValueIsMissing) {
  DWORD type = 99;
  DWORD size = 7;
  EXPECT_EQ(registry().queryValue(openRoot(), u"Nothing", &type, nullptr, &size), 2);
  EXPECT_EQ(type, 99u);
  EXPECT_EQ(size, 7u);
}

TEST_F(DeviceRegistry, setMakesAValueOrReplacesItAndItsType) {
  const HKEY key = openRoot();
  const Bytes number{7, 0, 0, 0};
  EXPECT_EQ(registry().setValue(key, u"\\QorvContactLog", REG_DWORD, number), 0);
  EXPECT_EQ(numberOf(registry().get(kRoot, u"\\QorvContactLog").value()), 7u);
  EXPECT_EQ(registry().setValue(key, u"machineid", REG_DWORD, number), 0);
  const auto replaced = registry().get(kRoot, u"MachineID").value();
  EXPECT_EQ(numberOf(replaced), 7u);
  EXPECT_EQ(replaced.name, u"MachineID");  // as first spelled
}

TEST_F(DeviceRegistry, keepsTypesThatItDoesNotKnow) {
  const Bytes bytes{1, 2, 3};
  EXPECT_EQ(registry().setValue(openRoot(), u"Blob", 0x1234, bytes), 0);
  const auto value = registry().get(kRoot, u"Blob").value();
  EXPECT_EQ(value.type, 0x1234u);
  EXPECT_EQ(value.data, bytes);
  EXPECT_EQ(textOf(value), std::nullopt);
  EXPECT_EQ(numberOf(value), std::nullopt);
}

TEST_F(DeviceRegistry, takesNoClosedKey) {
  const HKEY key = openRoot();
  EXPECT_EQ(registry().closeKey(key), 0);
  EXPECT_EQ(registry().closeKey(key), 6);
  EXPECT_EQ(registry().queryValue(key, u"Count", nullptr, nullptr, nullptr), 6);
  EXPECT_EQ(registry().setValue(key, u"Count", REG_DWORD, {}), 6);
  EXPECT_EQ(device().handles.count<KernelObject>(), 0u);
}

TEST_F(DeviceRegistry, letsAPredefinedKeyBeClosedAndUsedAgain) {
  EXPECT_EQ(registry().closeKey(HKEY_LOCAL_MACHINE), 0);
  EXPECT_EQ(registry().setValue(HKEY_LOCAL_MACHINE, u"V", REG_DWORD, Bytes{1, 0, 0, 0}), 0);
}

TEST_F(DeviceRegistry, survivesTheSession) {
  reopen();
  EXPECT_EQ(textOf(registry().get(kRoot, u"MachineID").value()), u"ab");
}

TEST_F(DeviceRegistry, doesNotTakeAPathWithoutAPredefinedKey) {
  EXPECT_FALSE(registry().makeKey(u"SOFTWARE\\Halvern"));
  EXPECT_FALSE(registry().makeKey(u""));
  EXPECT_FALSE(registry().makeKey(u"HKEY_LOCAL_MACHINE\\\\X"));
  EXPECT_FALSE(registry().makeKey(u"HKEY_LOCAL_MACHINE\\X\\"));
  EXPECT_TRUE(registry().makeKey(u"hkey_current_user\\X"));
}

TEST_F(DeviceRegistry, isListedInTheOrderOfItsNames) {
  registry().makeKey(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Empty");
  registry().put(u"HKEY_CURRENT_USER", numberValue(u"a", 1));
  std::vector<std::u16string> names;
  for (const RegistryKey& key : registry().contents()) {
    names.push_back(key.path);
    for (const RegistryValue& value : key.values) names.push_back(value.name);
  }
  EXPECT_THAT(names, ElementsAre(u"HKEY_CURRENT_USER", u"a", u"HKEY_LOCAL_MACHINE\\SOFTWARE",
                                 u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Empty",
                                 u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", u"Count", u"MachineID"));
}

TEST_F(DeviceRegistry, holdsEmptyTexts) {
  registry().put(kRoot, textValue(u"Empty", u""));
  EXPECT_EQ(textOf(registry().get(kRoot, u"Empty").value()), u"");
  EXPECT_EQ(registry().get(kRoot, u"Empty")->data.size(), 2u);
}

}  // namespace
}  // namespace emulator
