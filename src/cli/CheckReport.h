/// What `check` finds in one file and in sum, and how it is shown to a person and to a program.
#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>

#include "cli/Console.h"
#include "compare/FileReport.h"

namespace quenmar {

/// JSON whose keys stay in the order in which they are set.
using Json = nlohmann::ordered_json;

/// @return the report as an object: `{"file","status","new","obsolete","changed","inactive",
/// "defaults","series","findings"}`.
[[nodiscard]] Json ReportJson(const FileReport& report, const Language& language);

/// Prints the counts and then a line for each name.
void PrintReport(const FileReport& report, const Language& language, std::ostream& out,
                 bool colours);

/// The sum over all files.
class CheckReport {
 public:
  void Count(const FileReport& report);
  void Print(std::ostream& out) const;

  [[nodiscard]] ExitStatus Status() const;

 private:
  size_t files_ = 0;
  size_t different_ = 0;
  size_t lacking_ = 0;
  size_t failed_ = 0;
  size_t fresh_ = 0;
  size_t mandatory_ = 0;
  size_t changed_ = 0;
  size_t obsolete_ = 0;
  size_t inactive_ = 0;
  size_t untouched_ = 0;
  size_t both_ = 0;
};

}  // namespace quenmar
