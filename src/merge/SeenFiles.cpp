#include "merge/SeenFiles.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <type_traits>
#include <utility>

#include "files/FileError.h"
#include "files/Folder.h"
#include "text/CaseFolding.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

namespace fs = std::filesystem;
using Days = std::chrono::sys_days;

constexpr std::string_view kFirstLine = "quenmar seen file 1";
constexpr StringView kEnding = u".seen";
constexpr StringView kForeign = u"this is not a file that Quenmar has kept";
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr auto kKeptWithoutAFile = std::chrono::days(365);

/// The entry for one file of the server.
struct Entry {
  std::string server;  ///< its path, see `KeyOf`
  Days date;
  std::string bytes;  ///< of the distribution's file
};

/// @return the absolute path of the file's folder, links followed: each folder has one, and no
/// other folder has it. What cannot be followed stays as it is.
Path FolderOf(const Path& file) {
  std::error_code error;
  const Path absolute = fs::absolute(file, error);
  const Path folder = (error ? file : absolute).parent_path();
  const Path followed = fs::weakly_canonical(folder, error);
  return error ? folder : followed;
}

/// @return the absolute path on one line; one spelling for one file where letter case does not
/// count.
std::string KeyOf(const Path& server) {
  String text = PathText((FolderOf(server) / server.filename()).make_preferred());
  if constexpr (!std::is_same_v<Path::value_type, char>) text = ToLower(text);
  std::string key;
  for (const char byte : ToUtf8KeepingBytes(text).value_or(ToUtf8(text))) {
    const auto code = static_cast<unsigned char>(byte);
    if (code >= ' ' && byte != '%') {
      key += byte;
    } else {
      key.append({'%', kDigits[code >> 4U], kDigits[code & 0xFU]});
    }
  }
  return key;
}

Path PathOfKey(std::string_view key) {
  std::string bytes;
  for (size_t i = 0; i < key.size(); ++i) {
    unsigned code = static_cast<unsigned char>(key[i]);
    if (key[i] == '%' && i + 2 < key.size() &&
        std::from_chars(&key[i + 1], &key[i + 1] + 2, code, 16).ec == std::errc()) {
      i += 2;
    }
    bytes += static_cast<char>(code);
  }
  return PathFromText(FromUtf8KeepingBytes(bytes));
}

/// FNV-1a with 64 bits, in hexadecimal digits.
std::string HashOf(std::string_view key) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char byte : key) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
  std::string digits;
  for (int i = 0; i < 16; ++i, hash <<= 4U) digits += kDigits[hash >> 60U];
  return digits;
}

/// @return the file's name as far as every file system takes it.
std::string ReadableEnd(const Path& server) {
  constexpr size_t kMost = 60;
  std::string end;
  for (const char16_t unit : PathText(server.filename()).substr(0, kMost)) {
    const bool plain = (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') ||
                       (unit >= u'A' && unit <= u'Z') || unit == u'.' || unit == u'-';
    end += plain ? static_cast<char>(unit) : '_';
  }
  return end;
}

Days Today() { return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()); }

std::string DateText(Days days) {
  const std::chrono::year_month_day date(days);
  const auto padded = [](unsigned number, size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
  };
  return padded(static_cast<unsigned>(static_cast<int>(date.year())), 4) + "-" +
         padded(static_cast<unsigned>(date.month()), 2) + "-" +
         padded(static_cast<unsigned>(date.day()), 2);
}

std::optional<Days> ParseDate(std::string_view text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  const auto number = [&text](size_t start, size_t size, auto& value) {
    const char* const end = text.data() + start + size;
    return std::from_chars(text.data() + start, end, value).ptr == end;
  };
  if (text.size() != 10 || !number(0, 4, year) || !number(5, 2, month) || !number(8, 2, day)) {
    return {};
  }
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                         std::chrono::day(day)};
  if (!date.ok()) return {};
  return Days(date);
}

std::string BytesOf(const Entry& entry) {
  return std::string(kFirstLine) + "\npath: " + entry.server + "\ndate: " + DateText(entry.date) +
         "\n\n" + entry.bytes;
}

std::optional<Entry> ParseEntry(std::string_view bytes) {
  const auto line = [&bytes](std::string_view start) -> std::optional<std::string_view> {
    const size_t end = bytes.find('\n');
    if (end == std::string_view::npos || !bytes.starts_with(start)) return {};
    const std::string_view rest = bytes.substr(start.size(), end - start.size());
    bytes.remove_prefix(end + 1);
    return rest;
  };
  if (line(kFirstLine) != "") return {};
  const auto server = line("path: ");
  const auto date = line("date: ");
  if (!server || !date || line("") != "") return {};
  const auto days = ParseDate(*date);
  if (!days) return {};
  return Entry{std::string(*server), *days, std::string(bytes)};
}

}  // namespace

Path SeenFiles::EntryOf(const Path& server) const {
  return folder_ / (HashOf(KeyOf(server)) + "-" + ReadableEnd(server) + ToUtf8(kEnding));
}

std::optional<ConfFile> SeenFiles::Find(const Path& server) const {
  if (folder_.empty()) return {};
  const Path path = EntryOf(server);
  const FileKind kind = KindOf(path);
  if (kind == FileKind::kMissing) return {};
  auto entry = kind == FileKind::kFile ? ParseEntry(ReadBytes(path)) : std::nullopt;
  if (!entry) throw FileError(0, u"SeenFiles", String(kForeign));
  if (entry->server != KeyOf(server)) return {};
  return ConfFile(path, std::move(entry->bytes));
}

OldFile SeenFiles::Look(const Path& server) {
  OldFile old;
  old.path = EntryOf(server);
  try {
    old.file = Find(server);
  } catch (const FileError& error) {
    old.reason = error.Description();
    if (const String reason = FolderErrorText(folder_); !reason.empty()) {
      old.path = folder_;
      old.reason = std::exchange(unreadableTold_, true) ? String() : reason;
    }
  }
  return old;
}

String SeenFiles::Keep(const Path& server, const ConfFile& distribution) {
  const String reason = TryToKeep(server, distribution);
  return reason.empty() || std::exchange(unwritableTold_, true) ? String() : reason;
}

String SeenFiles::TryToKeep(const Path& server, const ConfFile& distribution) {
  if (folder_.empty()) return u"there is no folder for it";
  for (const Path& file : {server, distribution.FilePath()}) {
    if (IsWithin(folder_, FolderOf(file))) {
      return PathText(folder_) + u": this is inside a folder of configuration files";
    }
  }
  std::error_code error;  // a folder that is still missing cannot be read either
  if (fs::create_directories(folder_, error)) {
    fs::permissions(folder_, fs::perms::owner_all, error);
  }
  if (const String reason = FolderErrorText(folder_); !reason.empty()) {
    return PathText(folder_) + u": " + reason;
  }
  const Path entry = EntryOf(server);
  const FileKind kind = KindOf(entry);
  const bool isNew = kind == FileKind::kMissing;
  if (!isNew && kind != FileKind::kFile) return PathText(entry) + u": " + String(kForeign);
  try {
    ReplaceBytes(entry, BytesOf({KeyOf(server), Today(), distribution.Bytes()}));
  } catch (const FileError& failure) {
    return PathText(isNew ? folder_ : entry) + u": " + failure.Description();
  }
  if (!std::exchange(cleared_, true)) ClearOldEntries();
  return {};
}

void SeenFiles::ClearOldEntries() const {
  String unread;  // a folder that cannot be listed stays as it is
  for (const FolderEntry& found : EntriesEndingIn(kEnding, folder_, unread)) {
    if (found.kind != FileKind::kFile) continue;
    const Path path = folder_ / found.name;
    try {
      const auto entry = ParseEntry(ReadBytes(path));
      if (!entry || entry->date + kKeptWithoutAFile >= Today()) continue;
      std::error_code left;  // for the next time
      if (IsMissing(PathOfKey(entry->server))) fs::remove(path, left);
    } catch (const FileError&) {  // another program's file, or another user's
    }
  }
}

OldFile FindOldFile(const std::optional<Path>& base, SeenFiles* seen, const Path& server) {
  if (IsMissing(server)) return {};
  if (!base) return seen == nullptr ? OldFile() : seen->Look(server);
  OldFile old;
  old.path = *base;
  old.named = true;
  try {
    if (!IsMissing(*base)) old.file = ConfFile::Read(*base);
  } catch (const FileError& error) {
    old.reason = error.Description();
  }
  return old;
}

}  // namespace quenmar
