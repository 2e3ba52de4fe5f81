// Notes: text files onto the device and back.
#include <map>
#include <nlohmann/json.hpp>

#include "tests/apps/journey.h"

namespace {

using Json = nlohmann::json;

class NoteJourney : public Journey {
 protected:
  /// The device's notes by their paths.
  std::map<std::string, std::string> dumpedNotes() {
    EXPECT_EQ(run("'" QORV_DEVICE "' dump device"), 0) << err_;
    std::map<std::string, std::string> notes;
    const Json dump = Json::parse(out_);
    for (const Json& file : dump["files"]) {
      if (file.contains("note")) notes[file["path"]] = file["note"];
    }
    return notes;
  }

  void loadNotes(const std::map<std::string, std::string>& notes, const std::string& device = "device") {
    Json snapshot;
    for (const auto& [name, text] : notes) {
      snapshot["files"].push_back({{"path", "\\My Documents\\" + name + ".pwi"}, {"note", text}});
    }
    std::ofstream(folder_.file("change.json")) << snapshot;
    ASSERT_EQ(run("'" QORV_DEVICE "' load " + device + " change.json"), 0) << err_;
  }

  std::string pulled(const std::string& name) { return read(folder_.file("pulled/notes/" + name)); }
};

TEST_F(NoteJourney, textFilesTravelWithoutADifference) {
  EXPECT_EQ(sync("push " + sample("notes")), 0) << out_ << err_;
  EXPECT_EQ(err_, "");
  const auto notes = dumpedNotes();
  EXPECT_EQ(notes.size(), 3u);
  EXPECT_EQ(notes.at("\\My Documents\\Shopping list.pwi"),
            "Bread\r\nMilk, two bottles\r\nCandles for Ann (she turns nine)\r\nString\r\n");
  EXPECT_EQ(sync("list notes"), 0);
  EXPECT_NE(out_.find("Shopping list   Bread\n"), std::string::npos) << out_;
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  for (const auto& file : std::filesystem::directory_iterator(QORV_SAMPLES "/notes")) {
    EXPECT_EQ(pulled(file.path().filename().string()), read(file.path()));
  }
}

TEST_F(NoteJourney, anUnchangedNoteIsNotWrittenAgain) {
  loadNotes({{"Plan", "one"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  EXPECT_NE(out_.find("1 written, 0 unchanged"), std::string::npos) << out_;
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  EXPECT_NE(out_.find("0 written, 1 unchanged"), std::string::npos) << out_;
}

TEST_F(NoteJourney, aNoteThatChangedReplacesItsFile) {
  loadNotes({{"Plan", "one"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  loadNotes({{"Plan", "two\r\nthree"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  EXPECT_EQ(pulled("Plan.txt"), "two\nthree");
}

TEST_F(NoteJourney, aFileOfTheSameNameThatIsNoNotesStays) {
  loadNotes({{"Plan", "the device's"}, {"Other", "text"}});
  std::filesystem::create_directories(folder_.file("pulled/notes"));
  folder_.write("pulled/notes/Plan.txt", "mine");
  EXPECT_EQ(sync("pull pulled"), 1);
  EXPECT_NE(err_.find("pulled/notes/Plan.txt: not this note's file, left as it is\n"), std::string::npos)
      << err_;
  EXPECT_EQ(pulled("Plan.txt"), "mine");
  EXPECT_EQ(pulled("Other.txt"), "text");
}

TEST_F(NoteJourney, anotherDevicesFileStays) {
  loadNotes({{"Plan", "one"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  // An index that names the file as another device's.
  folder_.write("pulled/notes/.qorv-sync.json", R"({"somebody else's": ["Plan.txt"]})");
  loadNotes({{"Plan", "two"}});
  EXPECT_EQ(sync("pull pulled"), 1);
  EXPECT_EQ(pulled("Plan.txt"), "one");
}

TEST_F(NoteJourney, anIndexThatIsNoneIsNamedAndNothingIsWritten) {
  loadNotes({{"Plan", "one"}});
  std::filesystem::create_directories(folder_.file("pulled/notes"));
  folder_.write("pulled/notes/.qorv-sync.json", "[1, 2");
  EXPECT_EQ(sync("pull pulled"), 2);
  EXPECT_EQ(err_,
            "qorv-sync: pulled/notes/.qorv-sync.json: not a list of the files that were written here\n");
  EXPECT_FALSE(std::filesystem::exists(folder_.file("pulled/notes/Plan.txt")));
}

TEST_F(NoteJourney, anEditedFileChangesItsOwnNote) {
  loadNotes({{"Plan", "one"}, {"Other", "text"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  folder_.write("pulled/notes/Plan.txt", "one\nmore\n");
  ASSERT_EQ(sync("push pulled"), 0) << out_ << err_;
  EXPECT_NE(out_.find("0 added, 1 changed, 1 unchanged\n"), std::string::npos) << out_;
  EXPECT_EQ(dumpedNotes(),
            (std::map<std::string, std::string>{{"\\My Documents\\Plan.pwi", "one\r\nmore\r\n"},
                                                {"\\My Documents\\Other.pwi", "text"}}));
}

TEST_F(NoteJourney, namesThatTheDeviceCannotHaveAreChangedAndNamed) {
  folder_.write("v1.2: plan?.txt", "text");
  EXPECT_EQ(sync("push 'v1.2: plan?.txt'"), 0) << err_;
  EXPECT_NE(out_.find("note: its name on the device is \"v1_2_ plan_\"\n"), std::string::npos) << out_;
  EXPECT_EQ(dumpedNotes().count("\\My Documents\\v1_2_ plan_.pwi"), 1u);
}

TEST_F(NoteJourney, filesThatAreNoTextAreNamedAndTheOthersGoOn) {
  folder_.write("latin.txt", "caf\xE9");
  folder_.write("nul.txt", std::string("a\0b", 3));
  folder_.write("good.txt", "\xEF\xBB\xBFgood");
  EXPECT_EQ(sync("push latin.txt nul.txt good.txt"), 1);
  EXPECT_NE(err_.find("latin.txt: "), std::string::npos) << err_;
  EXPECT_NE(err_.find("nul.txt: has a NUL"), std::string::npos) << err_;
  EXPECT_EQ(dumpedNotes(), (std::map<std::string, std::string>{{"\\My Documents\\good.pwi", "good"}}));
}

TEST_F(NoteJourney, textFilesOfOtherFoldersAreNotTaken) {
  std::filesystem::create_directories(folder_.file("mixed/notes"));
  folder_.write("mixed/README.txt", "about these files");
  folder_.write("mixed/notes/Plan.txt", "text");
  EXPECT_EQ(sync("push mixed"), 0) << err_;
  EXPECT_EQ(dumpedNotes().size(), 1u);
  std::filesystem::create_directories(folder_.file("texts"));
  folder_.write("texts/README.txt", "about nothing");
  EXPECT_EQ(sync("push texts"), 2);
  EXPECT_EQ(err_, "qorv-sync: texts: no .ics or .vcf or .eml or .mbox or notes/*.txt file in this folder\n");
  EXPECT_EQ(
      run("cd mixed/notes && '" QORV_SYNC "' --exec \"'" QORV_DEVICE "' serve ../../device --stdio\" push ."),
      0);
}

TEST_F(NoteJourney, aNoteWithoutANameOfAFileHasItsNumberForOneAndIsStillKnown) {
  std::string name;
  for (int i = 0; i < 90; ++i) name += "長";  // 270 bytes, where a file's name has room for 255
  loadNotes({{name, "long"}});
  ASSERT_EQ(sync("--json list notes"), 0);
  const auto oid = std::to_string(Json::parse(out_)["notes"][0]["oid"].get<std::uint32_t>());
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  EXPECT_EQ(pulled(oid + ".txt"), "long");
  folder_.write("pulled/notes/" + oid + ".txt", "longer");
  ASSERT_EQ(sync("push pulled"), 0) << err_;
  EXPECT_NE(out_.find("changed " + oid + "\n"), std::string::npos) << out_;
  EXPECT_EQ(dumpedNotes(),
            (std::map<std::string, std::string>{{"\\My Documents\\" + name + ".pwi", "longer"}}));
}

TEST_F(NoteJourney, aNameThatOnlyTheDeviceGaveIsKeptAsItIs) {
  loadNotes({{"v1.2", "one"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  folder_.write("pulled/notes/v1.2.txt", "two");
  ASSERT_EQ(sync("push pulled"), 0) << err_;
  EXPECT_EQ(dumpedNotes(), (std::map<std::string, std::string>{{"\\My Documents\\v1.2.pwi", "two"}}));
}

TEST_F(NoteJourney, aNoteThatIsTooLargeToComeBackIsNotMadeTwice) {
  std::filesystem::create_directories(folder_.file("notes"));
  folder_.write("notes/Big.txt", std::string(60'000, 'b'));
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(sync("push notes"), 1);
    EXPECT_NE(err_.find("can't be read back: too large for the device to send"), std::string::npos) << err_;
  }
  EXPECT_EQ(dumpedNotes().size(), 1u);
}

TEST_F(NoteJourney, filesThatWouldBeOneNoteAreNamed) {
  std::filesystem::create_directories(folder_.file("notes"));
  folder_.write("notes/a.txt", "first");
  folder_.write("notes/A.txt", "second");
  folder_.write("notes/q?.txt", "third");
  folder_.write("notes/q_.txt", "fourth");
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(sync("push notes"), 1);
    EXPECT_NE(err_.find("notes/a.txt: \"a\": another file has the same name on the device\n"),
              std::string::npos)
        << err_;
    EXPECT_NE(err_.find("notes/q_.txt: \"q_\": another file has the same name on the device\n"),
              std::string::npos);
  }
  EXPECT_EQ(dumpedNotes(), (std::map<std::string, std::string>{{"\\My Documents\\A.pwi", "second"},
                                                               {"\\My Documents\\q_.pwi", "third"}}));
}

TEST_F(NoteJourney, aFileWithTextIsNotEmptiedByANoteThatCannotBeRead) {
  loadNotes({{"Plan", "one"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  EXPECT_EQ(sync("pull pulled", "device --fault CreateFileW=32"), 1);
  EXPECT_NE(err_.find("the device has it empty, or can't read it: pulled/notes/Plan.txt is left as it is\n"),
            std::string::npos)
      << err_;
  EXPECT_EQ(pulled("Plan.txt"), "one");
}

TEST_F(NoteJourney, aPushOfWhatIsThereAlreadyLeavesTheNotesInk) {
  loadNotes({{"Plan", "one\ntwo"}});
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  EXPECT_EQ(sync("push pulled"), 0) << err_;
  EXPECT_NE(out_.find("0 added, 0 changed, 1 unchanged\n"), std::string::npos) << out_;
  EXPECT_EQ(dumpedNotes().at("\\My Documents\\Plan.pwi"), "one\ntwo");
}

TEST_F(NoteJourney, changesThatAreTooManyToListAreNotCommitted) {
  ASSERT_EQ(sync("changes notes pc --commit"), 0) << err_;
  // 0x36000 bytes hold 44235 changes of five bytes behind the seven of the header; one more doesn't fit.
  Json records = Json::array();
  for (int i = 0; i < 44236; ++i) {
    records.push_back({{"properties", Json::array({Json::array({"0x00010013", 1000 + i})})}});
  }
  Json snapshot;
  snapshot["databases"] = Json::array({{{"name", "\\qvNoteDb"}, {"type", 0}, {"records", records}}});
  std::ofstream(folder_.file("change.json")) << snapshot;
  ASSERT_EQ(run("'" QORV_DEVICE "' load device change.json"), 0) << err_;
  EXPECT_EQ(sync("changes notes pc --commit"), 1);
  EXPECT_NE(err_.find("there are more changes than the device can list"), std::string::npos) << err_;
  EXPECT_EQ(out_.find("committed"), std::string::npos) << out_;
}

TEST_F(NoteJourney, aNoteThatIsNotThereIsSaid) {
  EXPECT_EQ(sync("show notes 4711"), 1);
  EXPECT_EQ(err_, "qorv-sync: note 4711: the device has no such item\n");
  EXPECT_EQ(sync("delete notes 4711"), 1);
}

TEST_F(NoteJourney, aNoteCanBeShownAndDeleted) {
  loadNotes({{"Plan", "one\r\ntwo"}});
  ASSERT_EQ(sync("--json list notes"), 0);
  const std::string oid = std::to_string(Json::parse(out_)["notes"][0]["oid"].get<std::uint32_t>());
  EXPECT_EQ(sync("show notes " + oid), 0) << err_;
  EXPECT_EQ(out_, "one\ntwo");
  EXPECT_EQ(sync("dump --raw notes " + oid), 0) << err_;
  EXPECT_NE(out_.find("name (tag 1)"), std::string::npos) << out_;
  EXPECT_EQ(sync("delete notes " + oid), 0) << err_;
  EXPECT_TRUE(dumpedNotes().empty());
}

TEST_F(NoteJourney, changesAreTheNotesThatDifferFromTheLastCommit) {
  loadNotes({{"Kept", "one"}, {"Gone", "two"}});
  EXPECT_EQ(sync("changes notes my-pc --commit"), 0) << err_;
  EXPECT_NE(err_.find("never committed"), std::string::npos) << err_;
  EXPECT_EQ(sync("changes notes my-pc"), 0) << err_;
  EXPECT_EQ(out_, "0 changes\n");
  EXPECT_EQ(err_, "");
  ASSERT_EQ(sync("--json list notes"), 0);
  const Json listed = Json::parse(out_);
  for (const Json& note : listed["notes"]) {
    if (note["name"] != "Gone") continue;
    EXPECT_EQ(sync("delete notes " + std::to_string(note["oid"].get<std::uint32_t>())), 0) << err_;
  }
  folder_.write("New.txt", "three");
  ASSERT_EQ(sync("push New.txt"), 0) << err_;
  EXPECT_EQ(sync("changes notes my-pc"), 0) << err_;
  EXPECT_NE(out_.find("  deleted\n"), std::string::npos) << out_;
  EXPECT_NE(out_.find("  added\n"), std::string::npos) << out_;
  EXPECT_NE(out_.find("2 changes\n"), std::string::npos) << out_;
}

TEST_F(NoteJourney, aPlatformWithoutTheControlListsItsNotesAndSaysThatItCannotSendThem) {
  std::ofstream(folder_.file("old.json")) << R"({"os_version": "3.0.9000"})";
  loadNotes({{"Plan", "one"}});
  ASSERT_EQ(run("'" QORV_DEVICE "' load device old.json"), 0) << err_;
  EXPECT_EQ(sync("pull pulled"), 1);
  EXPECT_NE(err_.find("the device's platform can't convert it\n"), std::string::npos) << err_;
  folder_.write("New.txt", "three");
  EXPECT_EQ(sync("push New.txt"), 1);
  EXPECT_NE(err_.find("the device refused it\n"), std::string::npos) << err_;
}

}  // namespace
