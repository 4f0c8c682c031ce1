// The one writer of every file that the program writes: whole or not at all.
#pragma once

#include "core/platform/Files.h"

namespace tallybook::platform {

// Puts `bytes` at `path`: written under another name beside it, every count, sync and size checked, renamed over
// the target, the folder synced, and the size and the first bytes read back. A link is followed, so that the file
// it names is replaced and the link stays. When anything fails the old file is whole where it was, the temporary
// one is removed, and the error names the path and what failed.
Status writeWholeFile(Files& files, const std::filesystem::path& path, ByteSpan bytes);

// The same with the bytes of another file, for copies.
Status copyWholeFile(Files& files, const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace tallybook::platform
