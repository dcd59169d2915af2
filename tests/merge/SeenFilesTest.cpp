#include "merge/SeenFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

#include "ScratchFolder.h"
#include "Trees.h"
#include "files/FileError.h"
#include "merge/StateFolder.h"
#ifndef _WIN32
#include <sys/stat.h>

#include "DiskFaults.h"
#endif

namespace quenmar {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

class SeenFilesTest : public ::testing::Test {
 protected:
  SeenFilesTest() {
    fs::create_directory(folder_ / "dist");
    WriteFile(server_, "a: 9\r\n");
    EXPECT_EQ(Keep(seen_, "a: 1\r\n"), "");
    entry_ = seen_.EntryOf(server_);
  }

  /// @return what the state folder has for a file, "none" for nothing.
  std::string Found(const Path& server) {
    const auto file = SeenFiles(state_).Find(server);
    return file ? file->Bytes() : "none";
  }

  /// Keeps some bytes for the server's file. @return why it failed, if it did.
  std::string Keep(SeenFiles& seen, std::string bytes) {
    return ToUtf8(seen.Keep(server_, {folder_ / "dist/a.conf", std::move(bytes)}));
  }

  [[nodiscard]] auto EntryCount() const {
    return std::distance(fs::directory_iterator(state_), {});
  }

  ScratchFolder folder_;
  Path state_ = folder_ / "state/seen";
  Path server_ = folder_ / "conf/a.conf", entry_;
  SeenFiles seen_{state_};
};

TEST_F(SeenFilesTest, AFolderThatTakesNothingIsReportedOnceAndCostsNothingElse) {
  WriteFile(folder_ / "file", "x");
  fs::create_directory(folder_ / "conf/below");
  const std::string inside = ": this is inside a folder of configuration files";
  const std::pair<Path, std::string> folders[] = {
      {folder_ / "file", "file: "},        {folder_ / "file/below", "below: "},
      {folder_ / "conf", "conf" + inside}, {folder_ / "conf/below/new", "new" + inside},
      {folder_ / "dist", "dist" + inside}, {{}, "there is no folder for it"},
  };
  for (const auto& [folder, reason] : folders) {
    SeenFiles seen(folder);
    EXPECT_FALSE(seen.Find(server_)) << reason;
    EXPECT_THAT(Keep(seen, "a: 1\r\n"), HasSubstr(reason));
    EXPECT_EQ(Keep(seen, "a: 1\r\n"), "") << "reported again";
  }
  EXPECT_EQ(ReadFile(folder_ / "file"), "x");
  EXPECT_TRUE(fs::is_empty(folder_ / "conf/below") && fs::is_empty(folder_ / "dist"));
}

#ifndef _WIN32
TEST_F(SeenFilesTest, AFullDiskOrAReadOnlyFolderLeavesTheOldEntryWhole) {
  SeenFiles again(state_);
  const std::string large(5000, 'x');
  EXPECT_THAT(OnFullDisk(1000, [&] { return Keep(seen_, large); }), HasSubstr("seen: "));
  EXPECT_EQ(EntryCount(), 1);
  const auto keepAnother = [&] { return again.Keep(folder_ / "conf/b.conf", {{}, "new"}); };
  EXPECT_THAT(ToUtf8(InLockedFolder(state_, keepAnother)), HasSubstr("seen: "));
  EXPECT_EQ(Found(server_), "a: 1\r\n");
}
#endif

TEST_F(SeenFilesTest, KeepsTheBytesUnderTheAbsolutePath) {
  const std::string bytes("\xEF\xBB\xBF\n\npath: x\r\na: \xE9\0b", 20);
  EXPECT_EQ(Keep(seen_, bytes), "");
  EXPECT_EQ(Found(server_), bytes);
  EXPECT_EQ(Found(folder_ / "conf/../conf/./a.conf"), bytes);
  EXPECT_EQ(Found(folder_ / "conf2/a.conf"), "none");
  EXPECT_EQ(EntryCount(), 1);
  EXPECT_THAT(entry_.filename().string(), MatchesRegex("\\w+-a.conf.seen"));
  EXPECT_THAT(seen_.EntryOf(folder_ / u8"Az 0-9\u00E9.x").string(), EndsWith("-Az_0-9_.x.seen"));
  EXPECT_THAT(ReadFile(entry_), AllOf(StartsWith("quenmar seen file 1\npath: "),
                                      HasSubstr("a.conf\ndate: 2"), EndsWith("\n\n" + bytes)));
  const Path here = fs::current_path();
  fs::current_path(folder_ / "conf");
  EXPECT_EQ(Found("a.conf"), bytes);
  fs::current_path(here);
}

TEST_F(SeenFilesTest, ADamagedEntryIsReportedAndReplaced) {
  const std::string whole = ReadFile(entry_);
  for (const std::string& bytes :
       {std::string(), whole.substr(0, 10), whole.substr(0, whole.find("date")), "x" + whole,
        whole.substr(0, whole.find("date")) + "date: 2026-13-01\n\n"}) {
    WriteFile(entry_, bytes);
    const OldFile old = FindOldFile({}, &seen_, server_);
    EXPECT_TRUE(!old.file && old.path == entry_ && !old.reason.empty()) << bytes;
  }
  EXPECT_EQ(Keep(seen_, "a: 2\r\n"), "");
  EXPECT_EQ(Found(server_), "a: 2\r\n");
}

TEST_F(SeenFilesTest, ClearsAfterAYearWhatHasGone) {
  const std::tuple<Path, bool, int, bool> cases[] = {
      {folder_ / "conf/gone.conf", false, 366, false},
      {folder_ / u8"conf/h\u00E9 %41%.conf", true, 366, true},
      {folder_ / "conf/young.conf", false, 364, true}};
  for (const auto& [server, there, days, kept] : cases) {
    if (there) WriteFile(server, "");
    EXPECT_EQ(seen_.Keep(server, {folder_ / "dist/a.conf", "x: 1\r\n"}), u"");
    std::string entry = ReadFile(seen_.EntryOf(server));
    const std::time_t then = std::time(nullptr) - days * std::time_t{86400};
    std::string date(10, ' ');
    std::strftime(date.data(), date.size() + 1, "%Y-%m-%d", std::gmtime(&then));
    entry.replace(entry.find("\ndate: ") + 7, date.size(), date);
    WriteFile(seen_.EntryOf(server), entry);
  }
  WriteFile(state_ / "other.seen", "quenmar");
  SeenFiles later(state_);
  EXPECT_EQ(Keep(later, "a: 1\r\n"), "");
  for (const auto& [server, there, days, kept] : cases) {
    EXPECT_EQ(Found(server) != "none", kept) << server;
  }
  EXPECT_EQ(ReadFile(state_ / "other.seen"), "quenmar");
}

#ifndef _WIN32
TEST_F(SeenFilesTest, LinksLeadToTheEntryOfTheirTarget) {
  fs::create_directories(folder_ / "far/below");
  fs::create_directory_symlink("conf", folder_ / "soft");
  fs::create_directory_symlink("../far/below", folder_ / "conf/link");
  EXPECT_EQ(Found(folder_ / "soft/a.conf"), "a: 1\r\n");
  EXPECT_EQ(Found(folder_ / "conf/link/../a.conf"), "none") << "this is far/a.conf";
}

TEST_F(SeenFilesTest, WhatIsNoFileInAnEntrysPlaceIsNamedAndStays) {
  fs::remove(entry_);
  for (const bool pipe : {true, false}) {
    pipe ? (void)::mkfifo(entry_.c_str(), 0600) : (void)fs::create_directory(entry_);
    const OldFile old = seen_.Look(server_);
    EXPECT_TRUE(old.path == entry_ && !old.reason.empty());
    EXPECT_THAT(Keep(seen_ = SeenFiles(state_), "a: 2\r\n"), StartsWith(entry_.string() + ": "));
    fs::remove(entry_);
  }
}

TEST(StateFolder, IsTheFirstAbsolutePath) {
  const std::tuple<const char*, const char*, const char*, Path> cases[] = {
      {"/s", "/x", "/h", "/s"},
      {"s", "/x", "/h", ""},
      {nullptr, "/x", "/h", "/x/quenmar/seen"},
      {nullptr, "x", "/h", "/h/.local/state/quenmar/seen"},
      {nullptr, nullptr, "h", ""}};
  const auto set = [](const char* name, const char* value) {
    value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
  };
  for (const auto& [named, state, home, folder] : cases) {
    set("QUENMAR_STATE", named), set("XDG_STATE_HOME", state), set("HOME", home);
    EXPECT_EQ(StateFolder(), folder);
  }
}

TEST_F(SeenFilesTest, AFolderThatCannotBeReadIsToldOnce) {
  for (const Path& above : {folder_.Folder(), state_.parent_path()}) {
    fs::permissions(above, fs::perms::all);
  }
  for (const fs::perms some : {fs::perms::none, fs::perms::others_read | fs::perms::owner_read}) {
    SeenFiles again(state_);
    fs::permissions(state_, some);
    const auto look = [&] { return again.Look(server_); };
    const OldFile first = AsUser(look), second = AsUser(look);
    fs::permissions(state_, fs::perms::owner_all);
    EXPECT_TRUE(first.path == state_ && !first.reason.empty() && second.reason.empty());
  }
}
#endif

}  // namespace
}  // namespace quenmar
