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

 private:
  void Set(const std::string& value) const {
#ifdef _WIN32
    ::_putenv_s(name_, value.c_str());
#else
    ::setenv(name_, value.c_str(), 1);
#endif
  }

  const char* name_;
  std::optional<std::string> before_;
};

TEST(OpenRegistryTest, TheFirstPlaceThatIsNamedCounts) {
  const ScratchFolder folder;
  const auto writesTo = [](const std::optional<Path>& given, const Path& place) {
    const auto registry = OpenRegistry(given);
    return registry->RegWriteString(RegistryRoot::kCurrentUser, u"Software\\Quenmar", u"x", u"1") &&
           std::filesystem::remove(place);
  };
  const Path named = folder / "named.reg";
  const Variable variable("QUENMAR_REGISTRY", named);
  EXPECT_TRUE(writesTo(folder / "given.reg", folder / "given.reg"));
  EXPECT_TRUE(writesTo(std::nullopt, named));
#ifndef _WIN32
  const Variable unnamed("QUENMAR_REGISTRY", "");
  const Variable home("HOME", folder / "home");
  const Path inHome = folder / "home" / ".config" / "quenmar" / "registry.reg";
  {
    const Variable config("XDG_CONFIG_HOME", folder / "config");
    EXPECT_TRUE(writesTo(std::nullopt, folder / "config" / "quenmar" / "registry.reg"));
  }
  for (const char* const ignored : {"", "relative"}) {
    const Variable config("XDG_CONFIG_HOME", ignored);
    EXPECT_TRUE(writesTo(std::nullopt, inHome)) << ignored;
  }
  const Variable config("XDG_CONFIG_HOME", "");
  const Variable homeless("HOME", "");
  EXPECT_FALSE(OpenRegistry(std::nullopt)
                   ->RegWriteString(RegistryRoot::kCurrentUser, u"Software\\Quenmar", u"x", u"1"));
#endif
}

}  // namespace
}  // namespace quenmar
