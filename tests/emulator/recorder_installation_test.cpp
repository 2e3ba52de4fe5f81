// Where an installation of the agent keeps its change logs and counters.
#include <gtest/gtest.h>

#include "emulator/recorder/installation_names.h"

namespace emulator {
namespace {

struct Installation {
  std::u16string modulePath;
  std::u16string databaseSuffix;
  std::u16string registryKey;
};

class InstalledAt : public testing::TestWithParam<Installation> {};

TEST_P(InstalledAt, hasItsNames) {
  const InstallationNames names = installationNames(GetParam().modulePath);
  EXPECT_EQ(names.databaseSuffix, GetParam().databaseSuffix);
  EXPECT_EQ(names.registryKey, GetParam().registryKey);
}

const std::u16string kPlain = u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern";

INSTANTIATE_TEST_SUITE_P(Folders, InstalledAt,
                         testing::Values(Installation{u"\\Windows\\QORVAPIMGR.dll", u"", kPlain},
                                         Installation{u"\\QORVAPIMGR.dll", u"", kPlain},
                                         Installation{u"\\Program Files\\Qorv\\042\\QORVAPIMGR.dll", u"_042",
                                                      kPlain + u"\\042"},
                                         Installation{u"\\042\\QORVAPIMGR.dll", u"_042", kPlain + u"\\042"},
                                         Installation{u"\\000\\QORVAPIMGR.dll", u"", kPlain},
                                         Installation{u"\\00a\\QORVAPIMGR.dll", u"", kPlain},
                                         Installation{u"\\12a\\QORVAPIMGR.dll", u"_12a", kPlain + u"\\12a"},
                                         Installation{u"\\a12\\QORVAPIMGR.dll", u"", kPlain},
                                         Installation{u"\\12\\QORVAPIMGR.dll", u"", kPlain},
                                         Installation{u"\\1234\\QORVAPIMGR.dll", u"", kPlain},
                                         Installation{u"\\-12\\QORVAPIMGR.dll", u"_-12", kPlain + u"\\-12"},
                                         Installation{u"\\ 07\\QORVAPIMGR.dll", u"_ 07", kPlain + u"\\ 07"},
                                         Installation{u"\\042\\Qorv\\QORVAPIMGR.dll", u"", kPlain}));

}  // namespace
}  // namespace emulator
