#include "conf/ConfWriter.h"

#include "conf/ConfLine.h"
#include "conf/Functions.h"
#include "files/Folder.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr StringView kSeparator = u": ";

void BackUpExisting(const Path& path) {
  // What cannot be looked at fails to open below, and is reported there.
  if (KindOf(path) != FileKind::kFile) return;
  Path backup = path;
  backup += ".bak";
  if (IsSame(path, backup)) {
    throw RuntimeError(0, u"ConfWriter",
                       PathText(backup) + u" is the file itself, not a copy of it");
  }
  CopyWhole(path, backup);
}

}  // namespace

ConfWriter::ConfWriter(const Options& options, const Language& language, MessageBoxes& messages)
    : options_(options), language_(language), messages_(messages) {}

bool ConfWriter::SaveConfFile(const Path& path, const Document& settings,
                              const SeriesView& window) const {
  try {
    const std::string bytes = EncodeLines(ConfFileLines(settings, window));
    BackUpExisting(path);
    WriteInPlace(path, bytes);
  } catch (const std::exception& error) {
    ShowMessage(messages_, language_.Text(LNG42) + DescriptionOf(error), message_style::kOk);
    return false;
  }
  ShowMessage(messages_, String(language_.Text(LNG41)), message_style::kInformation);
  return true;
}

std::vector<String> ConfWriter::ConfFileLines(const Document& settings,
                                              const SeriesView& window) const {
  std::vector<String> lines;
  for (int i = 0; i < settings.Fields().Count(); ++i) {
    const auto field = settings.Fields().Field(i);
    lines.push_back(field->Name() + String(kSeparator) + field->Value());
  }
  for (int group = 0; group < window.GroupCount(); ++group) {
    const String caption = window.TabCaption(group);
    const String start = String(TabLabel(caption)) + String(kSeparator);
    for (int item = 0; item < window.ItemCount(group); ++item) {
      const bool checked = window.Selected(group, item);
      if (!checked && !options_.saveCommentedSeries) continue;
      lines.push_back((checked ? start : u"//" + start) + window.List(group, item));
    }
  }
  return lines;
}

std::string ConfWriter::EncodeLines(const std::vector<String>& lines) {
  std::string bytes;
  for (const String& line : lines) {
    const auto encoded = ToWindows1252(line);
    if (!encoded) {
      const ConfLine parsed = ParseConfLine(line);
      throw RuntimeError(0, u"ConfWriter",
                         u"The setting " + String(parsed.text.substr(0, parsed.text.find(u':'))) +
                             u" holds a character that configuration files cannot hold "
                             u"(Windows-1252)");
    }
    bytes.append(*encoded).append("\r\n");
  }
  return bytes;
}

}  // namespace quenmar
