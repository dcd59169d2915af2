// Saves that are killed at a random moment, as POSIX systems do it.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <optional>
#include <random>
#include <thread>

#include "ScratchFolder.h"
#include "files/Files.h"

namespace quenmar {
namespace {

namespace fs = std::filesystem;

/// Saves a large file again and again, in a process that is killed at a random moment.
class KilledSave : public ::testing::Test {
 protected:
  enum Content : char { kMissing = '-', kBroken = '?', kOld = 'o', kNew = 'n' };

  /// @return the one character that the file is full of, as samples tell, if it is whole.
  static Content ContentOf(const Path& file) {
    if (!fs::exists(file)) return kMissing;
    if (fs::file_size(file) != kSize) return kBroken;
    constexpr size_t kSamples = 40;
    std::string samples;
    std::string sample(kSize / 1000, '\0');
    std::ifstream stream(file, std::ios::binary);
    for (size_t i = 0; i <= kSamples; ++i) {
      stream.seekg(static_cast<std::streamoff>((kSize - sample.size()) / kSamples * i));
      stream.read(sample.data(), static_cast<std::streamsize>(sample.size()));
      samples += sample;
    }
    const bool whole = stream && samples == std::string(samples.size(), samples[0]);
    return whole ? static_cast<Content>(samples[0]) : kBroken;
  }

  /// Starts from the old content without a copy; without a time the save comes to its end.
  void Save(std::optional<std::chrono::microseconds> killedAfter) const {
    fs::remove(copy_);
    for (const auto& entry : fs::directory_iterator(folder_.Folder())) {
      if (entry.path().extension() == ".tmp") fs::remove(entry.path());
    }
    if (ContentOf(file_) != kOld) WriteInPlace(file_, old_);
    const pid_t child = ::fork();
    if (child == 0) {
      CopyBeside(file_, old_, copy_);
      ReplaceBytes(file_, new_);
      ::_exit(0);
    }
    if (killedAfter) {
      std::this_thread::sleep_for(*killedAfter);
      ::kill(child, SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) - SIGKILL : WEXITSTATUS(status), 0);
  }

  /// @param check is given the contents of the file and of the copy after each round
  void SaveAndKill(int rounds, const std::function<void(Content, Content)>& check) const {
    const auto start = std::chrono::steady_clock::now();
    Save({});
    const std::chrono::duration<double, std::micro> whole =
        std::chrono::steady_clock::now() - start;
    ASSERT_EQ(ContentOf(file_), kNew);
    std::mt19937 random(1);
    std::uniform_real_distribution<> moment(0, whole.count());
    int between = 0;
    for (int i = 0; i < rounds && !HasFailure(); ++i) {
      Save(std::chrono::microseconds(static_cast<int>(moment(random))));
      const Content copy = ContentOf(copy_);
      check(ContentOf(file_), copy);
      EXPECT_TRUE(copy == kMissing || copy == kOld) << copy;
      if (copy == kOld) ++between;
    }
    EXPECT_GT(between, 0) << "no round was killed when it mattered";
  }

 private:
  /// In memory, which is faster, unless the user names a place: it is no disk that is tested here.
  static ScratchFolder MakeFolder() {
    if (std::getenv("TMPDIR") != nullptr || !fs::is_directory("/dev/shm")) return {};
    const struct ForNow {
      ForNow() { ::setenv("TMPDIR", "/dev/shm", 1); }
      ~ForNow() { ::unsetenv("TMPDIR"); }
    } place;
    return {};
  }

  static constexpr size_t kSize = 20'000'000;
  ScratchFolder folder_ = MakeFolder();

 protected:
  Path file_ = folder_ / "file", copy_ = folder_ / "copy";

 private:
  std::string old_ = std::string(kSize, kOld), new_ = std::string(kSize, kNew);
};

TEST_F(KilledSave, TheFileIsWholeAndSoIsItsCopy) {
  SaveAndKill(200, [](Content file, Content copy) {
    EXPECT_TRUE(file == kOld || (file == kNew && copy == kOld)) << file << copy;
  });
}

TEST_F(KilledSave, InPlaceTheCopyIsWhole) {
  WriteInPlace(file_, "");
  fs::create_hard_link(file_, file_.string() + "2");
  SaveAndKill(20, [](Content file, Content copy) {
    EXPECT_TRUE(file == kOld || copy == kOld) << file << copy;
  });
}

}  // namespace
}  // namespace quenmar
