// What every registry must do, run on each kind that the system at hand offers.
#include "registry/Registry.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "files/Files.h"
#include "registry/FileRegistry.h"
#include "text/Charset.h"
#ifdef _WIN32
#include <windows.h>

#include "registry/WinRegistry.h"
#endif

namespace quenmar {
namespace {

constexpr auto kUser = RegistryRoot::kCurrentUser;
constexpr StringView kKey = u"Software\\QuenmarTest\\Options";

class FileStore {
 public:
  [[nodiscard]] std::unique_ptr<Registry> Open() const {
    return std::make_unique<FileRegistry>(folder_ / "registry.reg");
  }
  void PlantNumber(StringView name) const {
    const std::string key = ToUtf8(kKey);
    ReplaceBytes(folder_ / "registry.reg", "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\" + key +
                                               "]\r\n\"" + ToUtf8(name) + "\"=dword:00000001\r\n");
  }

 private:
  ScratchFolder folder_;
};

#ifdef _WIN32
class WinStore {
 public:
  WinStore() { Clear(); }
  WinStore(const WinStore&) = delete;
  WinStore& operator=(const WinStore&) = delete;
  ~WinStore() { Clear(); }

  [[nodiscard]] std::unique_ptr<Registry> Open() const { return std::make_unique<WinRegistry>(); }
  void PlantNumber(StringView name) const {
    const DWORD one = 1;
    ::RegSetKeyValueA(HKEY_CURRENT_USER, ToUtf8(kKey).c_str(), ToUtf8(name).c_str(), REG_DWORD,
                      &one, sizeof one);
  }

 private:
  static void Clear() { ::RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\QuenmarTest"); }
};
using Stores = ::testing::Types<FileStore, WinStore>;
#else
using Stores = ::testing::Types<FileStore>;
#endif

template <typename Store>
class RegistryTest : public ::testing::Test {
 protected:
  Store store_;
};
TYPED_TEST_SUITE(RegistryTest, Stores, );

TYPED_TEST(RegistryTest, WhatIsMissingReadsAsTheDefault) {
  const auto registry = this->store_.Open();
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Sort"), u"");
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Sort", u"0"), u"0");
  registry->RegWriteString(kUser, kKey, u"Other", u"x");
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Sort", u"0"), u"0");
  EXPECT_EQ(registry->Trouble(), u"");
}

TYPED_TEST(RegistryTest, ValuesComeBackAsTheyWereWritten) {
  const std::vector<String> texts = {
      u"",        u"C:\\Server\\conf\\", u"say \"hi\\\"",   u"  spaced\t", u"a;b=c",
      u"[x] - @", u"caf\u00E9 \u20AC",   String(3000, u'x')};
  const auto registry = this->store_.Open();
  for (const String& text : texts) {
    EXPECT_TRUE(registry->RegWriteString(kUser, kKey, u"Path", text)) << ToUtf8(text);
    EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Path", u"default"), text);
    EXPECT_EQ(this->store_.Open()->RegReadString(kUser, kKey, u"Path", u"default"), text);
  }
}

TYPED_TEST(RegistryTest, NamesAreFoundInAnyCaseAndKeptApart) {
  const auto registry = this->store_.Open();
  registry->RegWriteString(kUser, kKey, u"Sort", u"1");
  registry->RegWriteString(kUser, kKey, u"", u"of the key");
  registry->RegWriteString(kUser, kKey, u"with \"quotes\"\\", u"2");
  registry->RegWriteString(kUser, u"Software\\QuenmarTest", u"Sort", u"parent");
  EXPECT_TRUE(registry->RegWriteString(kUser, u"SOFTWARE\\quenmartest\\OPTIONS", u"SORT", u"3"));
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"sort"), u"3");
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u""), u"of the key");
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"With \"Quotes\"\\"), u"2");
  EXPECT_EQ(registry->RegReadString(kUser, u"Software\\QuenmarTest", u"Sort"), u"parent");
  EXPECT_EQ(registry->RegReadString(RegistryRoot::kLocalMachine, kKey, u"Sort"), u"");
}

TYPED_TEST(RegistryTest, NumbersReadAsMissingAndGiveWayToText) {
  this->store_.PlantNumber(u"Sort");
  const auto registry = this->store_.Open();
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Sort", u"default"), u"default");
  EXPECT_TRUE(registry->RegWriteString(kUser, kKey, u"Sort", u"1"));
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Sort", u"default"), u"1");
}

#ifdef _WIN32
TEST(WinRegistryTest, StoresOnlyWhatTheCodePageHas) {
  const WinStore store;
  const auto registry = store.Open();
  registry->RegWriteString(kUser, kKey, u"Path", u"before");
  EXPECT_FALSE(registry->RegWriteString(kUser, kKey, u"Path", u"half a pair \xD83D"));
  if (::GetACP() == 1252) {
    EXPECT_FALSE(registry->RegWriteString(kUser, kKey, u"Path", u"looks like an A: \u0100"));
  }
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Path"), u"before");
}

TEST(WinRegistryTest, TextEndsAtTheFirstNul) {
  const WinStore store;
  const auto registry = store.Open();
  EXPECT_TRUE(registry->RegWriteString(kUser, kKey, u"Path", String(u"a\0b", 3)));
  EXPECT_EQ(registry->RegReadString(kUser, kKey, u"Path"), u"a");
}
#endif

}  // namespace
}  // namespace quenmar
