// What every registry must do, run on each kind that the system at hand offers, and which is
// opened.
#include "registry/Registry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

#include "ScratchFolder.h"
#include "registry/FileRegistry.h"
#include "registry/OpenRegistry.h"
#include "text/Charset.h"
#ifdef _WIN32
#include <windows.h>

#include "registry/WinRegistry.h"
#endif

namespace quenmar {
namespace {

constexpr auto kUser = RegistryRoot::kCurrentUser;
constexpr StringView kParent = u"Software\\QuenmarTest";
constexpr StringView kKey = u"Software\\QuenmarTest\\Options";

struct FileStore {
  [[nodiscard]] std::unique_ptr<Registry> Open() const { return OpenRegistry(folder / "x.reg"); }
  ScratchFolder folder;
};

#ifdef _WIN32
struct WinStore {
  WinStore() { Clear(); }
  ~WinStore() { Clear(); }
  [[nodiscard]] std::unique_ptr<Registry> Open() const { return std::make_unique<WinRegistry>(); }
  static void Clear() { ::RegDeleteTreeA(HKEY_CURRENT_USER, ToUtf8(kParent).c_str()); }
};
using Stores = ::testing::Types<FileStore, WinStore>;
#else
using Stores = ::testing::Types<FileStore>;
#endif

template <typename Store>
struct RegistryTest : ::testing::Test {
  Store store_;
};
TYPED_TEST_SUITE(RegistryTest, Stores, );

TYPED_TEST(RegistryTest, ValuesComeBackAsTheyWereWritten) {
  const std::vector<String> texts = {
      u"",        u"C:\\Server\\conf\\", u"say \"hi\\\"",   u"  spaced\t", u"a;b=c",
      u"[x] - @", u"caf\u00E9 \u20AC",   String(3000, u'x')};
  const auto registry = this->store_.Open();
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Path", u"no such key"), u"no such key");
  for (const String& text : texts) {
    EXPECT_TRUE(registry->RegWriteString(kUser, kKey, u"Path", text)) << ToUtf8(text);
    EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Path", u"default"), text);
    EXPECT_EQ(this->store_.Open()->RegReadString(kUser, kKey, u"Path", u"default"), text);
  }
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Sort", u"no such name"), u"no such name");
  EXPECT_EQ(registry->ErrorText(), u"");
}

TYPED_TEST(RegistryTest, NamesAreFoundInAnyCaseAndKeptApart) {
  const auto registry = this->store_.Open();
  registry->RegWriteString(kUser, kKey, u"Sort", u"1");
  registry->RegWriteString(kUser, kKey, u"", u"of the key");
  registry->RegWriteString(kUser, kKey, u"with \"quotes\"\\", u"2");
  registry->RegWriteString(kUser, kParent, u"Sort", u"parent");
  EXPECT_TRUE(registry->RegWriteString(kUser, u"SOFTWARE\\quenmartest\\OPTIONS", u"SORT", u"3"));
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"sort"), u"3");
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u""), u"of the key");
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"With \"Quotes\"\\"), u"2");
  EXPECT_EQ(registry->RegReadString(kUser, kParent, u"Sort"), u"parent");
  EXPECT_EQ(registry->RegReadString(RegistryRoot::kLocalMachine, kKey, u"Sort"), u"");
}

#ifdef _WIN32
TEST(WinRegistryTest, StoresOnlyWhatTheCodePageHasUpToTheFirstNul) {
  const WinStore store;
  const auto registry = store.Open();
  const DWORD one = 1;
  ::RegSetKeyValueA(HKEY_CURRENT_USER, ToUtf8(kKey).c_str(), "Path", REG_DWORD, &one, sizeof one);
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Path", u"a number"), u"a number");
  EXPECT_TRUE(registry->RegWriteString(kUser, kKey, u"Path", String(u"a\0b", 3)));
  EXPECT_FALSE(registry->RegWriteString(kUser, kKey, u"Path", u"half a pair \xD83D"));
  if (::GetACP() == 1252) {
    EXPECT_FALSE(registry->RegWriteString(kUser, kKey, u"Path", u"looks like an A: \u0100"));
  }
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Path"), u"a");
}
#endif

/// @return whether the registry that is opened takes a value and keeps it in the file `place`.
bool WritesTo(const std::optional<Path>& given, const Path& place) {
  return OpenRegistry(given)->RegWriteString(kUser, kKey, u"x", u"1") &&
         std::filesystem::remove(place);
}

TEST(OpenRegistryTest, TakesTheFirstFileThatIsNamed) {
  const ScratchFolder folder;
  SetVariable("QUENMAR_REGISTRY", folder / "named.reg");
  EXPECT_TRUE(WritesTo(folder / "given.reg", folder / "given.reg"));
  EXPECT_TRUE(WritesTo({}, folder / "named.reg"));
  SetVariable("QUENMAR_REGISTRY", "");
#ifndef _WIN32
  const Path own = "quenmar/registry.reg", inHome = folder / "home/.config" / own;
  SetVariable("HOME", folder / "home");
  for (const auto& [config, place] : {std::pair(folder / "config", folder / "config" / own),
                                      {"", inHome},
                                      {"relative", inHome}}) {
    SetVariable("XDG_CONFIG_HOME", config);
    EXPECT_TRUE(WritesTo({}, place)) << config;
  }
  SetVariable("HOME", "");
  EXPECT_FALSE(WritesTo({}, inHome));
#endif
}

}  // namespace
}  // namespace quenmar
