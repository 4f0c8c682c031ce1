#include "core/platform/Containment.h"

#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

namespace tallybook::platform {

Status staysInFolder(Files& files, const std::filesystem::path& path) {
    const auto folder = files.resolve(path.parent_path());
    if (!folder)
        return folder.error();
    const auto file = files.resolve(path);
    if (!file)
        return file.error();
    if (file.value().parent_path() == folder.value())
        return {};
    return Error{.kind = ErrorKind::File, .tag = {}, .text = texts::leadsOut(shownPath(path))};
}

bool isSamePlace(Files& files, const std::filesystem::path& a, const std::filesystem::path& b) {
    if (a == b)
        return true;
    const auto resolvedA = files.resolve(a);
    const auto resolvedB = files.resolve(b);
    return resolvedA && resolvedB && resolvedA.value() == resolvedB.value();
}

} // namespace tallybook::platform
