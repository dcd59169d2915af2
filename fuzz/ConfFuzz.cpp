// Feeds arbitrary files to the reader, the comparison and the writer, and checks what a user relies
// on: reading harms no file, a comparison loses no setting, and what was saved is what is read
// next.
//
// Input: the distribution's file, a form feed, the server's file, a form feed, and one byte whose
// bits make the choices below. What is missing is empty.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <set>
#include <system_error>

#include "NextPart.h"
#include "compare/ChangeComparison.h"
#include "conf/ConfLine.h"
#include "conf/ConfReader.h"
#include "conf/ConfWriter.h"
#include "conf/EndApplication.h"
#include "conf/SaveChanges.h"
#include "conf/SaveWarnings.h"

namespace quenmar {

namespace {

enum Choice : unsigned {
  kIgnoreDuplicates = 1U << 0U,
  kDropCommentedSeries = 1U << 1U,
  kSorted = 1U << 2U,
  kFirstNo = 1U << 4U,  // this and the higher bits: the answer to that question is No
};
constexpr unsigned kSteerableAnswers = 4;

void Require(bool holds, const char* promise) {
  if (holds) return;
  std::cerr << "broken promise: " << promise << '\n';
  std::abort();
}

class Answers final : public MessageBoxes {
 public:
  explicit Answers(unsigned choices) : choices_(choices) {}

  Button Show(const String& /*text*/, int style) override {
    if ((style & message_style::kButtons) == message_style::kOk) return Button::kOk;
    const unsigned question = std::min(asked_++, kSteerableAnswers);
    return (choices_ & (kFirstNo << question)) != 0 ? Button::kNo : Button::kYes;
  }

 private:
  unsigned choices_;
  unsigned asked_ = 0;
};

/// A folder of this process, removed when it ends.
class Folder {
 public:
  Folder() { std::filesystem::create_directories(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;  // a leftover in the folder for temporary files is no finding
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] Path operator/(const char* name) const { return path_ / name; }

 private:
  Path path_ = std::filesystem::temp_directory_path() /
               ("quenmar-fuzz-" + std::to_string(std::random_device()()));
};

struct Trees {
  std::shared_ptr<Document> settings;
  std::shared_ptr<Document> series;
  ConfNotes notes;
};

/// Everything that a tree of settings or series entries holds, as one text.
String Content(const Document& tree) {
  String content;
  for (const Field& field : tree.Fields()) {
    content.append(field.Name()).append(u"\n").append(field.Value()).append(u"\n");
    for (const Parameter& parameter : field.Parameters()) {
      content.append(u"\t").append(parameter.Name());
      content.append(u"\t").append(parameter.Value()).append(u"\n");
    }
  }
  return content;
}

/// Names and values in order. A setting that is in a tree twice is saved twice, and reading
/// takes the first.
std::vector<std::pair<String, String>> FirstOfEachName(const Document& tree) {
  std::vector<std::pair<String, String>> settings;
  std::set<String> seen;
  for (const Field& field : tree.Fields()) {
    if (seen.emplace(field.Name()).second) settings.emplace_back(field.Name(), field.Value());
  }
  return settings;
}

std::set<String> Names(const Document& tree) {
  std::set<String> names;
  for (const Field& field : tree.Fields()) names.emplace(field.Name());
  return names;
}

/// @return every `step`-th name of the tree.
std::vector<String> SomeNames(const Document& tree, int step) {
  std::vector<String> names;
  for (int i = 0; i < tree.Fields().Count(); i += step) {
    names.emplace_back(tree.Fields().Field(i)->Name());
  }
  return names;
}

/// Reads, compares, saves and reads again with one input.
class Run {
 public:
  Run(const Folder& folder, unsigned choices)
      : folder_(folder), choices_(choices), answers_(choices) {
    options_.alwaysIgnoreDupParam = (choices & kIgnoreDuplicates) != 0;
    options_.saveCommentedSeries = (choices & kDropCommentedSeries) == 0;
  }

  void OnFiles(std::string_view distributionBytes, std::string_view serverBytes) {
    Trees distribution;
    Trees server;
    if (!Read(folder_ / "dist.conf", distributionBytes, distribution)) return;
    if (!Read(folder_ / "server.conf", serverBytes, server)) return;
    ChangeComparison comparison(
        {distribution.settings, server.settings, distribution.series, server.series},
        (choices_ & kSorted) != 0);
    comparison.FillNewFields();
    comparison.FillActualFields();
    comparison.FillDeletedFields();
    CheckNothingLost(comparison, distribution, server);
    MoveSome(comparison);
    const SeriesGroups groups = comparison.FillSeries(answers_, language_);
    SaveAndReadBack(
        comparison.ActualFields(), groups,
        CharsetForSaving(server.notes.file.Encoding(), distribution.notes.file.Encoding()));
  }

 private:
  /// Reads the bytes as a file in every way that there is.
  bool Read(const Path& path, std::string_view bytes, Trees& trees) {
    using BareLineFeeds = ConfReader::BareLineFeeds;
    WriteInPlace(path, bytes);
    Trees quiet;
    if (ReadWith(BareLineFeeds::kEndLines, path, quiet)) CheckNoEndIsMissed(path, bytes);
    Trees inMemory;
    const bool complete = ReadWith(BareLineFeeds::kRepairInMemory, path, inMemory);
    Require(ReadBytes(path) == bytes, "reading leaves the file alone");

    Require(ReadWith(BareLineFeeds::kRepairInFile, path, trees) == complete &&
                Content(*trees.settings) == Content(*inMemory.settings) &&
                Content(*trees.series) == Content(*inMemory.series),
            "both ways of repairing line ends read the same");
    if (complete) CheckRepairedOnce(path);
    Require(trees.settings->XMLExport().empty() == (trees.settings->Fields().Count() == 0),
            "every tree with settings can be exported");
    // From here on the file is as it came, and a lone LF ends a line.
    WriteInPlace(path, bytes);
    return ReadWith(BareLineFeeds::kEndLines, path, trees);
  }

  bool ReadWith(ConfReader::BareLineFeeds bareLineFeeds, const Path& path, Trees& trees) {
    Answers sameAnswers(choices_);
    return ConfReader(options_, language_, sameAnswers, bareLineFeeds)
        .LoadConfFile(path, trees.settings, trees.series, &trees.notes);
  }

  static void CheckNoEndIsMissed(const Path& path, std::string_view bytes) {
    const ConfFile file(path, std::string(bytes));
    std::string again(bytes.substr(0, bytes.size() - file.Body().size()));
    for (const ConfLine& line : file.Lines(u"")) {
      Require(line.bytes.find_first_of("\r\n") == std::string_view::npos,
              "no line end is within a line");
      again += EncodeConfText(file.Text(line.bytes), file.Charset()).value();
      again += BytesOf(line.end);
    }
    Require(again == bytes, "every byte survives decoding and encoding");
    Require(ReadBytes(path) == bytes, "reading leaves the file alone");
  }

  void CheckRepairedOnce(const Path& path) {
    const std::string repaired = ReadBytes(path);
    Trees again;
    (void)ReadWith(ConfReader::BareLineFeeds::kRepairInFile, path, again);
    Require(ReadBytes(path) == repaired, "a file is repaired once");
  }

  static void CheckNothingLost(const ChangeComparison& comparison, const Trees& distribution,
                               const Trees& server) {
    const auto partition = [&comparison](const Document& rest, const Document& whole) {
      std::set<String> names = Names(comparison.ActualFields());
      const size_t common = names.size();
      const std::set<String> others = Names(rest);
      names.insert(others.begin(), others.end());
      return names.size() == common + others.size() && names == Names(whole);
    };
    Require(partition(comparison.NewFields(), *distribution.settings),
            "each setting of the distribution is either new or kept");
    Require(partition(comparison.DeletedFields(), *server.settings),
            "each setting of the server is either kept or obsolete");
  }

  void MoveSome(ChangeComparison& comparison) {
    const auto total = [&comparison] {
      return comparison.NewFields().Fields().Count() + comparison.ActualFields().Fields().Count() +
             comparison.DeletedFields().Fields().Count();
    };
    const int before = total();
    comparison.Restore(SomeNames(comparison.DeletedFields(), 2));
    comparison.Add(SomeNames(comparison.NewFields(), 2));
    comparison.Remove(SomeNames(comparison.ActualFields(), 3), answers_, language_);
    Require(total() == before, "moves lose nothing");
  }

  void SaveAndReadBack(const Document& settings, const SeriesView& groups, ConfCharset charset) {
    const Path path = folder_ / "saved.conf";
    try {
      const std::string bytes = ConfFileBytes(settings, groups, charset, options_, language_);
      if (OtherCharset(bytes, charset)) return;  // the user is warned of it
    } catch (const RuntimeError&) {
      return;  // the distribution's entries have characters that the server's character set lacks
    }
    const Trees first = Saved(path, settings, groups, charset);
    Require(FirstOfEachName(*first.settings) == FirstOfEachName(settings) &&
                Names(*first.settings).size() == Count(first),
            "the settings that were saved are read");
    Require(KeptEntries(SeriesGroups(*first.series)) == KeptEntries(groups),
            "the series entries that were saved are read");

    const SeriesGroups firstGroups(*first.series);
    const Trees second = Saved(path, *first.settings, firstGroups, charset);
    const std::string bytes = ReadBytes(path);
    const std::string again =
        ConfFileBytes(*second.settings, SeriesGroups(*second.series), charset, options_, language_);
    Require(again == bytes, "saving what was read changes nothing");
    const ConfFile after(path, bytes, charset);
    Require(ListSaveChanges(ConfFile(path, bytes), after, options_.series).Empty(),
            "a save that changes nothing lists no changes");
    const SaveChanges reformatted =
        ListSaveChanges(ConfFile(path, bytes + "\r\n"), after, options_.series);
    Require(!reformatted.Empty(), "a save that changes a byte lists a change");
    Require(
        reformatted.changes.empty() && reformatted.lostCommentLines == 0 && !reformatted.reordered,
        "lines that stay are no changes");
  }

  /// @return what is read from the file after a save.
  Trees Saved(const Path& path, const Document& settings, const SeriesView& groups,
              ConfCharset charset) {
    const bool existed = std::filesystem::exists(path);
    const std::string before = existed ? ReadBytes(path) : std::string();
    OpenedFile file = OpenedFile::FromDisk(path);
    const ConfWriter writer(options_, language_, answers_);
    Require(writer.SaveBytes(file, ConfFileBytes(settings, groups, charset, options_, language_)),
            "what was read can be saved");
    Require(
        !existed || ReadBytes(path) == before || ReadBytes(folder_ / "saved.conf.bak") == before,
        "a save keeps the file as it was before");
    Options patient = options_;
    patient.alwaysIgnoreDupParam = true;
    Trees trees;
    Require(ConfReader(patient, language_, answers_)
                .LoadConfFile(path, trees.settings, trees.series, &trees.notes),
            "what was saved can be read");
    Require(trees.notes.file.Encoding().ascii || trees.notes.file.Charset() == charset,
            "what was saved has its character set");
    return trees;
  }

  static size_t Count(const Trees& trees) {
    return static_cast<size_t>(trees.settings->Fields().Count());
  }

  struct Entry {
    String type;
    String text;
    bool active;
    bool operator==(const Entry&) const = default;
  };

  /// @return the entries that a save keeps.
  [[nodiscard]] std::vector<Entry> KeptEntries(const SeriesView& groups) const {
    std::vector<Entry> entries;
    for (int group = 0; group < groups.GroupCount(); ++group) {
      const String caption = groups.TabCaption(group);
      for (int item = 0; item < groups.ItemCount(group); ++item) {
        const bool active = groups.Selected(group, item);
        if (!active && !options_.saveCommentedSeries) continue;
        entries.push_back({String(TabLabel(caption)), groups.List(group, item), active});
      }
    }
    return entries;
  }

  const Folder& folder_;
  unsigned choices_;
  Answers answers_;
  Options options_;
  Language language_;
};

}  // namespace

}  // namespace quenmar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
  using namespace quenmar;
  static const Folder folder;
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::string_view distribution = NextPart(rest);
  const std::string_view server = NextPart(rest);
  const unsigned choices = rest.empty() ? 0 : static_cast<unsigned char>(rest.front());
  try {
    Run(folder, choices).OnFiles(distribution, server);
  } catch (const EndApplication&) {
    // A refused repair, or too many kinds of series, ends the application.
  }
  return 0;
}
