#include "compare/ReleaseChanges.h"

#include <gtest/gtest.h>

#include "Trees.h"
#include "conf/ConfReader.h"

namespace quenmar {
namespace {

using Kind = DefaultChange::Kind;

struct Read {
  explicit Read(const std::string& bytes) {
    EXPECT_TRUE(ReadQuietly({"x.conf", bytes}, Options(), settings, series));
  }
  Document settings;
  Document series;
};

std::string Shown(const ReleaseChanges& changes) {
  std::string text;
  for (const DefaultChange& change : changes.defaults) {
    text += (change.kind == Kind::kDefault ? "default " : "both ") + ToUtf8(change.name) + " " +
            ToUtf8(change.oldDefault) + ">" + ToUtf8(change.newDefault) + "(" +
            ToUtf8(change.actual) + ");";
  }
  for (const SeriesEntry& entry : changes.withdrawn) {
    text += ToUtf8(entry.type) + " " + ToUtf8(entry.name) + ";";
  }
  return text;
}

TEST(ReleaseChangesTest, FoundByThreeVersions) {
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      // The four rows.
      {"a: 1", "a: 1", "a: 1", ""},
      {"a: 1", "a: 1", "a: 9", ""},
      {"a: 1", "a: 2", "a: 1", "default a 1>2(1);"},
      {"a: 1", "a: 2", "a: 2", ""},
      {"a: 1", "a: 2", "a: 9", "both a 1>2(9);"},
      // Settings that appear and vanish.
      {"", "a: 2", "a: 9", ""},
      {"a: 1", "", "a: 1", ""},
      {"a: 1", "a: 2", "", ""},
      // Commented out and in: values alone count.
      {"//a: 1", "a: 1", "//a: 1", ""},
      {"a: 1", "//a: 1", "a: 1", ""},
      {"//a: 1", "a: 2", "a: 1", "default a 1>2(1);"},
      {"a: 1", "//a: 2", "//a: 1", "default a 1>2(1);"},
      // Empty values, remarks, letter case, and names in several lines.
      {"a:", "a: 2", "a:", "default a >2();"},
      {"a: 1", "a:", "a: 9", "both a 1>(9);"},
      {"a: 1 // old", "a: 1 // new", "a: 1", ""},
      {"a: x", "a: X", "a: x", "default a x>X(x);"},
      {"a: 1\n//a: 7", "a: 2\n//a: 8", "a: 1\n//a: 8", "default a 1>2(1);"},
      // Series entries.
      {"npc: x\nnpc: y\nnpc: z", "npc: y", "npc: x\nnpc: y\n//npc: z\nnpc: own", "npc x;"},
      {"//npc: x", "", "npc: x", "npc x;"},
      {"npc: x", "//npc: x", "npc: x", ""},
  };
  for (const auto& [old, now, server, found] : cases) {
    const Read newer(now);
    const Read actual(server);
    ConfNotes notes;
    const OldFile oldFile{ConfFile("old.conf", old)};
    const auto older = OldVersion::Read(oldFile, Options(), Language(), notes);
    ASSERT_TRUE(older && notes.reason.empty());
    EXPECT_EQ(Shown(FindReleaseChanges(*older, {newer.settings, newer.series},
                                       {actual.settings, actual.series})),
              found)
        << old << " | " << now << " | " << server;
  }
}

}  // namespace
}  // namespace quenmar
