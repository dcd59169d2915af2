#include "compare/FileReport.h"

#include <gtest/gtest.h>

#include <string>

#include "ScratchFolder.h"
#include "Trees.h"

namespace quenmar {
namespace {

struct Case {
  const char* distribution;
  const char* server;  ///< null: the server lacks the file
  FileStatus status;
  bool needsWork;
  const char* oddities;
};

TEST(FileReportTest, TellsWhatAFileNeedsAndWhatIsOddInIt) {
  using enum FileStatus;
  const std::initializer_list<Case> cases = {
      {"a: 1\r\n", "a: 1\r\n", kSame, false, ""},
      {"a: 1\r\n", "a: 2\r\n", kDifferent, false, ""},
      {"a: 1\r\n", "a: 1\r\nnpc: own\r\n", kDifferent, false, ""},
      {"a: 1\r\nnpc: x\r\n", "a: 1\r\n", kDifferent, true, ""},
      {"a: 1\r\n//b: 2\r\n", "a: 1\r\n", kDifferent, true, ""},
      {"a: 1\r\n", "a: 1\r\nb: 2\r\n", kDifferent, true, ""},
      {"a: 1\r\n", "//a: 1\r\n", kDifferent, true, ""},
      {"a: 1\r\n", nullptr, kNew, true, ""},
      {"a: 1\n", "a: 1\n", kSame, false, "line feeds"},
      {"a: 1\r\n", "// \xC3\xA4\r\na: 1\r\n", kSame, false, "text in UTF-8"},
      {"a: 1\r\n", "\xEF\xBB\xBF// \xC3\xA4\r\n// \xE4\r\na: 1\r\n", kSame, true,
       "text in UTF-8; bytes that are no text"},
      {"a: 1\r\nb: 1\r\n", "a: 1\r\nb: 1\r\nb: 1\r\na: 1\nb: 1\r\n", kSame, true,
       "line feeds; duplicates: b, a"},
  };
  const ScratchFolder scratch;
  std::filesystem::create_directory(scratch / "dist");
  std::filesystem::create_directory(scratch / "conf");
  for (const Case& tested : cases) {
    SCOPED_TRACE(std::string(tested.distribution) + "->\n" +
                 (tested.server != nullptr ? tested.server : "(none)"));
    std::filesystem::remove(scratch / "conf/a.conf");
    WriteFile(scratch / "dist/a.conf", tested.distribution);
    if (tested.server != nullptr) WriteFile(scratch / "conf/a.conf", tested.server);
    const FileReport report = FileReport::Of(scratch / "dist", scratch / "conf", "a.conf", {}, {},
                                             ConfReader::BareLineFeeds::kEndLines);
    std::string oddities;
    for (const String& oddity : report.Oddities({})) {
      oddities += (oddities.empty() ? "" : "; ") + ToUtf8(oddity);
    }
    EXPECT_EQ(report.status, tested.status);
    EXPECT_EQ(report.NeedsWork(), tested.needsWork);
    EXPECT_EQ(oddities, tested.oddities);
  }
}

TEST(FileReportTest, AFileThatCannotBeReadSaysWhy) {
  const ScratchFolder scratch;
  WriteFile(scratch / "x.conf", "a: 1\r\n");
  std::filesystem::create_directories(scratch / "conf/x.conf");
  const FileReport report = FileReport::Of(scratch.Folder(), scratch / "conf", "x.conf", {}, {},
                                           ConfReader::BareLineFeeds::kEndLines);
  EXPECT_EQ(report.status, FileStatus::kFailed);
  EXPECT_TRUE(report.NeedsWork());
  ASSERT_EQ(report.Oddities({}).size(), 1U);
  EXPECT_FALSE(report.Oddities({}).front().empty());
}

}  // namespace
}  // namespace quenmar
