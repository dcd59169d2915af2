// Runs the console program in a scratch folder with one file in two versions.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "ScratchFolder.h"
#include "Trees.h"
#include "cli/Console.h"
#include "registry/Options.h"

namespace quenmar {

inline constexpr const char* kDistribution =
    "// Base\r\nbase: 1\r\nrate: 100\r\nfresh: 7\r\n//extra: 8\r\nnpc: a.txt\r\nnpc: new.txt\r\n";
inline constexpr const char* kServer =
    "// Mine\r\nrate: 150 // high\r\n//base: 2\r\nold: 3\r\nnpc: own.txt\r\n//npc: a.txt\r\n";
/// What `check` says where no old version is known, behind the number of files.
inline constexpr const char* kOldUnknownHint =
    "): what the release itself has changed is known after the next save, or with --base "
    "DIR\n";
inline constexpr const char* kMerged =
    "base: 2\r\nrate: 150\r\nnpc: own.txt\r\n//npc: a.txt\r\n//npc: new.txt\r\n";

class ConsoleTest : public ::testing::Test {
 protected:
  ConsoleTest() {
    SetVariable("QUENMAR_STATE", folder_ / "state");
    Write("dist/a.conf", kDistribution);
    Write("server/a.conf", kServer);
  }

  void Write(const char* name, std::string_view bytes) { WriteFile(folder_ / name, bytes); }
  std::string Read(const char* name) { return ReadFile(folder_ / name); }
  std::string At(const char* name) {
    return ToUtf8(PathText(Path(folder_ / name).make_preferred()));
  }

  /// Runs the program with a registry file in the scratch folder.
  int Run(std::vector<std::string> arguments) {
    std::istringstream in(input_);
    std::ostringstream out;
    std::ostringstream err;
    arguments.insert(arguments.begin(), {"--registry", At("options.reg")});
    const int status = RunConsole(arguments, {in, out, err, interactive_, colours_});
    out_ = out.str();
    err_ = err.str();
    return status;
  }

  int Merge(std::vector<std::string> options, const char* file = "a.conf") {
    options.insert(options.begin(), {"merge", At("dist"), At("server"), file});
    return Run(std::move(options));
  }

  /// @return what a merge that is done prints.
  std::string MergeOutput(std::vector<std::string> options, const char* file = "a.conf") {
    EXPECT_EQ(Merge(std::move(options), file), kNothingToDo) << err_;
    return out_;
  }

  /// @return what a merge that is not done says.
  std::string MergeFailure(std::vector<std::string> options, const char* file = "a.conf") {
    EXPECT_EQ(Merge(std::move(options), file), kFailure) << out_;
    return err_;
  }

  int Check(std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"check", At("dist"), At("server")});
    return Run(std::move(options));
  }

  /// @param options as in a registry file, "\"Sort\"=\"1\"\r\n"
  void SetOptions(const std::string& options) {
    Write("options.reg",
          "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n" + options);
  }

  /// @return the output with the paths behind the scratch folder, parted by slashes.
  std::string ShortOut() {
    std::string text = ToUtf8(ReplaceAll(FromUtf8(out_), FromUtf8(At("")), u""));
    if (Path::preferred_separator != '/') std::replace(text.begin(), text.end(), '\\', '/');
    return text;
  }

  bool Exists(const char* name) { return std::filesystem::exists(folder_ / name); }

  ScratchFolder folder_;
  bool interactive_ = false;
  bool colours_ = false;
  std::string input_;
  std::string out_;
  std::string err_;
};

}  // namespace quenmar
