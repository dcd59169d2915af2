#include "registry/Options.h"

#include <gtest/gtest.h>

#include <string>

#include "ScratchFolder.h"
#include "registry/FileRegistry.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

/// @return a registry file with the values of the options, from "name=text|name=text".
std::string File(StringView values) {
  String lines = u"REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n";
  for (const StringView value : Split(values, u'|')) {
    lines += u"\"" + ReplaceAll(value, u"=", u"\"=\"") + u"\"\r\n";
  }
  return ToUtf8(lines);
}

String Shown(const Options& options) {
  return options.svnPath + u" " + options.serverPath + u" " + ToText(options.sort) + u" " +
         options.series + (options.saveCommentedSeries ? u" save" : u"") +
         (options.alwaysIgnoreDupParam ? u" ignore" : u"");
}

TEST(OptionsTest, SwitchesThatAreMissingOrEmptyAreStored) {
  const std::tuple<StringView, StringView, StringView> cases[] = {
      {u"Sort=1x|Series=",
       u"Sort=1x|Series={map}{npc}{addon}{import}|SaveCommentedSeries=1|AlwaysIgnoreDupParam=0",
       u"  0 {map}{npc}{addon}{import} save"},
      {u"SVNPath=/a|ServerPath=/b|Sort=1|Series={map}|SaveCommentedSeries=y|AlwaysIgnoreDupParam=y",
       u"", u"/a /b 1 {map}"},
      {u"Series={x}|SaveCommentedSeries=1|AlwaysIgnoreDupParam=1", u"", u"  0 {x} save ignore"},
  };
  const ScratchFolder folder;
  const Path file = folder / "registry.reg";
  for (const auto& [stored, after, options] : cases) {
    ReplaceBytes(file, File(stored));
    FileRegistry registry(file);
    EXPECT_EQ(Shown(LoadOptions(registry)), options);
    EXPECT_EQ(ReadBytes(file), File(after.empty() ? stored : after));
  }
}

TEST(OptionsTest, WhatTheUserChangesIsThereTheNextTime) {
  const ScratchFolder folder;
  FileRegistry registry(folder / "registry.reg");
  EXPECT_TRUE(StoreSvnPath(registry, u"\\\\host\\share\\conf-dist"));
  EXPECT_TRUE(StoreServerPath(registry, u"D:\\conf"));
  EXPECT_TRUE(StoreSort(registry, 1));
  const Options options = ReadOptions(FileRegistry(folder / "registry.reg"));
  EXPECT_TRUE(options.IsSorted(Layout::kSettings));
  EXPECT_FALSE(options.IsSorted(Layout::kServer)) << "the lines keep their order";
  EXPECT_EQ(Shown(options),
            u"\\\\host\\share\\conf-dist D:\\conf 1 {map}{npc}{addon}{import} save");
}

}  // namespace
}  // namespace quenmar
