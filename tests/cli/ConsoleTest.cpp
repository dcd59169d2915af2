#include "cli/Console.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "ScratchFolder.h"
#include "Trees.h"
#include "files/FileError.h"

namespace quenmar {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using Json = nlohmann::json;

constexpr const char* kDistribution =
    "// Base\r\nbase: 1\r\nrate: 100\r\nfresh: 7\r\n//extra: 8\r\nnpc: a.txt\r\nnpc: new.txt\r\n";
constexpr const char* kServer =
    "// Mine\r\nrate: 150 // high\r\n//base: 2\r\nold: 3\r\nnpc: own.txt\r\n//npc: a.txt\r\n";
constexpr const char* kMerged =
    "base: 2\r\nrate: 150\r\nnpc: own.txt\r\n//npc: a.txt\r\n//npc: new.txt\r\n";

class ConsoleTest : public ::testing::Test {
 protected:
  ConsoleTest() {
    for (const char* name : {"dist", "server"}) std::filesystem::create_directory(folder_ / name);
    Write("dist/a.conf", kDistribution);
    Write("server/a.conf", kServer);
  }

  void Write(const char* name, std::string_view bytes) { WriteFile(folder_ / name, bytes); }
  std::string Read(const char* name) { return ReadFile(folder_ / name); }
  std::string At(const char* name) {
    return ToUtf8(PathText(Path(folder_ / name).make_preferred()));
  }

  /// @return the system's words for a file that is not there.
  std::string NoSuchFile() {
    try {
      return ReadBytes(folder_ / "no such file");
    } catch (const FileError& error) {
      return error.what();
    }
  }

  /// Runs the program with a registry file in the scratch folder.
  int Run(std::vector<std::string> arguments) {
    std::istringstream in(input_);
    std::ostringstream out;
    std::ostringstream err;
    arguments.insert(arguments.begin(), {"--registry", At("options.reg")});
    const int status = RunConsole(arguments, {in, out, err, interactive_, colours_});
    out_ = out.str();
    err_ = err.str();
    return status;
  }

  int Merge(std::vector<std::string> options) {
    options.insert(options.begin(), {"merge", At("dist"), At("server"), "a.conf"});
    return Run(std::move(options));
  }

  ScratchFolder folder_;
  bool interactive_ = false;
  bool colours_ = false;
  std::string input_;
  std::string out_;
  std::string err_;
};

TEST_F(ConsoleTest, CheckTellsAPersonWhatDiffers) {
  Write("dist/new.conf", "n: 1\r\n//m: 2\r\n");
  Write("dist/same.CONF", "s: 1\r\n");
  Write("server/same.CONF", "s: 1\r\n");
  EXPECT_EQ(Run({"check", At("dist"), At("server")}), kDifferences);
  EXPECT_EQ(
      out_,
      "a.conf: 2 new (1 mandatory), 2 changed, 1 obsolete, 1 inactive; series: 1 new, 1 only on "
      "the server\n"
      "  new [x]  fresh  7\n"
      "  new [ ]  extra  8\n"
      "  changed  base   2  (distribution: 1)\n"
      "  changed  rate   150  (distribution: 100)\n"
      "  inactive base   2\n"
      "  obsolete old    3\n"
      "  new      npc: new.txt\n"
      "  own      npc: own.txt\n"
      "  save     1 added\n"
      "  save     1 removed\n"
      "  save     1 changed\n"
      "  save     1 now active\n"
      "  save     1 comment line lost\n"
      "  save     order of lines changes\n"
      "new.conf: the server lacks this file: 2 new (1 mandatory), 0 changed, 0 obsolete\n"
      "  new [x]  n  1\n"
      "  new [ ]  m  2\n"
      "same.CONF: no differences\n"
      "Sum of 3 files: 1 different, 1 new, 0 failed; settings: 4 new (2 mandatory), 2 changed, "
      "1 obsolete, 1 inactive\n"
      "[x] mandatory: the server needs it; [ ] optional\n");
  EXPECT_EQ(err_, "");
  EXPECT_EQ(Run({"check", At("dist"), At("server"), "same.CONF"}), kNothingToDo);
  colours_ = true;
  Run({"check", At("dist"), At("server"), "a.conf"});
  EXPECT_THAT(out_, HasSubstr("\033[32mnew [x] \033[0m fresh"));
}

TEST_F(ConsoleTest, CheckTellsAProgramWhatDiffers) {
  Write("dist/bad.conf", "x y: 1\r\nnpc: a b\r\n");
  Write("dist/new.conf", "n: \xE9\r\n");
  EXPECT_EQ(Run({"check", At("dist"), At("server"), "--json"}), kTrouble);
  EXPECT_EQ(err_, "");
  Json expected = Json::parse(R"([
    {"file": "a.conf", "status": "different",
     "new": [{"name": "fresh", "value": "7", "mandatory": true},
             {"name": "extra", "value": "8", "mandatory": false}],
     "obsolete": [{"name": "old", "value": "3"}],
     "changed": [{"name": "base", "actual": "2", "original": "1"},
                 {"name": "rate", "actual": "150", "original": "100"}],
     "inactive": [{"name": "base", "value": "2"}],
     "series": {"new": [{"type": "npc", "name": "new.txt"}],
                "obsolete": [{"type": "npc", "name": "own.txt"}]},
     "findings": [{"line": 0, "kind": "save", "text": "1 added"},
                  {"line": 0, "kind": "save", "text": "1 removed"},
                  {"line": 0, "kind": "save", "text": "1 changed"},
                  {"line": 0, "kind": "save", "text": "1 now active"},
                  {"line": 0, "kind": "save", "text": "1 comment line lost"},
                  {"line": 0, "kind": "save", "text": "order of lines changes"}]},
    {"file": "bad.conf", "status": "failed", "new": [], "obsolete": [], "changed": [],
     "inactive": [], "series": {"new": [], "obsolete": []},
     "findings": [{"line": 2, "kind": "name", "text": ""}]},
    {"file": "new.conf", "status": "new", "new": [{"name": "n", "value": "é", "mandatory": true}],
     "obsolete": [], "changed": [], "inactive": [], "series": {"new": [], "obsolete": []},
     "findings": []}])");
  expected[1]["findings"][0]["text"] = At("dist/bad.conf") + ": Name don't allow spaces: npc: a b";
  EXPECT_EQ(Json::parse(out_), expected);
}

TEST_F(ConsoleTest, ReadingAsksNothingEndsAtNothingAndWritesNothing) {
  const std::pair<const char*, std::string> kFiles[] = {
      {"dist/a.conf", "rate: 1\nrate: 2\n//rate: 3\ngone: 0\n"},
      {"server/a.conf", "//rate: 4\n//gone: 0\ngone: 1\n"},
      {"dist/b.conf", std::string("\xFF\xFE"
                                  "b\0",
                                  4)},
      {"server/b.conf", "b: \xC3\xA9\n"},
      {"dist/c.conf",
       "\xEF\xBB\xBF"
       "c: caf\xC3\xA9\r\n"},
      {"server/c.conf", "c: caf\xE9\r\n"}};
  const auto time = std::filesystem::last_write_time(folder_ / "dist") - std::chrono::hours(1);
  for (const auto& [name, bytes] : kFiles) {
    Write(name, bytes);
    std::filesystem::last_write_time(folder_ / name, time);
  }
  std::filesystem::create_directory(folder_ / "dist/d.conf");
  for (const char* const answer : {"--yes", "--no"}) {
    EXPECT_EQ(Run({answer, "check", At("dist"), At("server"), "a.conf", "b.conf", "c.conf",
                   "no.conf", "dist/a.conf"}),
              kTrouble);
    EXPECT_EQ(err_, "");
    const std::string dist = At("dist/");
    const std::string server = At("server/");
    EXPECT_EQ(
        out_,
        "a.conf: 0 new (0 mandatory), 2 changed, 0 obsolete\n"
        "  changed  rate  4  (distribution: 1)\n"
        "  changed  gone  1  (distribution: 0)\n"
        "  note     " +
            dist +
            "a.conf, line 1: this is the first line that ends in a bare line feed\n"
            "  note     " +
            dist +
            "a.conf, line 2: the setting rate has been set before\n"
            "  note     " +
            server +
            "a.conf, line 1: this is the first line that ends in a bare line feed\n"
            "  save     1 now active\n"
            "  save     1 comment line lost\n"
            "  save     line ends become CR LF\n"
            "b.conf: could not be read\n"
            "  note     " +
            dist +
            "b.conf: This is UTF-16 text. Configuration files are UTF-8 or "
            "Windows-1252 text; please convert it.\n"
            "  note     " +
            server +
            "b.conf, line 1: the file is UTF-8 text\n"
            "  note     " +
            server +
            "b.conf, line 1: this is the first line that ends in a bare line feed\n"
            "c.conf: no differences\n"
            "  note     " +
            dist +
            "c.conf, line 1: the file is UTF-8 text\n"
            "no.conf: could not be read\n"
            "  note     " +
            dist + "no.conf: " + NoSuchFile() +
            "\n"
            "dist/a.conf: could not be read\n"
            "  note     dist/a.conf: FILE is a name without a folder; its folders are DIST_DIR and "
            "SERVER_DIR\n"
            "Sum of 5 files: 1 different, 0 new, 3 failed; settings: 0 new (0 mandatory), 2 "
            "changed, "
            "0 obsolete, 0 inactive\n");
  }
  EXPECT_EQ(Run({"check", At("dist"), At("server"), "--json"}), kTrouble);
  EXPECT_EQ(Json::parse(out_).size(), 3U);
  Run({"dump", At("dist/a.conf")});
  Run({"compare", At("dist/a.conf"), At("server/a.conf")});
  Merge({"--dry-run"});
  Merge({"--fix-line-ends", "--dry-run"});
  for (const auto& [name, bytes] : kFiles) {
    EXPECT_EQ(Read(name), bytes) << name;
    EXPECT_EQ(std::filesystem::last_write_time(folder_ / name), time) << name;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_ / "options.reg"));
  Run({"--fix-line-ends", "check", At("dist"), At("server"), "a.conf"});
  EXPECT_EQ(Read("server/a.conf"), "//rate: 4\r\n//gone: 0\r\ngone: 1\r\n");
}

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

TEST_F(ConsoleTest, CompareAndDumpPrintTrees) {
  EXPECT_EQ(Run({"compare", "--sort", At("dist/a.conf"), At("server/a.conf")}), kNothingToDo);
  const Json trees = Json::parse(out_);
  EXPECT_EQ(trees.size(), 6U);
  EXPECT_EQ(trees["NewFields"], Json::parse(R"([{"name":"extra","value":"8","parameters":[]},
                                                {"name":"fresh","value":"7","parameters":[]}])"));
  EXPECT_EQ(trees["ActualFields"][1]["value"], "150");
  EXPECT_EQ(trees["DeletedFields"][0]["name"], "old");
  EXPECT_EQ(trees["NewSeries"][0]["parameters"],
            Json::parse(R"([{"name":"Type","value":"npc"},{"name":"Disabled","value":"1"}])"));
  EXPECT_EQ(trees["ActualSeries"].size(), 3U);
  EXPECT_EQ(trees["DeletedSeries"].size(), 1U);
  EXPECT_EQ(Run({"compare", At("dist/a.conf"), At("missing")}), kTrouble);
  EXPECT_EQ(out_, "");

  EXPECT_EQ(Run({"dump", At("server/a.conf")}), kNothingToDo);
  EXPECT_EQ(Json::parse(out_)["settings"][0]["parameters"][0]["value"], "Mine\r\nrate: 150   high");
  EXPECT_EQ(Json::parse(out_)["series"].size(), 2U);

  Write("early.conf", "a: \xE9<\r\nnpc: x\r\nnpc: y z\r\n");
  EXPECT_EQ(Run({"dump", At("early.conf")}), kTrouble);
  EXPECT_EQ(Json::parse(out_)["settings"].size(), 1U);
  EXPECT_EQ(Run({"dump", "--xml", "settings", At("early.conf")}), kTrouble);
  EXPECT_EQ(out_,
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<xml>\r\n"
            "\t<a Comments=\"\" Disabled=\"1\">\xE9&lt;</a>\r\n</xml>\r\n");
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

TEST_F(ConsoleTest, MergeTreatsASettingThatStandsTwiceAsOne) {
  Write("dist/a.conf", "a: 1\r\n//a: 2\r\nb: 3\r\n");
  Write("server/a.conf", "a: 5\r\nb: 3\r\n");
  EXPECT_EQ(Merge({"--yes", "--set", "a=9", "--output", "-"}), kNothingToDo);
  EXPECT_EQ(out_, "a: 9\r\na: 9\r\nb: 3\r\n");
  EXPECT_EQ(Merge({"--yes", "--remove", "a", "--output", "-"}), kNothingToDo);
  EXPECT_EQ(out_, "b: 3\r\n");
}

TEST_F(ConsoleTest, TellsWhatATerminalOrALaterReadingWouldChange) {
  Write("server/a.conf", "a\x1B[2J\x9D: 1\r\na\x1B[2J\x9D: 2\r\n");
  EXPECT_EQ(Merge({}), kTrouble);
  EXPECT_THAT(err_, HasSubstr("Parameter a?[2J? is duplicated"));
  Write("server/a.conf", "rate: 1\r\n");
  EXPECT_EQ(Merge({"--set", "rate= http://x", "--output", "-"}), kNothingToDo);
  EXPECT_EQ(err_, "quenmarctl: --set rate: the value will be read back as \"http:\"\n");
  EXPECT_EQ(Merge({"--set", "rate=1 &lt; 2", "--output", "-"}), kNothingToDo);
  EXPECT_EQ(err_, "quenmarctl: --set rate: the value will be read back as \"1 < 2\"\n");
  EXPECT_EQ(Run({"--yes", "merge", At("dist"), At("dist"), "a.conf"}), kTrouble);
  EXPECT_THAT(err_, HasSubstr("Please, don't select the same folder."));
  EXPECT_EQ(Read("dist/a.conf"), kDistribution);
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

TEST_F(ConsoleTest, ADamagedRegistryFileCostsOneLine) {
  Write("options.reg", "no registry");
  EXPECT_EQ(Merge({}), kNothingToDo);
  EXPECT_EQ(Read("server/a.conf"), kMerged);
  EXPECT_THAT(err_, AllOf(StartsWith("quenmarctl: "), HasSubstr(": Saved!\n")));
  EXPECT_EQ(std::count(err_.begin(), err_.end(), '\n'), 3) << "one line, then the save's two";
  EXPECT_EQ(Read("options.reg"), "no registry");
}

}  // namespace
}  // namespace quenmar
