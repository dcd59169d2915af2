// Saves that are killed at a random moment, as POSIX systems do it.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <random>
#include <thread>

#include "ScratchFolder.h"
#include "files/Files.h"

namespace quenmar {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

enum Content : char { kMissing = '-', kBroken = '?', kOld = 'o', kNew = 'n' };

/// In memory, which is faster, unless the user names a place: it is no disk that is tested here.
Path Place() {
  const bool free = std::getenv("TMPDIR") == nullptr && fs::is_directory("/dev/shm");
  return free ? Path("/dev/shm") : fs::temp_directory_path();
}

/// Saves a large file again and again, in a process that is killed at a random moment.
class KilledSave : public ::testing::TestWithParam<bool> {
 protected:
  [[nodiscard]] Content ContentOf(const Path& file) const {
    if (!fs::exists(file)) return kMissing;
    const std::string bytes = ReadBytes(file);
    if (bytes == old_) return kOld;
    return bytes == new_ ? kNew : kBroken;
  }

  /// Starts from the old content without a copy. Kills the save after the time.
  void Save(Clock::duration most) const {
    for (const auto& entry : fs::directory_iterator(folder_.Folder())) fs::remove(entry.path());
    WriteInPlace(file_, old_);
    if (GetParam()) fs::create_hard_link(file_, folder_ / "link");
    const pid_t child = ::fork();
    if (child == 0) {
      CopyBeside(file_, old_, copy_);
      ReplaceBytes(file_, new_);
      ::_exit(0);
    }
    std::this_thread::sleep_for(most);
    if (most.count() > 0) ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) - SIGKILL : WEXITSTATUS(status), 0);
  }

  ScratchFolder folder_{Place()};
  Path file_ = folder_ / "file", copy_ = folder_ / "copy";
  std::string old_ = std::string(8'000'000, kOld), new_ = std::string(old_.size(), kNew);
};

TEST_P(KilledSave, TheFileOrItsCopyIsWhole) {
  const auto start = Clock::now();
  Save({});  // to its end
  std::uniform_int_distribution<Clock::rep> moment(1, (Clock::now() - start).count());
  ASSERT_EQ(ContentOf(file_), kNew);
  std::mt19937 random(1);
  int between = 0;
  for (int i = 0; i < (GetParam() ? 20 : 200) && !HasFailure(); ++i) {
    Save(Clock::duration(moment(random)));
    const Content file = ContentOf(file_), copy = ContentOf(copy_);
    EXPECT_TRUE(copy == kMissing || copy == kOld) << copy;
    // Only a file of several names is written in its place.
    EXPECT_TRUE(file == kOld || (copy == kOld && (file == kNew || GetParam()))) << file << copy;
    if (copy == kOld) ++between;
  }
  EXPECT_GT(between, 0) << "no round was killed when it mattered";
}

INSTANTIATE_TEST_SUITE_P(OfSeveralNames, KilledSave, ::testing::Bool());

}  // namespace
}  // namespace quenmar
