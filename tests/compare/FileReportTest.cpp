#include "compare/FileReport.h"

#include <gtest/gtest.h>

#include <string>

#include "ScratchFolder.h"
#include "Trees.h"

namespace quenmar {
namespace {

/// @param server `nullptr` where the server lacks the file
FileReport ReportOf(const char* distribution, const char* server, const Options& options = {}) {
  const ScratchFolder scratch;
  WriteFile(scratch / "dist/a.conf", distribution);
  if (server != nullptr) WriteFile(scratch / "conf/a.conf", server);
  return FileReport::Of(scratch / "dist", scratch / "conf", "a.conf", options, {},
                        ConfReader::BareLineFeeds::kEndLines);
}

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
      {"a: 1\r\n", "\xFF\xFE", kFailed, true,
       "This is UTF-16 text. Configuration files are UTF-8 or Windows-1252 text; please convert "
       "it."},
  };
  for (const auto& [distribution, server, status, needsWork, expected] : cases) {
    const FileReport report = ReportOf(distribution, server);
    std::string remarks;
    for (const String& remark : report.Remarks({})) {
      remarks += (remarks.empty() ? "" : "; ") + ToUtf8(remark);
    }
    EXPECT_EQ(report.status, status) << distribution << (server != nullptr ? server : "");
    EXPECT_EQ(report.NeedsWork(), needsWork);
    EXPECT_EQ(remarks, expected);
  }
}

TEST(FileReportTest, NewEntriesAreNoWorkWhereASaveNeverAddsThem) {
  Options options;
  options.saveCommentedSeries = false;
  const FileReport report = ReportOf("a: 1\r\nnpc: x\r\n", "a: 1\r\n", options);
  EXPECT_EQ(report.newSeries.size(), 1U);
  EXPECT_FALSE(report.NeedsWork());
}

}  // namespace
}  // namespace quenmar
