// Files, refusals, and what qorv-sync does with a device that fails.
#include "tests/desktop/sync_command.h"

namespace {

const std::string kEnd = "> 01 02\n< \n";

TEST_F(SyncCommand, putCopiesAFileToTheDevice) {
  folder.write("a.bin", "ab");
  EXPECT_EQ(run("put a.bin '\\a.b'",
                "> 13 02 s'\\a.b' u32:0 u32:0 u32:1\n< 00 00 u32:2 u32:0\n"
                "> 12 02 s'\\a.b' u32:0 u32:2 61 62\n< 01 00 u32:0\n"
                "> 13 02 s'\\a.b' u32:0 u32:0 u32:3\n< 01 00 u32:0 u32:2 61 62\n" +
                    kEnd),
            0);
  EXPECT_EQ(out, "a.bin -> \\a.b: 2 bytes\n");
}

TEST_F(SyncCommand, putRefusesToAppend) {
  folder.write("a.bin", "ab");
  EXPECT_EQ(run("put a.bin '\\a.b'", "> 13 02 s'\\a.b' u32:0 u32:0 u32:1\n< 01 00 u32:0 u32:1 61\n" + kEnd),
            1);
  EXPECT_EQ(err,
            "qorv-sync: device file \\a.b: exists already; the device can only append to it, so choose "
            "another name\n");
}

TEST_F(SyncCommand, getCopiesAFileFromTheDevice) {
  EXPECT_EQ(run("get '\\a.b' a.bin",
                "> 13 02 s'\\a.b' u32:0 u32:0 u32:196608\n< 01 00 u32:0 u32:2 61 62\n"
                "> 13 02 s'\\a.b' u32:0 u32:2 u32:196608\n< 01 00 u32:0 u32:0\n" +
                    kEnd),
            0);
  EXPECT_EQ(out, "\\a.b -> a.bin: 2 bytes\n");
  EXPECT_EQ(folder.read("a.bin"), "ab");
}

TEST_F(SyncCommand, getLeavesNoPartOfAFile) {
  EXPECT_EQ(run("get '\\a.b' a.bin",
                "> 13 02 s'\\a.b' u32:0 u32:0 u32:196608\n< 01 00 u32:0 u32:2 61 62\n"
                "> 13 02 s'\\a.b' u32:0 u32:2 u32:196608\n< 01 00 u32:5 u32:0\n" +
                    kEnd),
            1);
  EXPECT_EQ(folder.names(), (std::set<std::string>{"script", "standard_error", "standard_output"}));
}

struct Refusal {
  const char* arguments;
  int status;
  const char* message;
};

TEST_F(SyncCommand, refusesWhatItCannotDoInOneLine) {
  for (const Refusal& refusal : {
           Refusal{"info", 2, "say which device: --device ADDRESS or --exec COMMAND"},
           Refusal{"", 2, "A subcommand is required"},
           Refusal{"bogus", 2, "'bogus' is no command"},
           Refusal{"--exec true bogus --fast", 2, "'bogus' is no command"},
           Refusal{"--exec true pull ''", 2, "DIR: must not be empty"},
           Refusal{"--exec '' info", 2, "--exec: must not be empty"},
           Refusal{"--device '' info", 2, "--device: must not be empty"},
           Refusal{"--device 127.0.0.1 info", 2, "address '127.0.0.1' is neither HOST:PORT nor unix:PATH"},
           Refusal{"--device unix:none info", 3, "no device at unix:none: No such file or directory"},
           Refusal{"--exec true list stamps", 2,
                   "'stamps' is no item type; the types are appointments, tasks, contacts, mail, notes"},
           Refusal{"--exec 'exit 7' info", 3, "the device's command ended with status 7 without an answer"},
           Refusal{"--exec true info", 3, "the device's command ended with status 0 without an answer"},
           Refusal{"--exec true put none '\\a'", 2, "none: No such file or directory"},
           Refusal{"--exec true put . '\\a'", 2, ".: not a regular file"},
           Refusal{"--exec true get '\\a' none/a", 2, "none/a: No such file or directory"},
           Refusal{"--exec true get '\\a' /dev/null", 2, "/dev/null: not a regular file"},
       }) {
    EXPECT_EQ(runPlain(refusal.arguments), refusal.status) << refusal.arguments;
    EXPECT_EQ(err, std::string("qorv-sync: ") + refusal.message + "\n") << refusal.arguments;
    EXPECT_EQ(out, "") << refusal.arguments;
  }
}

TEST_F(SyncCommand, refusesCommandLinesThatItDoesNotKnowInOneLine) {
  for (const char* arguments :
       {"fly", "info --fast", "--timeout 0 info", "--timeout soon info", "list", "show appointments x",
        "delete appointments", "push", "--device a:1 --exec true info", "dump tasks 21", "changes tasks",
        "changes tasks PC --commit --forget", "--exec true changes tasks ''",
        "--exec true changes stamps PC"}) {
    EXPECT_EQ(runPlain(arguments), 2) << arguments;
    EXPECT_TRUE(err.starts_with("qorv-sync: ")) << err;
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
  }
}

TEST_F(SyncCommand, helpsWithoutADevice) {
  EXPECT_EQ(runPlain("--help"), 0);
  EXPECT_NE(out.find("push"), std::string::npos);
  EXPECT_EQ(runPlain("push --help"), 0);
}

TEST_F(SyncCommand, namesADeviceThatBreaksTheProtocol) {
  EXPECT_EQ(run("info", "> 0E 02\n< u32:72 FF FF\n" + kEnd), 4);
  EXPECT_EQ(err, "qorv-sync: the device broke the protocol: the reply ends 2 bytes too early\n");
  EXPECT_EQ(run("info", "> 0E 02\n<< u32:20 u32:72\nexit 0\n"), 4);
  EXPECT_EQ(err,
            "qorv-sync: the device broke the protocol: the stream ended after 4 of a reply's 20 bytes\n");
  EXPECT_EQ(run("info", "> 0E 02\n<< FF FF FF 7F\n"), 4);
  EXPECT_EQ(err,
            "qorv-sync: the device broke the protocol: a reply claims 2147483647 bytes; the device's buffer "
            "holds 221184\n");
}

TEST_F(SyncCommand, givesUpOnASilentDevice) {
  EXPECT_EQ(run("--timeout 1 info", "> 0E 02\nsilence\n"), 3);
  EXPECT_EQ(err, "qorv-sync: the device's command gives no answer within 1 seconds\n");
}

TEST_F(SyncCommand, doesNotHideADeviceThatFailsAtItsEnd) {
  EXPECT_EQ(run("delete appointments 18", "> 11 02 u32:1 u32:18\n< u32:18\n" + kEnd + "exit 1\n"), 1);
  EXPECT_EQ(out, "deleted 18\n");
  EXPECT_EQ(err, "qorv-sync: the device's command ended with status 1\n");
}

TEST_F(SyncCommand, tellsOfEveryRequestWhenAskedTo) {
  EXPECT_EQ(run("--verbose delete appointments 18", "> 11 02 u32:1 u32:18\n< u32:18\n" + kEnd), 0);
  EXPECT_TRUE(err.starts_with("qorv-sync: command 17, type 2: 10 bytes out, 4 bytes in, ")) << err;
}

}  // namespace
