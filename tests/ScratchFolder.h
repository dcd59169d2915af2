#pragma once

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace quenmar {

/// A new, empty folder of its own for one test, removed with all it holds when the test is over.
class ScratchFolder {
 public:
  ScratchFolder() : ScratchFolder(std::filesystem::temp_directory_path()) {}
  explicit ScratchFolder(const std::filesystem::path& parent)
      : path_(parent / ("quenmar-test-" + std::to_string(std::random_device()()) + "-" +
                        std::to_string(std::random_device()()))) {
    std::filesystem::create_directory(path_);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;  // a leftover in the folder for temporary files fails no test
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::filesystem::path& Folder() const { return path_; }

  /// @return the path of that name in the folder; nothing is created.
  [[nodiscard]] std::filesystem::path operator/(const std::filesystem::path& name) const {
    return path_ / name;
  }

 private:
  std::filesystem::path path_;
};

/// Sets a variable of the environment.
inline void SetVariable(const char* name, const std::filesystem::path& value) {
#ifdef _WIN32
  ::_putenv_s(name, value.string().c_str());
#else
  ::setenv(name, value.c_str(), 1);
#endif
}

}  // namespace quenmar
