/// Full disks and missing rights, as POSIX systems have them.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>

namespace quenmar {

/// Lets no file grow beyond `most` bytes. @return the limits until now.
inline rlimit LimitFileSize(rlim_t most) {
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit tight{most, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &tight);
  return before;
}

/// @return what the action returns where no file may grow beyond `most` bytes, as on a full disk.
template <class Action>
auto OnFullDisk(rlim_t most, const Action& action) {
  const rlimit before = LimitFileSize(most);
  const auto result = action();
  ::setrlimit(RLIMIT_FSIZE, &before);
  return result;
}

inline uid_t OrdinaryUser() { return ::getuid() == 0 ? 65534 : ::getuid(); }

/// @return what the action returns without the administrator's rights.
template <class Action>
auto AsUser(const Action& action) {
  EXPECT_EQ(::seteuid(OrdinaryUser()), 0);
  const auto result = action();
  EXPECT_EQ(::seteuid(::getuid()), 0);
  return result;
}

/// @return what the action returns as an ordinary user who may not add or remove files in a folder.
template <class Action>
auto InLockedFolder(const std::filesystem::path& folder, const Action& action) {
  std::filesystem::permissions(folder, std::filesystem::perms{0555});
  const auto result = AsUser(action);
  std::filesystem::permissions(folder, std::filesystem::perms{0777});
  return result;
}

}  // namespace quenmar
