#include "core/platform/Files.h"

#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

namespace tallybook::platform {

Status Files::moveToTrash(const std::filesystem::path& path) {
    return Error{.kind = ErrorKind::File, .tag = {}, .text = texts::cannot("move", shownPath(path), texts::kNoTrash)};
}

} // namespace tallybook::platform
