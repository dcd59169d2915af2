#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/ConsoleFixture.h"

namespace quenmar {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Json = nlohmann::json;

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
  EXPECT_EQ(Run({"compare", At("dist/a.conf"), At("missing")}), kFailure);
  EXPECT_EQ(out_, "");

  EXPECT_EQ(Run({"dump", At("server/a.conf")}), kNothingToDo);
  EXPECT_EQ(Json::parse(out_)["settings"][0]["parameters"][0]["value"], "Mine\r\nrate: 150   high");
  EXPECT_EQ(Json::parse(out_)["series"].size(), 2U);

  Write("early.conf", "a: \xE9<\r\nnpc: x\r\nnpc: y z\r\n");
  EXPECT_EQ(Run({"dump", At("early.conf")}), kFailure);
  EXPECT_EQ(Json::parse(out_)["settings"].size(), 1U);
  EXPECT_EQ(Run({"dump", "--xml", "settings", At("early.conf")}), kFailure);
  EXPECT_EQ(out_,
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<xml>\r\n"
            "\t<a Comments=\"\" Disabled=\"1\">\xE9&lt;</a>\r\n</xml>\r\n");
}

TEST_F(ConsoleTest, DumpEscapesTextAsJsonDoes) {
  std::string text = "\"\\\x7F\xC2\x80\xF0\x9F\x98\x80\xED\xA0\x80\xFF";
  for (char control = 0x1F; control >= 0; --control) {
    if (control != '\r' && control != '\n' && control != '\t') text += control;
  }
  // A comment line and a value; the long one does not fit any buffer.
  Write("all.conf",
        "\xEF\xBB\xBF// " + text + "\r\na\tb: " + text + std::string(40000, 'x') + "\r\n");
  EXPECT_EQ(Run({"dump", At("all.conf")}), kNothingToDo);
  const auto field = nlohmann::ordered_json::parse(out_)["settings"][0];
  EXPECT_TRUE(out_.find("\n " + field.dump() + "]") != std::string::npos);
  EXPECT_THAT(field["value"], HasSubstr("\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD"));
}

TEST_F(ConsoleTest, ShowsWhatATerminalOrALaterReadingWouldChange) {
  Write("server/a.conf", "a\x1B[2J\x9D: 1\r\na\x1B[2J\x9D: 2\r\n");
  EXPECT_THAT(MergeFailure({}), HasSubstr("Parameter a?[2J? is duplicated"));
  Write("server/a.conf", "rate: 1\r\n");
  EXPECT_EQ(Merge({"--set", "rate= http://x &lt;", "--output", "-"}), kNothingToDo);
  EXPECT_EQ(err_, "quenmarctl: --set rate: the value will be read back as \"http:\"\n");
  EXPECT_EQ(Run({"merge", At("dist"), At("dist"), "a.conf"}), kFailure);
  EXPECT_THAT(err_, HasSubstr("Please, don't select the same folder."));
  EXPECT_EQ(Read("dist/a.conf"), kDistribution);
}

TEST_F(ConsoleTest, TextsComeFromTheRegistry) {
  Write("options.reg",
        "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Language]\r\n"
        "\"LNG41\"=\"Guardado\"\r\n\"LNG50\"=\"\"\r\n");
  EXPECT_THAT(MergeFailure({"--set", "rate=\xD0\x96"}), Not(HasSubstr("unchanged")));
  EXPECT_EQ(Merge({}), kNothingToDo);
  EXPECT_THAT(err_, HasSubstr(": Guardado\n"));
}

TEST_F(ConsoleTest, ADamagedRegistryFileCostsOneLine) {
  Write("options.reg", "no registry");
  EXPECT_EQ(Merge({}), kNothingToDo);
  EXPECT_EQ(Read("server/a.conf"), kMerged);
  EXPECT_THAT(err_, AllOf(StartsWith("quenmarctl: "), HasSubstr(": Saved!\n")));
  EXPECT_EQ(std::count(err_.begin(), err_.end(), '\n'), 3) << "one line, then the save's two";
  EXPECT_EQ(Read("options.reg"), "no registry");
}

TEST_F(ConsoleTest, OutputThatCannotBeWrittenIsAFailure) {
  std::istringstream in;
  std::ostringstream out, err;
  out.setstate(std::ios::badbit);
  EXPECT_EQ(
      RunConsole({"--registry", At("options.reg"), "dump", At("server/a.conf")}, {in, out, err}),
      kFailure);
  EXPECT_EQ(err.str(), "quenmarctl: the output could not be written\n");
}

}  // namespace
}  // namespace quenmar
