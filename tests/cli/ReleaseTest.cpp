// What a release itself has changed, from one release to the next.
#include <nlohmann/json.hpp>

#include "cli/ConsoleFixture.h"
#include "merge/SeenFiles.h"
#include "merge/StateFolder.h"

namespace quenmar {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;

class ReleaseTest : public ConsoleTest {
 protected:
  ReleaseTest() {
    Write("dist/a.conf", "xp: 100\r\ngold: 5\r\nslots: 1\r\n//pets: 1\r\nnpc: x\r\n");
    Write("server/a.conf", "xp: 100\r\ngold: 5\r\nslots: 1\r\nnpc: x\r\n");
  }

  /// The next release, after own edits.
  void NextRelease() {
    Write("server/a.conf", "xp: 100\r\ngold: 7\r\nslots: 9\r\nnpc: x\r\n");
    Write("dist/a.conf", "xp: 150\r\ngold: 6\r\nslots: 1\r\n//pets: 2\r\nmounts: 1\r\n");
  }
};

TEST_F(ReleaseTest, IsKnownAfterASave) {
  Check();
  EXPECT_THAT(out_, HasSubstr("Old version not known (1 file" + std::string(kOldUnknownHint)));
  for (const auto& options :
       {std::vector<std::string>{"--dry-run"}, {"--output", "-"}, {"--output", At("copy.conf")}}) {
    EXPECT_EQ(Merge(options), kNothingToDo);
    EXPECT_FALSE(Exists("state")) << options.front();
  }
  EXPECT_EQ(Merge({"--take-defaults"}), kNothingToDo);
  EXPECT_THAT(err_, HasSubstr("the old version of a.conf is not known: "));
  NextRelease();

  EXPECT_EQ(Check(), kDifferences);
  EXPECT_THAT(out_, HasSubstr(", 1 default, 1 both; series: 0 new, 1 only on the server\n"));
  EXPECT_THAT(out_, HasSubstr("  changed  slots   9  (distribution: 1)\n"
                              "  default  xp      100 -> 150  (yours: 100)\n"
                              "  both     gold    5 -> 6  (yours: 7)\n"
                              "  withdrawn npc: x\n"
                              "Sum of 1 file"));
  EXPECT_THAT(out_, EndsWith("0 inactive, 1 default, 1 both\n"
                             "[x] mandatory: the server needs it; [ ] optional\n"));
  Check({"--json"});
  const Json report = Json::parse(out_)[0];
  EXPECT_EQ(report["defaults"], Json::parse(R"([
    {"name": "xp", "old": "100", "new": "150", "actual": "100", "kind": "default"},
    {"name": "gold", "old": "5", "new": "6", "actual": "7", "kind": "both"}])"));
  EXPECT_EQ(report["series"]["withdrawn"], Json::parse(R"([{"type": "npc", "name": "x"}])"));

  // Where the windows look.
  EXPECT_TRUE(SeenFiles(StateFolder()).Find(folder_ / "server/a.conf"));
}

TEST_F(ReleaseTest, TakesTheNewDefaultsBeforeItSetsValues) {
  EXPECT_EQ(Merge({"--output", At("server/a.conf")}), kNothingToDo);
  NextRelease();
  EXPECT_EQ(MergeOutput({"--take-defaults", "--dry-run"}),
            "changed        xp: 100 -> 150 (new default)\n");
  EXPECT_EQ(MergeOutput({"--take-defaults", "--set", "xp=120", "--dry-run"}),
            "changed        xp: 100 -> 120\n")
      << "the user's own value";
  EXPECT_EQ(MergeOutput({"--take-defaults", "--set", "xp=100", "--dry-run"}), "no changes\n");
  EXPECT_EQ(Merge({"--take-defaults"}), kNothingToDo);
  EXPECT_EQ(Read("server/a.conf"), "xp: 150\r\ngold: 7\r\nslots: 9\r\nnpc: x\r\n");
  EXPECT_THAT(err_, Not(HasSubstr("left as")));
  Write("dist/a.conf", "xp: 200\r\ngold: 8\r\n");
  EXPECT_EQ(Merge({}), kNothingToDo);
  EXPECT_THAT(err_, HasSubstr("\na.conf: 1 default that the release has changed was left as it is; "
                              "see --take-defaults\n"));
}

TEST_F(ReleaseTest, TheSamplesOldReleaseShowsWhatChanged) {
  const std::string samples = QUENMAR_SOURCE_DIR "/examples";
  Run({"check", samples + "/conf-dist", samples + "/conf", "--base", samples + "/conf-dist-old",
       "--no"});
  EXPECT_THAT(out_, HasSubstr(" inactive, 3 default, 3 both\n"));
}

TEST_F(ReleaseTest, ABaseIsAFolderThatMayLackFiles) {
  EXPECT_EQ(Check({"--base", At("nowhere")}), kFailure);
  EXPECT_THAT(MergeFailure({"--base", At("server/a.conf")}, "--all"), Not(HasSubstr("Sum of")));
  std::filesystem::create_directory(folder_ / "base");
  const std::string lacking = "quenmarctl: " + At("base") + " has no a.conf\n";
  EXPECT_EQ(MergeFailure({"--take-defaults", "--base", At("base")}), lacking);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "server/a.conf.bak"));
  Check({"--base", At("base")});
  EXPECT_EQ(err_, lacking);
  for (const char* const name : {"base/b.conf", "dist/b.conf", "dist/c.conf", "server/c.conf"}) {
    Write(name, "b: 1\r\n");
  }
  const std::pair<const char*, std::string> folders[] = {
      {"base", "quenmarctl: " + At("base") + " lacks 2 files, such as a.conf\n"},
      {"server", ""},
      {"", "quenmarctl: " + At("") + " has none of the distribution's files\n"}};
  for (const auto& [base, said] : folders) {
    Merge({"--take-defaults", "--dry-run", "--base", At(base)}, "--all");
    EXPECT_EQ(err_, said);
  }
  Write("base/a.conf", "\xFF\xFE");
  EXPECT_EQ(Check({"--base", At("base")}), kFailure);
  EXPECT_THAT(out_, HasSubstr("a.conf: This is UTF-16 text."));
  EXPECT_THAT(out_, Not(HasSubstr("Old version")));
  Write("base/a.conf", "a: 1\r\nb<: 1\r\n");
  EXPECT_EQ(Check({"--base", At("base")}), kFailure);
  EXPECT_THAT(out_, HasSubstr("a.conf, line 2: Illegal character in name: b<: 1"));
  EXPECT_THAT(MergeFailure({"--base", At("base")}), HasSubstr("a.conf, line 2: b<: 1"));
}

TEST_F(ReleaseTest, OnlyTheLineWithTheNewDefaultIsMarked) {
  Write("base/a.conf", "a: 1\r\n");
  Write("dist/a.conf", "a: 3\r\n");
  Write("server/a.conf", "a: 1\r\na: 2\r\n");
  EXPECT_EQ(MergeOutput({"--yes", "--take-defaults", "--base", At("base"), "--dry-run"}),
            "changed        a: 1 -> 3 (new default)\nremoved        a: 2\n");
}

}  // namespace
}  // namespace quenmar
