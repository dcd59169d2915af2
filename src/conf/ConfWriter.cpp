#include "conf/ConfWriter.h"

#include "conf/Functions.h"
#include "files/FileError.h"
#include "files/Folder.h"

namespace quenmar {

namespace {

constexpr StringView kSeparator = u": ";

/// @return the content of a regular file; nothing for a missing file and for devices. Throws
/// `FileError` when it cannot be read.
std::optional<std::string> ContentOf(const Path& path) {
  return KindOf(path) == FileKind::kFile ? std::optional(ReadBytes(path)) : std::nullopt;
}

Path CopyOf(const Path& path) {
  Path copy = path;
  copy += ".bak";
  return copy;
}

/// Copies the file's content to PATH.bak, once for every opening.
/// @return why that failed; empty when the copy is there.
String KeepCopy(OpenedFile& file, const std::string& onDisk) {
  try {
    CopyBeside(file.path, onDisk, CopyOf(file.path));
    file.copied = true;
    return {};
  } catch (const FileError& error) {
    return error.Description();
  }
}

}  // namespace

OpenedFile OpenedFile::FromDisk(const Path& path) { return {path, ContentOf(path)}; }

ConfWriter::ConfWriter(const Options& options, const Language& language, MessageBoxes& messages)
    : options_(options), language_(language), messages_(messages) {}

bool ConfWriter::SaveConfFile(const Path& path, const Document& settings,
                              const SeriesView& window) const {
  try {
    OpenedFile file = OpenedFile::FromDisk(path);
    const ConfCharset charset = EncodingOf(file.bytes.value_or(std::string())).charset;
    return SaveBytes(file, ConfFileBytes(settings, window, charset, options_, language_));
  } catch (const std::exception& error) {
    TellFailure(path, error);
    return false;
  }
}

bool ConfWriter::SaveBytes(OpenedFile& file, const std::string& bytes) const {
  String copyErrorText;
  try {
    const std::optional<std::string> onDisk = ContentOf(file.path);
    if (onDisk != bytes) {
      if (!MayReplace(file, onDisk)) return false;
      // Only a save that gets this far may replace the copy of an earlier one.
      ReplaceBytes(file.path, bytes, [&] {
        if (onDisk && !file.copied) copyErrorText = KeepCopy(file, *onDisk);
      });
      file.copied = true;
    }
    file.bytes = bytes;
  } catch (const std::exception& error) {
    TellFailure(file.path, error);
    return false;
  }
  ShowMessage(messages_, language_.Text(Message::kSaved), message_style::kInformation);
  if (!copyErrorText.empty()) {
    ShowMessage(messages_, language_.Text(Message::kNoCopy), message_style::kOk,
                {PathText(CopyOf(file.path)), copyErrorText});
  }
  return true;
}

bool ConfWriter::MayReplace(const OpenedFile& file,
                            const std::optional<std::string>& onDisk) const {
  using namespace message_style;
  return onDisk == file.bytes ||
         ShowMessage(messages_, language_.Text(Message::kChangedOnDisk) + u"\\n%1",
                     kYesNo | kQuestion | kDefaultButton2, {PathText(file.path)}) == Button::kYes;
}

void ConfWriter::TellFailure(const Path& path, const std::exception& error) const {
  const bool damaged = dynamic_cast<const FileDamaged*>(&error) != nullptr;
  ShowError(messages_, language_, DescriptionOf(error),
            FinishedText(language_.Text(damaged ? Message::kFileDamaged : Message::kFileUnchanged),
                         {PathText(path)}));
}

std::string ConfFileBytes(const Document& settings, const SeriesView& window, ConfCharset charset,
                          const Options& options, const Language& language) {
  std::string bytes;
  const auto add = [&](std::initializer_list<StringView> parts, StringView about) {
    for (const StringView part : parts) {
      bytes += EncodeForSaving(part, about, charset, language);
    }
    bytes += "\r\n";
  };
  for (const Field& field : settings.Fields()) {
    add({field.Name(), kSeparator, field.Value()}, field.Name());
  }
  for (int group = 0; group < window.GroupCount(); ++group) {
    const String caption = window.TabCaption(group);
    const String start = String(TabLabel(caption)) + String(kSeparator);
    for (int item = 0; item < window.ItemCount(group); ++item) {
      const bool checked = window.Selected(group, item);
      if (!checked && !options.saveCommentedSeries) continue;
      const String entry = start + window.List(group, item);
      add({checked ? u"" : u"//", entry}, entry);
    }
  }
  return bytes;
}

}  // namespace quenmar
