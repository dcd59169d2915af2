#include "merge/SeenFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "Trees.h"
#include "files/FileError.h"
#ifndef _WIN32
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
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
    fs::create_directory(folder_ / "conf");
    WriteFile(server_, "a: 9\r\n");
  }

  /// @return what the state folder has for a file, "none" for nothing.
  std::string Found(const Path& server) {
    const auto file = SeenFiles(state_).Find(server);
    return file ? file->Bytes() : "none";
  }

  /// Keeps some bytes for the server's file. @return the trouble.
  std::string Keep(SeenFiles& seen, std::string bytes) {
    return ToUtf8(seen.Keep(server_, {folder_ / "dist/a.conf", std::move(bytes)}));
  }

  std::vector<std::string> Entries() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(state_)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  ScratchFolder folder_;
  Path state_ = folder_ / "state/seen";
  Path server_ = folder_ / "conf/a.conf";
};

TEST_F(SeenFilesTest, AFolderThatTakesNothingIsToldOnceAndCostsNothingElse) {
  WriteFile(folder_ / "file", "x");
  fs::create_directory(folder_ / "conf/below");
  const std::pair<Path, const char*> kFolders[] = {
      {folder_ / "file", "file: "},
      {folder_ / "file/below", "below: "},
      {folder_ / "conf", "conf: this is inside a folder of configuration files"},
      {folder_ / "conf/below/new", "new: this is inside a folder of configuration files"},
      {folder_ / "dist", "dist: this is inside a folder of configuration files"},
      {{}, "there is no folder for it"},
  };
  for (const auto& [folder, trouble] : kFolders) {
    SeenFiles seen(folder);
    EXPECT_FALSE(seen.Find(server_)) << trouble;
    EXPECT_THAT(Keep(seen, "a: 1\r\n"), HasSubstr(trouble));
    EXPECT_EQ(Keep(seen, "a: 1\r\n"), "") << "told again";
  }
  EXPECT_EQ(ReadFile(folder_ / "file"), "x");
  EXPECT_TRUE(fs::is_empty(folder_ / "conf/below"));
  EXPECT_TRUE(fs::is_empty(folder_ / "dist"));
}

#ifndef _WIN32
TEST_F(SeenFilesTest, AFullDiskOrAReadOnlyFolderLeavesTheOldEntryWhole) {
  SeenFiles seen(state_);
  EXPECT_EQ(Keep(seen, "old\r\n"), "");
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit tight{1000, before.rlim_max};
  std::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &tight);
  const std::string full = Keep(seen, std::string(5000, 'x'));
  ::setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_THAT(full, HasSubstr("seen: "));
  EXPECT_EQ(Found(server_), "old\r\n");
  EXPECT_EQ(Entries().size(), 1U);

  fs::permissions(folder_.Folder(), fs::perms::all);
  fs::permissions(state_.parent_path(), fs::perms::all);
  fs::permissions(state_, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                              fs::perms::others_exec);
  const uid_t user = ::getuid() == 0 ? 65534 : ::getuid();
  ASSERT_EQ(::seteuid(user), 0);
  SeenFiles again(state_);
  const std::string readOnly = Keep(again, "new\r\n");
  ASSERT_EQ(::seteuid(::getuid()), 0);
  fs::permissions(state_, fs::perms::owner_all);
  EXPECT_THAT(readOnly, HasSubstr("seen: "));
  EXPECT_EQ(Found(server_), "old\r\n");
}
#endif

TEST_F(SeenFilesTest, KeepsTheBytesUnderTheAbsolutePath) {
  SeenFiles seen(state_);
  const std::string bytes("\xEF\xBB\xBF\n\npath: x\r\na: \xE9\0b", 20);
  const std::string other = "b: 2";
  EXPECT_EQ(Found(server_), "none");
  EXPECT_EQ(Keep(seen, "a: 1\r\n"), "");
  EXPECT_EQ(Keep(seen, bytes), "");
  EXPECT_EQ(Found(server_), bytes);
  EXPECT_EQ(Found(folder_ / "conf/../conf/./a.conf"), bytes);
  EXPECT_EQ(Found(folder_ / "conf2/a.conf"), "none");
  ASSERT_EQ(Entries().size(), 1U);
  EXPECT_THAT(Entries()[0], MatchesRegex("\\w+-a.conf.seen"));
  EXPECT_THAT(ReadFile(state_ / Entries()[0]),
              AllOf(StartsWith("quenmar seen file 1\npath: "), HasSubstr("a.conf\ndate: 2"),
                    EndsWith("\n\n" + bytes)));
  const Path here = fs::current_path();
  fs::current_path(folder_ / "conf");
  EXPECT_EQ(Found("a.conf"), bytes);
  fs::current_path(here);

  // Names that are no plain text.
  const Path odd = folder_ / u8"conf/h\u00E9 %41%.conf";
  EXPECT_EQ(seen.Keep(odd, {folder_ / "dist/a.conf", other}), u"");
  EXPECT_EQ(Found(odd), other);
  EXPECT_EQ(Found(server_), bytes);
}

TEST_F(SeenFilesTest, ADamagedEntryIsToldAndReplaced) {
  SeenFiles seen(state_);
  EXPECT_EQ(Keep(seen, "a: 1\r\n"), "");
  const Path entry = seen.EntryOf(server_);
  const std::string whole = ReadFile(entry);
  for (const std::string& bytes :
       {std::string(), whole.substr(0, 10), whole.substr(0, whole.find("date")), "x" + whole,
        whole.substr(0, whole.find("date")) + "date: 2026-13-01\n\n"}) {
    WriteFile(entry, bytes);
    const OldFile old = FindOldFile({}, &seen, server_);
    EXPECT_TRUE(!old.file && old.path == entry && !old.trouble.empty()) << bytes;
  }
  EXPECT_EQ(Keep(seen, "a: 2\r\n"), "");
  EXPECT_EQ(Found(server_), "a: 2\r\n");
}

TEST_F(SeenFilesTest, ClearsAfterAYearWhatHasGone) {
  struct Case {
    const char* name;
    bool there;
    bool old;
    bool kept;
  };
  const Case kCases[] = {{"gone.conf", false, true, false},
                         {"h\xC3\xA9 %41.conf", true, true, true},
                         {"young.conf", false, false, true}};
  SeenFiles seen(state_);
  const ConfFile distribution(folder_ / "dist/a.conf", "x: 1\r\n");
  for (const auto& [name, there, old, kept] : kCases) {
    const Path server = folder_ / "conf" / PathFromText(FromUtf8(name));
    if (there) WriteFile(server, "");
    EXPECT_EQ(seen.Keep(server, distribution), u"");
    std::string entry = ReadFile(seen.EntryOf(server));
    if (old) entry.replace(entry.find("\ndate: ") + 7, 4, "2020");
    WriteFile(seen.EntryOf(server), entry);
  }
  WriteFile(state_ / "other.seen", "quenmar");
  SeenFiles later(state_);
  EXPECT_EQ(Keep(later, "a: 1\r\n"), "");
  for (const auto& [name, there, old, kept] : kCases) {
    EXPECT_EQ(Found(folder_ / "conf" / PathFromText(FromUtf8(name))) != "none", kept) << name;
  }
  EXPECT_EQ(ReadFile(state_ / "other.seen"), "quenmar");
}

}  // namespace
}  // namespace quenmar
