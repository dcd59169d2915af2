/// Whole files: read, replaced so that a failure changes nothing, or written in place.
///
/// Failures are `FileError`s whose description is the system's own sentence.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "text/String.h"

namespace quenmar {

using Path = std::filesystem::path;

/// @return the path as text, for messages, lists and options. Names that are not valid text keep
/// their bytes, see `FromUtf8KeepingBytes`.
[[nodiscard]] String PathText(const Path& path);

/// @return the path that `text` names; the inverse of `PathText`.
[[nodiscard]] Path PathFromText(StringView text);

/// @return every byte of the file.
[[nodiscard]] std::string ReadBytes(const Path& path);

/// Gives the file the content `bytes`, wholly or not at all. A temporary file in the folder of the
/// file behind symbolic links is filled, flushed and renamed over the file. Owner, permissions and
/// extended attributes (access control lists among them) stay; a new file gets the default ones.
///
/// A regular file is written in place instead where the folder takes no new file, where the rename
/// is refused, where owner or attributes could not be kept, and where it has several hard links.
/// What is beyond its old end is written first, so that a full disk is noticed before an old byte
/// is lost; after a failure the old bytes are put back. Anything but a regular file, such as a
/// pipe, is just written to.
///
/// A process that is killed leaves the old or the new content; `NAME.<number>.tmp` may be left
/// behind. Killed while it writes in place, it may leave the file half-written: see `CopyBeside`.
///
/// Throws `FileDamaged` when the old bytes could not be put back. After any other `FileError` the
/// file is what it was.
/// @param ready is called just before the first byte of an existing regular file is lost, when the
/// new ones are known to fit: a save that fails has not called it, unless the last step failed
void ReplaceBytes(const Path& path, std::string_view bytes,
                  const std::function<void()>& ready = {});

/// @return the file behind symbolic links, also one that is yet to be created.
[[nodiscard]] Path BehindLinks(Path path);

/// @return whether the path, links followed, leads to the folder or into it, whether or not there
/// is anything at the path.
[[nodiscard]] bool IsWithin(const Path& path, const Path& folder);

/// Makes `copy` a whole copy of `file`, by a temporary file in the folder of `copy` that is
/// flushed and renamed over. A link at `copy`, also one to `file`, is replaced and not followed.
/// The copy has the owner, permissions and extended attributes of `file`, or is for this user alone
/// where those cannot be kept, so that nobody can read it who cannot read `file`; on Windows it has
/// its folder's permissions.
/// @param bytes what was read from `file` just before
///
/// Throws `FileError` and leaves what is at `copy` when that is a write-protected file, a folder or
/// anything else but a file, or when the folder does not let it be replaced. A process that
/// is killed may leave `NAME.<number>.tmp` behind.
void CopyBeside(const Path& file, std::string_view bytes, const Path& copy);

/// @return whether there is nothing at the path, not even a link; false when that cannot be found
/// out.
[[nodiscard]] bool IsMissing(const Path& path);

/// Empties the file (or creates it), writes `bytes` from the start and flushes them to the disk.
/// After a failure the file has what had been written by then.
void WriteInPlace(const Path& path, std::string_view bytes);

}  // namespace quenmar
