#include "compare/Renames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/Charset.h"

namespace quenmar {
namespace {

using Settings = std::vector<String>;

/// Adds "name=value" pairs.
void Fill(Document& tree, const Settings& settings) {
  for (const String& setting : settings) {
    const size_t sign = setting.find(u'=');
    tree.Fields().AddField(setting.substr(0, sign), setting.substr(sign + 1));
  }
}

std::map<String, String> RenamesOf(const Settings& newOnes, const Settings& oldOnes) {
  Document fresh, obsolete;
  Fill(fresh, newOnes);
  Fill(obsolete, oldOnes);
  return FindRenames(fresh, obsolete);
}

TEST(RenamesTest, PairsSettingsThatAreNearlyTheSame) {
  const std::tuple<const char*, Settings, Settings, std::map<String, String>> cases[] = {
      {"case, whatever the value", {u"net_Port=1"}, {u"Net_port=2"}, {{u"net_Port", u"Net_port"}}},
      {"letter replaced", {u"log_path=x"}, {u"log_pith=x"}, {{u"log_path", u"log_pith"}}},
      {"letters put in", {u"log_paths=x"}, {u"lg_path=x"}, {{u"log_paths", u"lg_path"}}},
      {"letters swapped", {u"log_path=x"}, {u"lgo_path=x"}, {{u"log_path", u"lgo_path"}}},
      {"two at the end", {u"log=x"}, {u"log_a=x"}, {{u"log", u"log_a"}}},
      {"other value", {u"log_path=x"}, {u"log_pith=y"}, {}},
      {"three letters", {u"log_path=x"}, {u"log_bits=x", u"log=x", u"log_pabctgh=x"}, {}},
      {"nothing in common", {u"a=1", u"ab=1"}, {u"b=1", u"cd=1"}, {{u"ab", u"b"}}},
      {"closest first",
       {u"rate_a=1", u"rate_b=1", u"RATE=1"},
       {u"rate_bx=1", u"rate=1", u"rate_xy=1"},
       {{u"rate_a", u"rate_xy"}, {u"rate_b", u"rate_bx"}, {u"RATE", u"rate"}}},
      {"one for two", {u"max_a=1", u"max_b=1"}, {u"max_c=1"}, {{u"max_a", u"max_c"}}},
      {"doubled", {u"max_a=1", u"max_a=1"}, {u"max_c=1", u"max_c=1"}, {{u"max_a", u"max_c"}}},
  };
  for (const auto& [what, newOnes, oldOnes, pairs] : cases) {
    EXPECT_EQ(RenamesOf(newOnes, oldOnes), pairs) << what;
  }
}

}  // namespace
}  // namespace quenmar
