#include <tuple>
#include <utility>

#include "cli/ConsoleFixture.h"

namespace quenmar {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

TEST_F(ConsoleTest, MergeKeepsTheCharacterSet) {
  const std::string mark = "\xEF\xBB\xBF";
  Write("dist/a.conf", mark + "title: -\r\nnote: \xC3\xA9\r\n");
  const std::tuple<std::string, const char*, const char*> cases[] = {
      {"title: caf\xE9\r\nnote: \xE9\r\n", "title=caf\xC3\xA9s",
       "title: caf\xE9s\r\nnote: \xE9\r\n"},
      {"title: 1\r\n", "title=\xD0\x96", "title: \xD0\x96\r\n"},  // takes the distribution's
      {"title: \xE9\r\n", "title=\xC3\x83\xC2\xA9", "title: \xC3\xA9\r\n"}};
  for (const auto& [before, wanted, after] : cases) {
    Write("server/a.conf", before);
    EXPECT_EQ(Merge({"--set", wanted}), kNothingToDo);
    EXPECT_EQ(Read("server/a.conf"), after);
  }
  EXPECT_THAT(err_, StartsWith("quenmarctl: Read again, the saved file will be taken for UTF-8"));
  Write("server/a.conf", mark + "title: 1\r\n");
  EXPECT_EQ(MergeOutput({"--set", "title=\xD0\x96", "--dry-run"}),
            "changed        title: 1 -> \xD0\x96\nthe byte order mark goes\n");
  EXPECT_EQ(Run({"dump", "--xml", "settings", At("dist/a.conf")}), kNothingToDo);
  EXPECT_THAT(out_, AllOf(HasSubstr("encoding=\"UTF-8\""), HasSubstr(">\xC3\xA9<")));
}

TEST_F(ConsoleTest, MergeIsApplyAndMoves) {
  EXPECT_EQ(Merge({}), kNothingToDo);
  EXPECT_EQ(Read("server/a.conf"), kMerged);
  EXPECT_EQ(Read("server/a.conf.bak"), kServer);
  const std::string file = ToUtf8(PathText(folder_ / "server" / "a.conf"));
  EXPECT_EQ(err_, file + ": Saved!\n" + file +
                      ": 1 added, 1 removed, 1 changed, 1 now active, 1 comment line lost, "
                      "order of lines changes\n");
  EXPECT_EQ(Merge({}), kNothingToDo);
  EXPECT_EQ(err_, file + ": Saved!\n" + file + ": no changes\n");
  EXPECT_EQ(Read("server/a.conf.bak"), kServer) << "what is saved already makes no copy";

  Write("server/a.conf", kServer);
  EXPECT_EQ(MergeOutput({"--set", "fresh=a=b", "--set", "old=", "--add-mandatory", "--restore",
                         "old", "--output", "-"}),
            "base: 2\r\nrate: 150\r\nold: \r\nfresh: a=b\r\n"
            "npc: own.txt\r\n//npc: a.txt\r\n//npc: new.txt\r\n");
  EXPECT_EQ(Read("server/a.conf"), kServer);

  SetOptions("\"Sort\"=\"1\"\r\n\"SaveCommentedSeries\"=\"0\"\r\n");
  EXPECT_EQ(Merge({"--add", "extra", "--add-all", "--output", At("out.conf")}), kNothingToDo);
  EXPECT_EQ(Read("out.conf"), "base: 2\r\nextra: 8\r\nfresh: 7\r\nrate: 150\r\nnpc: own.txt\r\n");
}

TEST_F(ConsoleTest, MergeRefusesWhatItCannotDo) {
  constexpr const char* kInside = "this is inside the distribution's folder";
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"--restore", "base"}, "base is not among the obsolete settings"},
      {{"--add", "old"}, "old is not among the new settings"},
      {{"--remove", "fresh"}, "fresh is not among the kept settings"},
      {{"--set", "old=1"}, "old is not among the kept settings"},
      {{"--set", "rate"}, "no = in it"},
      {{"--set", "rate=a\nb"}, "a value is one line"},
      {{"--set", "rate=\xE9"}, "this is not UTF-8 text"},
      {{"--remove", "rate"}, "declined"},
      {{"--set", "rate=\xD0\x96"}, " lacks.\nThe file "},
      {{"--dry-run", "--set", "rate=\xD0\x96"}, "lacks"},
      {{"--output", At("dist/new.conf")}, kInside},
      {{"--output", At("dist/x/../b")}, kInside},
      {{"--output", At("dist")}, kInside},
      {{"--output", ""}, ""},
      {{"--output", "-", "--dry-run"}, "excludes"},
      {{"--all"}, "excludes"},
      {{"dump", At("dist/a.conf")}, "not expected: dump"},
      {{"--layout", "other"}, "other not in"},
      {{"--layout", "settings", "--switch-off", "rate"}, "every setting is active"},
      {{"--layout", "server", "--switch-off", "none"}, "none is not among the kept settings"},
      {{"--layout", "server", "--fix-line-ends"}, "keeps the line ends"},
      {{"--switch-on", "npc:none"}, "there is no such series entry"}};
  for (const auto& [options, said] : cases) {
    EXPECT_THAT(MergeFailure(options), AllOf(Not(IsEmpty()), HasSubstr(said))) << options.back();
    EXPECT_EQ(out_, "");
    EXPECT_EQ(Read("server/a.conf"), kServer);
  }
#ifndef _WIN32
  // Other ways into the distribution's folder, and out of the program.
  Write("dist/b.conf", "b: 1\r\n");
  std::filesystem::create_hard_link(folder_ / "dist/b.conf", folder_ / "hard");
  std::filesystem::create_symlink(folder_ / "dist/new.conf", folder_ / "soft");
  for (const char* const name : {"hard", "soft"}) {
    EXPECT_THAT(MergeFailure({"--output", At(name)}), HasSubstr(kInside)) << name;
  }
  EXPECT_EQ(Read("dist/b.conf"), "b: 1\r\n");
  EXPECT_FALSE(Exists("dist/new.conf"));
  const Path here = std::filesystem::current_path();
  std::filesystem::current_path(folder_ / "dist");
  EXPECT_EQ(Run({"merge", ".", "../server", "a.conf", "--output", "new.conf"}), kFailure);
  std::filesystem::current_path(here);
  std::filesystem::create_symlink("../dist/b.conf", folder_ / "server/b.conf");
  EXPECT_EQ(Merge({"--remove", "b", "--yes"}, "b.conf"), kFailure);
  std::filesystem::remove(folder_ / "server/b.conf");
#endif
  EXPECT_EQ(Merge({}, "none.conf"), kFailure);
  EXPECT_THAT(MergeFailure({}, "../server/a.conf"), HasSubstr("FILE is a name without a folder"));
}

TEST_F(ConsoleTest, OtherCommandLinesEndAtOnce) {
  const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
      {{"check", At("nowhere"), At("server")}, kFailure, "nowhere"},
      {{"check", At("server")}, kFailure, "SERVER_DIR"},
      {{"--yes", "--no", "check", At("dist"), At("server")}, kFailure, "excludes"},
      {{"check", At("dist"), At("server"), "--bogus"}, kFailure, "--bogus"},
      {{"bogus", "--json"}, kFailure, "Unknown command: bogus\n"},
      {{"--bogus", "--json"}, kFailure, "Unknown option: "},
      {{}, kFailure, "A command is required\n"},
      {{"merge", At("dist"), At("server")}, kFailure, "FILE or --all is required"},
      {{"merge", At("dist"), At("server"), "--all", "--output", "-"}, kFailure, "excludes"},
      {{"--help"}, kNothingToDo, "check"},
      {{"--version"}, kNothingToDo, "quenmarctl "}};
  for (const auto& [arguments, status, said] : cases) {
    EXPECT_EQ(Run(arguments), status) << said;
    EXPECT_THAT(status == kFailure ? err_ : out_, HasSubstr(said));
  }
}

TEST_F(ConsoleTest, TheServersFolderMayBeBelowTheDistributions) {
  Write("dist/own/a.conf", kServer);
  EXPECT_EQ(Run({"merge", At("dist"), At("dist/own"), "a.conf"}), kNothingToDo);
  EXPECT_EQ(Read("dist/own/a.conf"), kMerged);
  EXPECT_EQ(Read("dist/a.conf"), kDistribution);
}

TEST_F(ConsoleTest, MergeAsksAtTheTerminal) {
  interactive_ = true;
  input_ = "y\n";
  EXPECT_THAT(MergeFailure({"--remove", "rate", "--no"}), HasSubstr("declined"));
  input_ = "what\ny\n";
  EXPECT_EQ(Merge({"--remove", "rate"}), kNothingToDo);
  EXPECT_THAT(err_,
              HasSubstr(": The rate parameter is mandatory, delete anyway? [y/N/c]  [y/N/c] "));
  EXPECT_THAT(Read("server/a.conf"), StartsWith("base: 2\r\nnpc"));
}

TEST_F(ConsoleTest, AFileThatTheServerLacksComesOnlyWithASave) {
  Write("dist/b.conf", "b: 1\r\n//c: 2\r\n");
  EXPECT_EQ(Merge({"--yes", "--add", "b"}, "b.conf"), kFailure);
  EXPECT_EQ(MergeOutput({"--output", "-"}, "b.conf"), "b: 1\r\nc: 2\r\n") << "no question";
  interactive_ = true;
  input_ = "\n";
  EXPECT_THAT(MergeFailure({}, "b.conf"),
              StartsWith("The b.conf file is a new config file, copy in your project config "
                         "folder? [y/N] "));
  input_ = "y\nn\n";
  EXPECT_THAT(MergeFailure({"--remove", "b"}, "b.conf"),
              HasSubstr("declined, the file was not saved"));
  EXPECT_FALSE(Exists("server/b.conf"));
  EXPECT_EQ(Merge({"--yes"}, "b.conf"), kNothingToDo);
  EXPECT_EQ(Read("server/b.conf"), "b: 1\r\nc: 2\r\n");

  // The copy of a file that has gone is worth more than one of the distribution's.
  std::filesystem::rename(folder_ / "server/b.conf", folder_ / "server/b.conf.bak");
  EXPECT_EQ(Merge({"--yes", "--remove", "c"}, "b.conf"), kNothingToDo);
  EXPECT_EQ(Read("server/b.conf.bak"), "b: 1\r\nc: 2\r\n");
}

TEST_F(ConsoleTest, DryRunPrintsChangesAndWritesNothing) {
  Write("server/a.conf", "// Mine\nrate: 150 // high\n//base: 2\nold: 3\t4\nnpc: a.txt\n");
  const std::string before = Read("server/a.conf");
  EXPECT_EQ(MergeOutput({"--yes", "--dry-run", "--add", "fresh"}),
            "becomes active base: 2\n"
            "changed        rate: 150 // high -> 150\n"
            "added          fresh: 7\n"
            "added          npc: new.txt (commented out)\n"
            "removed        old: 3\\t4\n"
            "comment lines lost: 1\n"
            "order of lines changes\n"
            "line ends become CR LF\n");
  EXPECT_EQ(Read("server/a.conf"), before);

  // A file that the server lacks is neither copied nor asked about.
  Write("dist/b.conf", "b: 1\r\n");
  EXPECT_EQ(MergeOutput({"--dry-run"}, "b.conf"), "added          b: 1\n");
  EXPECT_FALSE(Exists("server/b.conf"));
}

TEST_F(ConsoleTest, AddsANameThatIsNewTwiceOnce) {
  Write("dist/a.conf", "a: 1\r\nx: 1\r\n//x: 2\r\n");
  Write("server/a.conf", "a: 1\r\n");
  for (const char* const second : {"--add-all", "--add=x"}) {
    EXPECT_EQ(MergeOutput({second, "--add-mandatory", "--output", "-"}), "a: 1\r\nx: 1\r\n");
  }
}

}  // namespace
}  // namespace quenmar
