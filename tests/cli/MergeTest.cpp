#include <sstream>
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
  Write("dist/a.conf",
        "\xEF\xBB\xBF"
        "title: -\r\nnote: \xC3\xA9\r\n");
  Write("server/a.conf", "title: caf\xE9\r\nnote: \xE9\r\n");
  EXPECT_EQ(Merge({"--set", "title=caf\xC3\xA9s"}), kNothingToDo);
  EXPECT_EQ(Read("server/a.conf"), "title: caf\xE9s\r\nnote: \xE9\r\n");
  Write("server/a.conf",
        "\xEF\xBB\xBF"
        "title: 1\r\n");
  EXPECT_EQ(Merge({"--set", "title=\xD0\x96", "--dry-run"}), kNothingToDo);
  EXPECT_EQ(out_, "changed        title: 1 -> \xD0\x96\nthe byte order mark goes\n");
  Write("server/a.conf", "title: 1\r\n");  // takes the distribution's
  EXPECT_EQ(Merge({"--set", "title=\xD0\x96"}), kNothingToDo);
  EXPECT_EQ(Read("server/a.conf"), "title: \xD0\x96\r\n");
  Write("server/a.conf", "title: \xE9\r\n");
  EXPECT_EQ(Merge({"--set", "title=\xC3\x83\xC2\xA9"}), kNothingToDo);
  EXPECT_THAT(err_, StartsWith("quenmarctl: Read again, the saved file will be taken for UTF-8"));
  EXPECT_EQ(Run({"dump", "--xml", "settings", At("dist/a.conf")}), kNothingToDo);
  EXPECT_THAT(out_, AllOf(HasSubstr("encoding=\"UTF-8\""), HasSubstr(">\xC3\xA9<")));
}

TEST_F(ConsoleTest, MergeRefusesToReplaceWhatSomebodyElseHasWritten) {
  // The file changes while the user thinks about an answer.
  struct Meddler : std::stringbuf {
    int_type underflow() override {
      if (std::exchange(asked, true)) return std::stringbuf::underflow();
      removes ? (void)std::filesystem::remove(file) : WriteFile(file, "theirs: 1\r\n");
      str("y\nn\n");
      return std::stringbuf::underflow();
    }
    Path file;
    bool removes = false;
    bool asked = false;
  };
  const Path file = folder_ / "server/a.conf";
  const auto merge = [&](bool removes) {
    Meddler meddler;
    meddler.file = file;
    meddler.removes = removes;
    std::istream in(&meddler);
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(RunConsole({"--registry", At("options.reg"), "merge", At("dist"), At("server"),
                          "a.conf", "--remove", "rate"},
                         {in, out, err, true, false}),
              kTrouble);
    return err.str();
  };
  const std::string question =
      "The file has changed on the disk since it was read. Save anyway?\n" + At("server/a.conf") +
      " [y/N] ";
  EXPECT_THAT(merge(true), HasSubstr(question));
  EXPECT_FALSE(std::filesystem::exists(file));
  Write("server/a.conf", kServer);
  EXPECT_THAT(merge(false), HasSubstr(question));
  EXPECT_EQ(Read("server/a.conf"), "theirs: 1\r\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "server/a.conf.bak"));
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
  EXPECT_EQ(Merge({"--set", "fresh=a=b", "--set", "old=", "--add-mandatory", "--restore", "old",
                   "--output", "-"}),
            kNothingToDo);
  EXPECT_EQ(out_,
            "base: 2\r\nrate: 150\r\nold: \r\nfresh: a=b\r\n"
            "npc: own.txt\r\n//npc: a.txt\r\n//npc: new.txt\r\n");
  EXPECT_EQ(Read("server/a.conf"), kServer);

  Write("options.reg",
        "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n"
        "\"Sort\"=\"1\"\r\n\"SaveCommentedSeries\"=\"0\"\r\n");
  EXPECT_EQ(Merge({"--add", "extra", "--add-all", "--output", At("out.conf")}), kNothingToDo);
  EXPECT_EQ(Read("out.conf"), "base: 2\r\nextra: 8\r\nfresh: 7\r\nrate: 150\r\nnpc: own.txt\r\n");
}

TEST_F(ConsoleTest, MergeRefusesWhatItCannotDo) {
  const std::vector<std::vector<std::string>> kRefused = {{"--restore", "base"},
                                                          {"--add", "old"},
                                                          {"--remove", "fresh"},
                                                          {"--set", "old=1"},
                                                          {"--set", "rate"},
                                                          {"--set", "rate=a\nb"},
                                                          {"--remove", "rate"},
                                                          {"--set", "rate=\xD0\x96"},
                                                          {"--dry-run", "--set", "rate=\xD0\x96"},
                                                          {"--output", At("dist/new.conf")},
                                                          {"--output", At("dist/x/../b")},
                                                          {"--output", At("dist")},
                                                          {"--output", ""},
                                                          {"--set", "rate=\xE9"},
                                                          {"--output", "-", "--dry-run"}};
  for (const auto& options : kRefused) {
    EXPECT_EQ(Merge(options), kTrouble) << options.front();
    EXPECT_THAT(err_, Not(IsEmpty()));
    EXPECT_EQ(out_, "");
    EXPECT_EQ(Read("server/a.conf"), kServer);
  }
#ifndef _WIN32
  // Other ways into the distribution's folder, and out of the program.
  Write("dist/b.conf", "b: 1\r\n");
  std::filesystem::create_hard_link(folder_ / "dist/b.conf", folder_ / "hard");
  std::filesystem::create_symlink(folder_ / "dist/new.conf", folder_ / "soft");
  for (const char* const name : {"hard", "soft"}) {
    EXPECT_EQ(Merge({"--output", At(name)}), kTrouble) << name;
    EXPECT_THAT(err_, HasSubstr("this is inside the distribution's folder"));
  }
  EXPECT_EQ(Read("dist/b.conf"), "b: 1\r\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "dist/new.conf"));
  const Path here = std::filesystem::current_path();
  std::filesystem::current_path(folder_ / "dist");
  EXPECT_EQ(Run({"merge", ".", "../server", "a.conf", "--output", "new.conf"}), kTrouble);
  std::filesystem::current_path(here);
  std::filesystem::create_symlink("../dist/b.conf", folder_ / "server/b.conf");
  EXPECT_EQ(Run({"merge", At("dist"), At("server"), "b.conf", "--remove", "b", "--yes"}), kTrouble);
  std::filesystem::remove(folder_ / "server/b.conf");
#endif
  EXPECT_EQ(Run({"merge", At("dist"), At("server"), "none.conf"}), kTrouble);
  EXPECT_EQ(Run({"check", At("nowhere"), At("server")}), kTrouble);
  EXPECT_EQ(Run({"check", At("server")}), kTrouble);
  EXPECT_EQ(Run({"--yes", "--no", "check", At("dist"), At("server")}), kTrouble);
  for (const auto& [command, said] :
       {std::pair("bogus", "Unknown command: bogus\n"), std::pair("--bogus", "Unknown option: "),
        std::pair("", "A command is required\n")}) {
    std::vector<std::string> arguments = {command, "--json"};
    if (*command == '\0') arguments.clear();
    EXPECT_EQ(Run(arguments), kTrouble);
    EXPECT_THAT(err_, StartsWith(said));
  }
  EXPECT_EQ(Run({"check", At("dist"), At("server"), "--bogus"}), kTrouble);
  EXPECT_EQ(Run({"merge", At("dist"), At("server"), "../server/a.conf"}), kTrouble);
  EXPECT_THAT(err_, HasSubstr("FILE is a name without a folder"));
  EXPECT_EQ(Run({"--help"}), kNothingToDo);
  EXPECT_THAT(out_, HasSubstr("check"));
  EXPECT_EQ(Run({"--version"}), kNothingToDo);
  EXPECT_THAT(out_, StartsWith("quenmarctl "));
}

TEST_F(ConsoleTest, AFileThatTheServerLacksComesOnlyWithASave) {
  Write("dist/b.conf", "b: 1\r\n//c: 2\r\n");
  EXPECT_EQ(Run({"--yes", "merge", At("dist"), At("server"), "b.conf", "--add", "b"}), kTrouble);
  interactive_ = true;
  input_ = "y\nn\n";
  EXPECT_EQ(Run({"merge", At("dist"), At("server"), "b.conf", "--remove", "b"}), kTrouble);
  EXPECT_THAT(err_, HasSubstr("declined, the file was not saved"));
  std::string kinds = "{x}";
  for (char kind = 'a'; kind < 'k'; ++kind) kinds += std::string("{") + kind + "}";
  Write("options.reg",
        "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n"
        "\"Series\"=\"" +
            kinds + "\"\r\n");
  Write("dist/b.conf",
        "a:1\r\nb:2\r\nc:3\r\nd:4\r\ne:5\r\nf:6\r\ng:7\r\nh:8\r\ni:9\r\nj:0\r\nx:y\r\n");
  EXPECT_EQ(Run({"--yes", "merge", At("dist"), At("server"), "b.conf"}), kTrouble);
  EXPECT_THAT(err_, HasSubstr("Sorry, this tool only works with 10 series"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "server/b.conf"));
}

TEST_F(ConsoleTest, TheServersFolderMayBeBelowTheDistributions) {
  std::filesystem::create_directory(folder_ / "dist/own");
  Write("dist/own/a.conf", kServer);
  EXPECT_EQ(Run({"merge", At("dist"), At("dist/own"), "a.conf"}), kNothingToDo);
  EXPECT_EQ(Read("dist/own/a.conf"), kMerged);
  EXPECT_EQ(Read("dist/a.conf"), kDistribution);
}

TEST_F(ConsoleTest, MergeTreatsASettingThatStandsTwiceAsOne) {
  Write("dist/a.conf", "a: 1\r\n//a: 2\r\nb: 3\r\n");
  Write("server/a.conf", "a: 5\r\nb: 3\r\n");
  EXPECT_EQ(Merge({"--yes", "--set", "a=9", "--output", "-"}), kNothingToDo);
  EXPECT_EQ(out_, "a: 9\r\na: 9\r\nb: 3\r\n");
  EXPECT_EQ(Merge({"--yes", "--remove", "a", "--output", "-"}), kNothingToDo);
  EXPECT_EQ(out_, "b: 3\r\n");
}

TEST_F(ConsoleTest, MergeAsksAtTheTerminal) {
  interactive_ = true;
  input_ = "what\ny\n";
  EXPECT_EQ(Merge({"--remove", "rate"}), kNothingToDo);
  EXPECT_THAT(err_,
              HasSubstr(": The rate parameter is mandatory, delete anyway? [y/N/c]  [y/N/c] "));
  EXPECT_THAT(Read("server/a.conf"), StartsWith("base: 2\r\nnpc"));

  Write("dist/b.conf", "b: 1\r\n//c: 2\r\n");
  input_ = "\n";
  EXPECT_EQ(Run({"merge", At("dist"), At("server"), "b.conf"}), kTrouble);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "server/b.conf"));
  EXPECT_THAT(err_, StartsWith("The b.conf file is a new config file, copy in your project config "
                               "folder? [y/N] "));
  EXPECT_EQ(Run({"--yes", "merge", At("dist"), At("server"), "b.conf"}), kNothingToDo);
  EXPECT_EQ(Read("server/b.conf"), "b: 1\r\nc: 2\r\n");

  // The copy of a file that has gone is worth more than one of the distribution's.
  std::filesystem::rename(folder_ / "server/b.conf", folder_ / "server/b.conf.bak");
  EXPECT_EQ(Run({"--yes", "merge", At("dist"), At("server"), "b.conf", "--remove", "c"}),
            kNothingToDo);
  EXPECT_EQ(Read("server/b.conf.bak"), "b: 1\r\nc: 2\r\n");
}

TEST_F(ConsoleTest, DryRunPrintsChangesAndWritesNothing) {
  Write("server/a.conf", "// Mine\nrate: 150 // high\n//base: 2\nold: 3\t4\nnpc: a.txt\n");
  const std::string before = Read("server/a.conf");
  EXPECT_EQ(
      Run({"--yes", "merge", At("dist"), At("server"), "a.conf", "--dry-run", "--add", "fresh"}),
      kNothingToDo);
  EXPECT_EQ(out_,
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
  EXPECT_EQ(Run({"merge", At("dist"), At("server"), "b.conf", "--dry-run"}), kNothingToDo);
  EXPECT_EQ(out_, "added          b: 1\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "server/b.conf"));
  Write("server/b.conf", "b: 1\r\n");
  Run({"merge", At("dist"), At("server"), "b.conf", "--dry-run"});
  EXPECT_EQ(out_, "no changes\n");
}

}  // namespace
}  // namespace quenmar
