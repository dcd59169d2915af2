/// Whole files: read, replaced so that a failure costs nothing, or written in place.
///
/// Failures are `FileError`s whose description is the system's own sentence.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "text/String.h"

namespace quenmar {

using Path = std::filesystem::path;

/// @return the path as text, for messages, lists and options. Names that are no valid text keep
/// their bytes, see `FromUtf8KeepingBytes`.
[[nodiscard]] String PathText(const Path& path);

/// @return the path that `text` names; the inverse of `PathText`.
[[nodiscard]] Path PathFromText(StringView text);

/// @return every byte of the file.
[[nodiscard]] std::string ReadBytes(const Path& path);

/// Gives the file the content `bytes`, wholly or not at all: they are written to a temporary file
/// in the same folder, flushed, and renamed over the file. Owner and permissions stay, symbolic
/// links are followed. A folder that takes no new file, a file whose owner could not be kept and
/// anything that is no regular file are written in place instead.
void ReplaceBytes(const Path& path, std::string_view bytes);

/// Copies the file `from` to `to` as `ReplaceBytes` does, with the owner and the permissions of
/// `from`, or for this user alone where that owner cannot be kept, so that the copy tells nobody
/// more than the original does. Throws where it would.
/// On Windows the copy has the permissions that its folder hands down.
void CopyWhole(const Path& from, const Path& to);

/// @return whether nothing stands at the path, not even a link; false when that cannot be told.
[[nodiscard]] bool IsMissing(const Path& path);

/// Empties the file (or creates it), writes `bytes` from the start and flushes them to the disk.
/// After a failure the file holds what had been written by then.
void WriteInPlace(const Path& path, std::string_view bytes);

}  // namespace quenmar
