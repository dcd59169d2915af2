#include "cli/CheckReport.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cli/ChangesText.h"
#include "cli/Printable.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr const char* kGreen = "\033[32m";
constexpr const char* kYellow = "\033[33m";
constexpr const char* kRed = "\033[31m";
constexpr const char* kPlain = "\033[0m";

std::string Padded(StringView text, size_t width) {
  return Printable(text) + std::string(width - std::min(width, text.size()), ' ');
}

/// @return the value, an empty one made visible.
String OrQuotes(StringView value) { return String(value.empty() ? u"\"\"" : value); }

/// Prints the lines of one file, the names in one column and the values in the next.
class Lines {
 public:
  Lines(const FileReport& report, std::ostream& out, bool colours) : out_(out), colours_(colours) {
    constexpr size_t kWidest = 48;
    const auto widen = [this](const auto& settings) {
      for (const auto& setting : settings) width_ = std::max(width_, setting.name.size());
    };
    widen(report.fresh);
    widen(report.changed);
    widen(report.obsolete);
    widen(report.inactive);
    widen(report.release.defaults);
    width_ = std::min(width_, kWidest);
  }

  void Print(const char* colour, const char* kind, StringView name, StringView value) {
    out_ << "  " << (colours_ ? colour : "") << kind << (colours_ ? kPlain : "") << ' '
         << (value.empty() ? Printable(name) : Padded(name, width_) + "  " + Printable(value))
         << '\n';
  }

  void PrintSeries(const char* colour, const char* kind, const std::vector<SeriesEntry>& entries) {
    for (const SeriesEntry& entry : entries)
      Print(colour, kind, entry.type + u": " + entry.name, {});
  }

 private:
  std::ostream& out_;
  bool colours_;
  size_t width_ = 0;
};

const char* StatusName(FileStatus status) {
  constexpr std::array<const char*, 4> kNames = {"same", "different", "new", "failed"};
  return kNames.at(static_cast<size_t>(status));
}

/// Prints how many defaults the release has changed, where there are any.
void PrintDefaultCounts(size_t untouched, size_t both, std::ostream& out) {
  if (untouched + both > 0) out << ", " << untouched << " default, " << both << " both";
}

/// @return the entries of the server that no release has had.
std::vector<SeriesEntry> OwnEntries(const FileReport& report) {
  std::vector<SeriesEntry> own = report.obsoleteSeries;
  for (const SeriesEntry& entry : report.release.withdrawn) {
    std::erase_if(own, [&entry](const SeriesEntry& other) { return other.name == entry.name; });
  }
  return own;
}

void PrintCounts(const FileReport& report, std::ostream& out) {
  out << report.fresh.size() << " new (" << report.MandatoryCount() << " mandatory), "
      << report.changed.size() << " changed, " << report.obsolete.size() << " obsolete";
  if (!report.inactive.empty()) out << ", " << report.inactive.size() << " inactive";
  PrintDefaultCounts(report.DefaultCount(DefaultChange::Kind::kDefault),
                     report.DefaultCount(DefaultChange::Kind::kBoth), out);
  if (!report.newSeries.empty() || !report.obsoleteSeries.empty()) {
    out << "; series: " << report.newSeries.size() << " new, " << report.obsoleteSeries.size()
        << " only on the server";
  }
  out << '\n';
}

Json SeriesJson(const std::vector<SeriesEntry>& entries) {
  Json list = Json::array();
  for (const SeriesEntry& entry : entries) {
    list.push_back({{"type", ToUtf8(entry.type)}, {"name", ToUtf8(entry.name)}});
  }
  return list;
}

Json DefaultsJson(const std::vector<DefaultChange>& changes) {
  Json list = Json::array();
  for (const DefaultChange& change : changes) {
    list.push_back({{"name", ToUtf8(change.name)},
                    {"old", ToUtf8(change.oldDefault)},
                    {"new", ToUtf8(change.newDefault)},
                    {"actual", ToUtf8(change.actual)},
                    {"kind", change.IsUntouched() ? "default" : "both"}});
  }
  return list;
}

/// A finding as it is shown.
struct ShownFinding {
  const char* kind;  ///< "error", "line-feed", "duplicate", "name", "charset", "bytes" or "save"
  String path;       ///< of the version that it is about; empty for what a save would change
  int line;          ///< counted from 1; 0 for the file as a whole
  String text;
};

ShownFinding Show(const ReportedFinding& reported) {
  using Kind = Finding::Kind;
  const Finding& finding = reported.finding;
  const auto as = [&](const char* kind, String text) {
    return ShownFinding{kind, PathText(reported.path), finding.line, std::move(text)};
  };
  switch (finding.kind) {
    case Kind::kBareLineFeed:
      return as("line-feed", u"this is the first line that ends in a bare line feed");
    case Kind::kDuplicate:
      return as("duplicate", u"the setting " + finding.text + u" has been set before");
    case Kind::kRejectedName:
      return as("name", reported.reason + u": " + finding.text);
    case Kind::kUtf8:
      return as("charset", u"the file is UTF-8 text");
    case Kind::kNoText:
      return as("bytes", u"this is the first line with bytes that are not UTF-8 text");
    case Kind::kUnreadable:
      return as("error", finding.text);
  }
  return {};
}

/// @return the findings, then what a save would change.
std::vector<ShownFinding> ShownFindings(const FileReport& report, const Language& language) {
  std::vector<ShownFinding> shown;
  for (const ReportedFinding& finding : report.findings) shown.push_back(Show(finding));
  for (const std::string& effect : EffectsOf(report.save, language)) {
    shown.push_back({"save", {}, 0, FromUtf8(effect)});
  }
  const char* const kind = report.status == FileStatus::kFailed ? "error" : "save";
  for (const String& warning : report.warnings) shown.push_back({kind, {}, 0, warning});
  return shown;
}

String PlaceAndText(const ShownFinding& finding) {
  if (finding.path.empty()) return finding.text;
  const String line = finding.line > 0 ? u", line " + ToText(finding.line) : String();
  return finding.path + line + u": " + finding.text;
}

}  // namespace

Json ReportJson(const FileReport& report, const Language& language) {
  Json fresh = Json::array();
  for (const NewSetting& setting : report.fresh) {
    fresh.push_back({{"name", ToUtf8(setting.name)},
                     {"value", ToUtf8(setting.value)},
                     {"mandatory", setting.mandatory}});
  }
  Json obsolete = Json::array();
  for (const ServerSetting& setting : report.obsolete) {
    obsolete.push_back({{"name", ToUtf8(setting.name)}, {"value", ToUtf8(setting.value)}});
  }
  Json changed = Json::array();
  for (const ChangedSetting& setting : report.changed) {
    changed.push_back({{"name", ToUtf8(setting.name)},
                       {"actual", ToUtf8(setting.actual)},
                       {"original", ToUtf8(setting.original)}});
  }
  Json inactive = Json::array();
  for (const ServerSetting& setting : report.inactive) {
    inactive.push_back({{"name", ToUtf8(setting.name)}, {"value", ToUtf8(setting.value)}});
  }
  Json findings = Json::array();
  for (const ShownFinding& finding : ShownFindings(report, language)) {
    const String path = finding.path.empty() ? String() : finding.path + u": ";
    findings.push_back(
        {{"line", finding.line}, {"kind", finding.kind}, {"text", ToUtf8(path + finding.text)}});
  }
  return {{"file", ToUtf8(report.file)},
          {"status", StatusName(report.status)},
          {"new", std::move(fresh)},
          {"obsolete", std::move(obsolete)},
          {"changed", std::move(changed)},
          {"inactive", std::move(inactive)},
          {"defaults", DefaultsJson(report.release.defaults)},
          {"series",
           {{"new", SeriesJson(report.newSeries)},
            {"obsolete", SeriesJson(report.obsoleteSeries)},
            {"withdrawn", SeriesJson(report.release.withdrawn)}}},
          {"findings", std::move(findings)}};
}

void PrintReport(const FileReport& report, const Language& language, std::ostream& out,
                 bool colours) {
  out << Printable(report.file) << ": ";
  if (report.status == FileStatus::kFailed) {
    out << "could not be read\n";
  } else if (report.status == FileStatus::kSame) {
    out << "no differences\n";
  } else {
    if (report.status == FileStatus::kNew) out << "the server lacks this file: ";
    PrintCounts(report, out);
  }
  Lines lines(report, out, colours);
  for (const NewSetting& setting : report.fresh) {
    const char* const kind = setting.mandatory ? "new [x] " : "new [ ] ";
    lines.Print(kGreen, kind, setting.name, OrQuotes(setting.value));
  }
  for (const ChangedSetting& setting : report.changed) {
    const String values =
        OrQuotes(setting.actual) + u"  (distribution: " + OrQuotes(setting.original) + u")";
    lines.Print(kYellow, "changed ", setting.name, values);
  }
  // These are among the changed ones, too, which says where the two files differ; this says why.
  for (const DefaultChange& change : report.release.defaults) {
    const String values = OrQuotes(change.oldDefault) + u" -> " + OrQuotes(change.newDefault) +
                          u"  (yours: " + OrQuotes(change.actual) + u")";
    lines.Print(kYellow, change.IsUntouched() ? "default " : "both    ", change.name, values);
  }
  for (const ServerSetting& setting : report.inactive) {
    lines.Print(kYellow, "inactive", setting.name, OrQuotes(setting.value));
  }
  for (const ServerSetting& setting : report.obsolete) {
    lines.Print(kRed, "obsolete", setting.name, OrQuotes(setting.value));
  }
  lines.PrintSeries(kGreen, "new     ", report.newSeries);
  lines.PrintSeries(kRed, "withdrawn", report.release.withdrawn);
  lines.PrintSeries(kPlain, "own     ", OwnEntries(report));
  for (const ShownFinding& finding : ShownFindings(report, language)) {
    const bool save = std::string_view(finding.kind) == "save";
    lines.Print(kPlain, save ? "save    " : "note    ", PlaceAndText(finding), {});
  }
}

void CheckReport::Count(const FileReport& report) {
  ++files_;
  different_ += report.status == FileStatus::kDifferent ? 1 : 0;
  lacking_ += report.status == FileStatus::kNew ? 1 : 0;
  failed_ += report.status == FileStatus::kFailed ? 1 : 0;
  fresh_ += report.fresh.size();
  mandatory_ += report.MandatoryCount();
  changed_ += report.changed.size();
  obsolete_ += report.obsolete.size();
  inactive_ += report.inactive.size();
  untouched_ += report.DefaultCount(DefaultChange::Kind::kDefault);
  both_ += report.DefaultCount(DefaultChange::Kind::kBoth);
}

void CheckReport::Print(std::ostream& out) const {
  out << "Sum of " << files_ << (files_ == 1 ? " file: " : " files: ") << different_
      << " different, " << lacking_ << " new, " << failed_ << " failed; settings: " << fresh_
      << " new (" << mandatory_ << " mandatory), " << changed_ << " changed, " << obsolete_
      << " obsolete, " << inactive_ << " inactive";
  PrintDefaultCounts(untouched_, both_, out);
  out << '\n';
  if (fresh_ > 0) out << "[x] mandatory: the server needs it; [ ] optional\n";
}

ExitStatus CheckReport::Status() const {
  if (failed_ > 0) return kFailure;
  return different_ + lacking_ > 0 ? kDifferences : kNothingToDo;
}

}  // namespace quenmar
