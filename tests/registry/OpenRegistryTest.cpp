#include "registry/OpenRegistry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "ScratchFolder.h"

namespace quenmar {
namespace {

/// Sets an environment variable for as long as it lives.
class Variable {
 public:
  Variable(const char* name, const Path& value) : name_(name) {
    if (const char* const before = std::getenv(name)) before_ = before;
    Set(value.string());
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() {
    Set(before_.value_or(""));
#ifndef _WIN32
    if (!before_) ::unsetenv(name_);
#endif
  }

  void Set(const std::string& value) const {
#ifdef _WIN32
    ::_putenv_s(name_, value.c_str());
#else
    ::setenv(name_, value.c_str(), 1);
#endif
  }

 private:
  const char* name_;
  std::optional<std::string> before_;
};

/// @return whether the registry that is opened takes a value and keeps it in the file `place`.
bool WritesTo(const std::optional<Path>& given, const Path& place) {
  const auto registry = OpenRegistry(given);
  return registry->RegWriteString(RegistryRoot::kCurrentUser, u"Software\\Quenmar", u"x", u"1") &&
         std::filesystem::remove(place);
}

TEST(OpenRegistryTest, AGivenFileComesBeforeTheVariable) {
  const ScratchFolder folder;
  const Variable named("QUENMAR_REGISTRY", folder / "named.reg");
  EXPECT_TRUE(WritesTo(folder / "given.reg", folder / "given.reg"));
  EXPECT_TRUE(WritesTo(std::nullopt, folder / "named.reg"));
}

#ifndef _WIN32
TEST(OpenRegistryTest, TheUsersOwnFileFollowsTheConfigurationFolder) {
  const ScratchFolder folder;
  const Path file = Path("quenmar") / "registry.reg";
  const Path inHome = folder / "home" / ".config" / file;
  const Variable unnamed("QUENMAR_REGISTRY", "");
  const Variable home("HOME", folder / "home");
  const Variable config("XDG_CONFIG_HOME", folder / "config");
  EXPECT_TRUE(WritesTo(std::nullopt, folder / "config" / file));
  config.Set("");
  EXPECT_TRUE(WritesTo(std::nullopt, inHome));
  config.Set("relative");
  EXPECT_TRUE(WritesTo(std::nullopt, inHome));
  const Variable homeless("HOME", "");
  EXPECT_FALSE(WritesTo(std::nullopt, inHome));
}
#endif

}  // namespace
}  // namespace quenmar
