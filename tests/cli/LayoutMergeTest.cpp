// Merges that keep the lines of a file, and merges of many files, on the console.
#include "cli/ConsoleFixture.h"

namespace quenmar {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kTheirs =
    "// Their head\r\n\r\n// rate of all\r\nrate: 100\r\n\r\n// about base\r\nbase: 1 // "
    "low\r\n\r\n"
    "// needed now\r\nfresh: 7\r\n\r\nnpc: a.txt\r\n";
constexpr const char* kMine =
    "# My head\n\nrate: 150   // mine\n//base: 2\nnote: 5\n\n// gone\nold: 3\n\n//npc: a.txt\n";

class LayoutMergeTest : public ConsoleTest {
 protected:
  LayoutMergeTest() {
    Write("dist/a.conf", kTheirs);
    Write("server/a.conf", kMine);
  }
};

TEST_F(LayoutMergeTest, KeepsTheLinesOfTheChosenFile) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"--layout", "server", "--restore", "note", "--add", "fresh", "--set", "base=4"},
       "# My head\n\nrate: 150   // mine\nbase: 4\nnote: 5\n\n// needed now\nfresh: 7\n\n"
       "//npc: a.txt\n"},
      {{"--layout", "server", "--restore-all", "--switch-on", "base", "--switch-off", "rate",
        "--switch-on", "npc:a.txt", "--set", "base=4"},
       "# My head\n\n//rate: 150   // mine\nbase: 4\nnote: 5\n\n// gone\nold: 3\n\nnpc: a.txt\n"},
      {{"--layout", "distribution", "--set", "rate=160"},
       "// Their head\r\n\r\n// rate of all\r\nrate: 160\r\n\r\n// about base\r\n//base: 2 // "
       "low\r\n"
       "\r\n//npc: a.txt\r\n"},
      {{"--layout", "settings", "--switch-on", "npc:a.txt"},
       "rate: 150\r\nbase: 2\r\nnpc: a.txt\r\n"},
  };
  for (const auto& [options, merged] : cases) {
    EXPECT_EQ(Merge(options), kNothingToDo) << err_;
    EXPECT_EQ(Read("server/a.conf"), merged);
    Write("server/a.conf", kMine);
  }
}

TEST_F(LayoutMergeTest, AFileThatStaysIsNotTouched) {
  SetOptions("\"Layout\"=\"server\"\r\n");
  EXPECT_EQ(MergeOutput({"--restore-all", "--dry-run"}), "no changes\n");
  EXPECT_EQ(Merge({"--restore-all"}), kNothingToDo);
  EXPECT_THAT(err_, HasSubstr("Saved!"));
  EXPECT_FALSE(Exists("server/a.conf.bak"));
  EXPECT_THAT(MergeFailure({"--restore-all", "--switch-off", "note"}),
              HasSubstr("it would be a comment"));
  EXPECT_THAT(MergeFailure({"--restore-all", "--restore", "none"}),
              HasSubstr("none is not among the obsolete settings"));
  EXPECT_EQ(MergeOutput({"--restore", "note", "--dry-run"}),
            "removed        old: 3\ncomment lines lost: 1\n");
  EXPECT_EQ(MergeOutput({"--restore-all", "--add", "fresh", "--switch-on", "npc:a.txt",
                         "--switch-off", "rate", "--dry-run"}),
            "switched off   rate: 150   // mine\nadded          fresh: 7\n"
            "switched on    npc: a.txt\ncomment lines added: 1\n");
  EXPECT_EQ(Check(), kDifferences);
  EXPECT_THAT(out_, AllOf(HasSubstr("save     2 removed\n"), Not(HasSubstr("reformatted"))));
}

TEST_F(LayoutMergeTest, TheOptionToSortExchangesNoLines) {
  SetOptions("\"Sort\"=\"1\"\r\n\"Layout\"=\"server\"\r\n");
  const std::string mine = "// mine\nx: 1\nmode: fast\n//mode: slow\nb: 1\na: 1\n";
  Write("dist/a.conf", "x: 1\nb: 1\n");
  Write("server/a.conf", mine);
  EXPECT_EQ(MergeOutput({"--restore-all", "--output", "-"}), mine);
}

TEST_F(LayoutMergeTest, MergesAllFiles) {
  Write("dist/b.conf", "x: 1\r\n");
  Write("server/b.conf", "x: 2\r\n");
  Write("dist/c.conf", "x: 1\r\ny<: 2\r\n");
  Write("server/c.conf", "x: 2\r\n");
  Write("dist/d.conf", "x: 1\r\n");
  EXPECT_EQ(Merge({"--add-mandatory", "--set", "x=3", "--dry-run"}, "--all"), kFailure);
  EXPECT_THAT(out_, AllOf(HasSubstr("b.conf:\nchanged        x: 2 -> 3\n"),
                          HasSubstr("added          fresh: 7\n"),
                          HasSubstr("d.conf:\nthe server has no such file"),
                          HasSubstr("Sum of 3 files: 2 changed, 0 unchanged, 1 failed\n")));
  std::filesystem::remove(folder_ / "dist/c.conf");
  EXPECT_EQ(Merge({"--remove", "rate", "--restore", "nowhere"}, "--all"), kFailure);
  EXPECT_THAT(err_, AllOf(HasSubstr("nowhere: this concerns no file"),
                          HasSubstr("Sum of 2 files: 0 changed, 1 unchanged, 1 failed\n")))
      << "rate is mandatory, and the answer is No";
  interactive_ = true;
  input_ = "y\n";  // one answer to one question
  EXPECT_EQ(Merge({}, "--all"), kNothingToDo);
  EXPECT_EQ(Read("server/d.conf"), "x: 1\r\n");
  EXPECT_THAT(err_, HasSubstr("Sum of 3 files: 2 changed, 1 unchanged, 0 failed\n"));
}

}  // namespace
}  // namespace quenmar
