#include "registry/Options.h"

#include <gtest/gtest.h>

#include <string>

#include "ScratchFolder.h"
#include "registry/FileRegistry.h"

namespace quenmar {
namespace {

const std::string kHead = "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n";

class OptionsTest : public ::testing::Test {
 protected:
  Options Load(const std::string& values) {
    ReplaceBytes(file_, kHead + values);
    FileRegistry registry(file_);
    return LoadOptions(registry);
  }

  ScratchFolder folder_;
  Path file_ = folder_ / "registry.reg";
};

TEST_F(OptionsTest, AnEmptyStoreGetsTheThreeSwitchesOnly) {
  FileRegistry registry(file_);
  const Options options = LoadOptions(registry);
  EXPECT_EQ(options.svnPath, u"");
  EXPECT_EQ(options.serverPath, u"");
  EXPECT_FALSE(options.IsSorted());
  EXPECT_EQ(options.series, u"{map}{npc}{addon}{import}");
  EXPECT_TRUE(options.saveCommentedSeries);
  EXPECT_FALSE(options.alwaysIgnoreDupParam);
  EXPECT_EQ(ReadBytes(file_), kHead +
                                  "\"SaveCommentedSeries\"=\"1\"\r\n"
                                  "\"AlwaysIgnoreDupParam\"=\"0\"\r\n"
                                  "\"Series\"=\"{map}{npc}{addon}{import}\"\r\n");
}

TEST_F(OptionsTest, StoredValuesAreTakenAndNotRewritten) {
  const std::string values =
      "\"SVNPath\"=\"C:\\\\svn\"\r\n\"ServerPath\"=\"/srv/conf\"\r\n\"Sort\"=\"1\"\r\n"
      "\"Series\"=\"{map}\"\r\n\"SaveCommentedSeries\"=\"yes\"\r\n"
      "\"AlwaysIgnoreDupParam\"=\"yes\"\r\n";
  const Options options = Load(values);
  EXPECT_EQ(options.svnPath, u"C:\\svn");
  EXPECT_EQ(options.serverPath, u"/srv/conf");
  EXPECT_TRUE(options.IsSorted());
  EXPECT_EQ(options.series, u"{map}");
  EXPECT_FALSE(options.saveCommentedSeries);
  EXPECT_FALSE(options.alwaysIgnoreDupParam);
  EXPECT_EQ(ReadBytes(file_), kHead + values);
}

TEST_F(OptionsTest, EmptyValuesCountAsMissing) {
  Load("\"Series\"=\"\"\r\n\"SaveCommentedSeries\"=\"\"\r\n\"AlwaysIgnoreDupParam\"=\"\"\r\n");
  EXPECT_EQ(ReadBytes(file_), kHead +
                                  "\"Series\"=\"{map}{npc}{addon}{import}\"\r\n"
                                  "\"SaveCommentedSeries\"=\"1\"\r\n"
                                  "\"AlwaysIgnoreDupParam\"=\"0\"\r\n");
}

TEST_F(OptionsTest, OddTextsAreFalseAndUnchecked) {
  EXPECT_TRUE(Load("\"AlwaysIgnoreDupParam\"=\"1\"").alwaysIgnoreDupParam);
  for (const char* const text : {"true", " 1", "01", "-1"}) {
    const std::string quoted = std::string("\"") + text + "\"";
    EXPECT_FALSE(Load("\"AlwaysIgnoreDupParam\"=" + quoted).alwaysIgnoreDupParam) << text;
  }
  for (const char* const text : {"\"abc\"", "\"\"", "\"1x\"", "dword:00000001"}) {
    EXPECT_EQ(Load(std::string("\"Sort\"=") + text).sort, 0) << text;
  }
}

TEST_F(OptionsTest, WhatTheUserChangesIsThereTheNextTime) {
  FileRegistry registry(file_);
  EXPECT_TRUE(StoreSvnPath(registry, u"\\\\host\\share\\conf-dist"));
  EXPECT_TRUE(StoreServerPath(registry, u"D:\\conf"));
  EXPECT_TRUE(StoreSort(registry, 1));
  FileRegistry next(file_);
  const Options options = LoadOptions(next);
  EXPECT_EQ(options.svnPath, u"\\\\host\\share\\conf-dist");
  EXPECT_EQ(options.serverPath, u"D:\\conf");
  EXPECT_TRUE(options.IsSorted());
}

}  // namespace
}  // namespace quenmar
