#include <chrono>
#include <nlohmann/json.hpp>
#include <utility>

#include "cli/ConsoleFixture.h"

namespace quenmar {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Json = nlohmann::json;

TEST_F(ConsoleTest, CheckShowsAPersonWhatDiffers) {
  Write("dist/new.conf", "n: 1\r\n//m:\r\n");
  for (const char* const name : {"dist/same.CONF", "server/same.CONF"}) Write(name, "s: 1\r\n");
  EXPECT_EQ(Check(), kDifferences);
  EXPECT_EQ(
      out_,
      "a.conf: 2 new (1 mandatory), 2 changed, 1 obsolete, 1 inactive; series: 1 new, 1 only on "
      R"(the server
  new [x]  fresh  7
  new [ ]  extra  8
  changed  base   2  (distribution: 1)
  changed  rate   150  (distribution: 100)
  inactive base   2
  obsolete old    3
  new      npc: new.txt
  own      npc: own.txt
  save     1 added
  save     1 removed
  save     1 changed
  save     1 now active
  save     1 comment line lost
  save     order of lines changes
new.conf: the server lacks this file: 2 new (1 mandatory), 0 changed, 0 obsolete
  new [x]  n  1
  new [ ]  m  ""
same.CONF: no differences
Sum of 3 files: 1 different, 1 new, 0 failed; settings: 4 new (2 mandatory), 2 changed, 1 )"
      R"(obsolete, 1 inactive
[x] mandatory: the server needs it; [ ] optional
Old version not known (2 files)" +
          std::string(kOldUnknownHint));
  EXPECT_EQ(err_, "");
  EXPECT_EQ(Check({"same.CONF"}), kNothingToDo);
  colours_ = true;
  Check({"a.conf"});
  EXPECT_THAT(out_, HasSubstr("\033[32mnew [x] \033[0m fresh"));
}

TEST_F(ConsoleTest, CheckShowsAProgramWhatDiffers) {
  Write("dist/bad.conf", "x y: 1\r\nnpc: a b\r\n");
  Write("dist/new.conf", "n: \xE9\r\n");
  SetOptions("\"Layout\"=\"server\"\r\n");
  EXPECT_EQ(Check({"--json"}), kFailure);
  EXPECT_EQ(err_, "");
  Json expected = Json::parse(R"([
    {"file": "a.conf", "status": "different",
     "new": [{"name": "fresh", "value": "7", "mandatory": true},
             {"name": "extra", "value": "8", "mandatory": false}],
     "obsolete": [{"name": "old", "value": "3"}],
     "changed": [{"name": "base", "actual": "2", "original": "1"},
                 {"name": "rate", "actual": "150", "original": "100"}],
     "inactive": [{"name": "base", "value": "2"}], "defaults": [],
     "series": {"new": [{"type": "npc", "name": "new.txt"}],
                "obsolete": [{"type": "npc", "name": "own.txt"}], "withdrawn": []},
     "findings": [{"line": 0, "kind": "save", "text": "1 added"},
                  {"line": 0, "kind": "save", "text": "1 removed"}]},
    {"file": "bad.conf", "status": "failed", "new": [], "obsolete": [], "changed": [],
     "inactive": [], "defaults": [],
     "series": {"new": [], "obsolete": [], "withdrawn": []},
     "findings": [{"line": 2, "kind": "name", "text": ""}]},
    {"file": "new.conf", "status": "new", "new": [{"name": "n", "value": "é", "mandatory": true}],
     "obsolete": [], "changed": [], "inactive": [], "defaults": [],
     "series": {"new": [], "obsolete": [], "withdrawn": []}, "findings": []}])");
  expected[1]["findings"][0]["text"] = At("dist/bad.conf") + ": Name don't allow spaces: npc: a b";
  EXPECT_EQ(Json::parse(out_), expected);
}

TEST_F(ConsoleTest, ReadingAsksNothingEndsAtNothingAndWritesNothing) {
  const std::pair<const char*, std::string> files[] = {
      {"dist/a.conf", "rate: 1\nrate: 2\n//rate: 3\ngone: 0\n"},
      {"server/a.conf", "//rate: 4\n//gone: 0\ngone: 1\n"},
      {"dist/b.conf", std::string("\xFF\xFE") + "b"},
      {"server/b.conf", "b: \xC3\xA9\n"},
      {"dist/c.conf", std::string("\xEF\xBB\xBF") + "c: caf\xC3\xA9\r\n"},
      {"server/c.conf", "c: caf\xE9\r\n"}};
  const auto time = std::filesystem::last_write_time(folder_ / "dist") - std::chrono::hours(1);
  for (const auto& [name, bytes] : files) {
    Write(name, bytes);
    std::filesystem::last_write_time(folder_ / name, time);
  }
  std::filesystem::create_directory(folder_ / "dist/d.conf");
  for (const char* const answer : {"--yes", "--no"}) {
    EXPECT_EQ(Check({answer, "a.conf", "b.conf", "c.conf", "dist/a.conf"}), kFailure);
    EXPECT_EQ(err_, "");
    EXPECT_EQ(ShortOut(), std::string(R"(a.conf: 0 new (0 mandatory), 2 changed, 0 obsolete
  changed  rate  4  (distribution: 1)
  changed  gone  1  (distribution: 0)
  note     dist/a.conf, line 1: this is the first line that ends in a bare line feed
  note     dist/a.conf, line 2: the setting rate has been set before
  note     server/a.conf, line 1: this is the first line that ends in a bare line feed
  save     1 now active
  save     1 comment line lost
  save     line ends become CR LF
b.conf: could not be read
  note     dist/b.conf: This is UTF-16 text. Configuration files are UTF-8 or Windows-1252 )"
                                      R"(text; please convert it.
  note     server/b.conf, line 1: the file is UTF-8 text
  note     server/b.conf, line 1: this is the first line that ends in a bare line feed
c.conf: no differences
  note     dist/c.conf, line 1: the file is UTF-8 text
dist/a.conf: could not be read
  note     dist/a.conf: FILE is a name without a folder; its folders are DIST_DIR and SERVER_DIR
Sum of 4 files: 1 different, 0 new, 2 failed; settings: 0 new (0 mandatory), 2 changed, 0 )"
                                      R"(obsolete, 0 inactive
Old version not known (2 files)") +
                              kOldUnknownHint);
  }
  EXPECT_EQ(Check({"no.conf"}), kFailure);
  EXPECT_THAT(ShortOut(), StartsWith("no.conf: could not be read\n  note     dist/no.conf: "));
  EXPECT_EQ(Run({"check", At("none"), At("server")}), kFailure);
  EXPECT_THAT(err_, HasSubstr("none: "));
  Check({"--json"});
  Run({"dump", At("dist/a.conf")});
  Run({"compare", At("dist/a.conf"), At("server/a.conf")});
  Merge({"--dry-run"});
  Merge({"--fix-line-ends", "--dry-run"});
  for (const auto& [name, bytes] : files) {
    EXPECT_EQ(Read(name), bytes) << name;
    EXPECT_EQ(std::filesystem::last_write_time(folder_ / name), time) << name;
  }
  EXPECT_FALSE(Exists("options.reg") || Exists("state"));
  Check({"--fix-line-ends", "a.conf"});
  EXPECT_EQ(Read("server/a.conf"), "//rate: 4\r\n//gone: 0\r\ngone: 1\r\n");
}

}  // namespace
}  // namespace quenmar
