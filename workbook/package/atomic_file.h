// Saving a file so that the user never finds a half-written one under its
// name: the bytes go to a temporary file beside it, which replaces the
// target only once it is complete (and, unless the save says otherwise, on
// disk).
#ifndef Z4400_WORKBOOK_PACKAGE_ATOMIC_FILE_H_
#define Z4400_WORKBOOK_PACKAGE_ATOMIC_FILE_H_

#include <filesystem>
#include <functional>
#include <string>

#include "common/save_durability.h"

namespace z4400 {

/// Writes `target` through a temporary file in the same folder, renamed over
/// the target only when `write` returns true; a failed write never leaves a
/// damaged file under the target name and removes the temporary.
///
/// `write` receives the temporary's path, reserved as an empty file, and
/// must overwrite or replace it and close it before returning. The
/// temporary's name is unique per process and call, so two programs saving
/// beside each other do not collide. A replaced target keeps its
/// permissions. With `kOnDisk` the finished temporary is flushed to the disk
/// before the rename, and the rename itself after it.
/// On failure returns false and, when `error` is not null, sets it to a
/// message for the user; when `write` itself fails, `error` keeps what the
/// callback may already have put there, or gets a generic message.
///
/// The first save into a folder removes the temporary files there that a
/// process which no longer exists left behind (killed during its save).
bool WriteAtomically(const std::filesystem::path& target,
                     const std::function<bool(const std::filesystem::path& temporary)>& write,
                     std::string* error, SaveDurability durability = SaveDurability::kOnDisk);

/// A hidden name beside `target` of the form the saves give their temporary
/// files (".NAME.PID-RANDOM.tmp"): a later save into the folder removes it
/// once this process has ended.
std::filesystem::path TemporarySibling(const std::filesystem::path& target);

/// For a program being interrupted: removes the temporary files of the saves
/// in progress and makes every save from now on fail without replacing its
/// target. Safe to call from any thread.
void AbandonSaves();

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_ATOMIC_FILE_H_
