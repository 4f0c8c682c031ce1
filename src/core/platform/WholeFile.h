// The one writer of every file that the program writes: whole or not at all.
#pragma once

#include "core/platform/Files.h"

#include <memory>
#include <string_view>

namespace tallybook::platform {

// Who may look into a file: whoever the permissions of the old one or the system's usual ones let, or its owner
// alone.
enum class Privacy : std::uint8_t { Usual, OwnerOnly };

// Puts `bytes` at `path`: written under another name beside it ("name.tallybook-tmp-1" and
// so on), every count, sync and
// size checked and the first bytes read back, renamed over the target, the folder synced, and size and first bytes
// read back again. A link is followed, so that the file it names is replaced and the link stays. Owner,
// rights and attributes of an existing file are kept, see Files::create. A folder, a pipe or a device of that name
// and a read-only file are refused.
//
// When anything fails before the rename the old file is whole where it was, the temporary one is removed, and the
// error says so, names the path and what failed. After the rename the new file stands whole in its place: when the
// folder cannot be synced or the file not be read back, that is an error too, with a text that says that the new
// file is there but not confirmed; the caller treats it as a failed save, so that the user keeps what is in memory.
Status writeWholeFile(Files& files, const std::filesystem::path& path, ByteSpan bytes,
                      Privacy privacy = Privacy::Usual);

// The same. Gives what was read back of the file in its place.
Result<FileState> replaceWholeFile(Files& files, const std::filesystem::path& path, ByteSpan bytes);

// The same for a copy that the program keeps for itself: its owner alone may read it, and whatever has its name, a
// link or a file that others may read, is replaced.
Status writeOwnFile(Files& files, const std::filesystem::path& path, ByteSpan bytes);

// Whether a file's name is one of those that unfinished files have.
bool isTemporaryName(std::string_view name);

// The same for a file that is too large to be complete in memory first: it grows piece by piece under its temporary
// name and takes its place with commit(). Without that it goes with this object, and the old file stays.
class GrowingFile {
public:
    static Result<std::unique_ptr<GrowingFile>> begin(Files& files, const std::filesystem::path& path,
                                                      Privacy privacy = Privacy::Usual);
    // Of writeOwnFile.
    static Result<std::unique_ptr<GrowingFile>> beginOwn(Files& files, const std::filesystem::path& path);
    ~GrowingFile();
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;

    Status write(ByteSpan bytes);
    Status commit();
    // What was read back of the file in its place; good once commit() has gone well.
    const FileState& committed() const;

private:
    struct Parts;
    explicit GrowingFile(std::unique_ptr<Parts> parts);
    static Result<std::unique_ptr<GrowingFile>> beginAt(Files& files, const std::filesystem::path& path,
                                                        const std::filesystem::path& target,
                                                        const std::filesystem::path& like);

    std::unique_ptr<Parts> m_parts;
};

// The same with the bytes of another file, for copies.
Status copyWholeFile(Files& files, const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace tallybook::platform
