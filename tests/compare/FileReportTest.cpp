#include "compare/FileReport.h"

#include <gtest/gtest.h>

#include <string>

#include "ScratchFolder.h"
#include "Trees.h"

namespace quenmar {
namespace {

TEST(FileReportTest, SaysWhatAFileNeedsAndWhatIsOddInIt) {
  using enum FileStatus;
  const std::tuple<const char*, const char*, FileStatus, bool, const char*> cases[] = {
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
  for (const auto& [distribution, server, status, needsWork, expected] : cases) {
    const ScratchFolder scratch;
    for (const char* name : {"dist", "conf"}) std::filesystem::create_directory(scratch / name);
    WriteFile(scratch / "dist/a.conf", distribution);
    if (server != nullptr) WriteFile(scratch / "conf/a.conf", server);
    const FileReport report = FileReport::Of(scratch / "dist", scratch / "conf", "a.conf", {}, {},
                                             ConfReader::BareLineFeeds::kEndLines);
    std::string oddities;
    for (const String& oddity : report.Oddities({})) {
      oddities += (oddities.empty() ? "" : "; ") + ToUtf8(oddity);
    }
    EXPECT_EQ(report.status, status) << distribution << (server != nullptr ? server : "");
    EXPECT_EQ(report.NeedsWork(), needsWork);
    EXPECT_EQ(oddities, expected);
  }
}

TEST(FileReportTest, NewEntriesAreNoWorkWhereASaveNeverAddsThem) {
  const ScratchFolder scratch;
  for (const char* name : {"dist", "conf"}) std::filesystem::create_directory(scratch / name);
  WriteFile(scratch / "dist/a.conf", "a: 1\r\nnpc: x\r\n");
  WriteFile(scratch / "conf/a.conf", "a: 1\r\n");
  for (const bool added : {true, false}) {
    Options options;
    options.saveCommentedSeries = added;
    const FileReport report = FileReport::Of(scratch / "dist", scratch / "conf", "a.conf", options,
                                             {}, ConfReader::BareLineFeeds::kEndLines);
    EXPECT_EQ(report.newSeries.size(), 1U);
    EXPECT_EQ(report.NeedsWork(), added);
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
