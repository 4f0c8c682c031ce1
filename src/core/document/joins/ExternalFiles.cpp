#include "core/document/joins/ExternalFiles.h"

#include "core/calc/values/Text.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/platform/Ansi.h"
#include "core/platform/Containment.h"
#include "core/platform/Paths.h"

#include <vector>

namespace tallybook::document {

namespace {

using Path = std::filesystem::path;

bool hasPrefix(std::string_view name) {
    return pdb::has2xPrefix(name) || pdb::has1xPrefix(name);
}

std::string withExtension(std::string_view source) {
    std::string name(source);
    if (!calc::upper(name).ends_with(calc::upper(pdb::kExtension)))
        name += pdb::kExtension;
    return name;
}

// A file's name and nothing that leads elsewhere.
bool isPlainName(std::string_view source) {
    return !source.empty() && source.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

// The names that a source may have on the disk, the first that exists counts.
std::vector<std::string> namesOf(std::string_view source, OlderFiles older) {
    const std::string given = withExtension(source);
    std::vector<std::string> names;
    for (const std::string& name : {pdb::addUnderscore20(given), given}) {
        if (hasPrefix(name))
            names.push_back(name);
        else
            names.push_back(std::string(pdb::kPrefix2x) + name);
    }
    if (!hasPrefix(given) && older == OlderFiles::Yes)
        names.push_back(std::string(pdb::kPrefix1x) + pdb::addUnderscore20(given));
    return names;
}

// A regular file that lies in the folder itself, and is not led out of it by a link.
bool isThere(platform::Files& files, const Path& path) {
    const auto state = files.state(path);
    return state && state.value().kind == platform::FileKind::Regular && platform::staysInFolder(files, path);
}

} // namespace

std::string externalFileName(std::string_view source) {
    return namesOf(source, OlderFiles::No).front();
}

std::optional<Path> findExternalFile(platform::Files& files, const Path& folder, std::string_view source,
                                     OlderFiles older) {
    if (folder.empty() || !isPlainName(source))
        return std::nullopt;
    for (const std::string& name : namesOf(source, older)) {
        const Path path = platform::findIgnoringCase(files, folder / platform::ansi::toUtf8(name));
        if (isThere(files, path))
            return path;
    }
    return std::nullopt;
}

int getNumberRecs(platform::Files& files, const Path& folder, std::string_view source) {
    const auto path = findExternalFile(files, folder, source, OlderFiles::Yes);
    return path ? numberOfRecords(files, *path) : 0;
}

int numberOfRecords(platform::Files& files, const Path& file) {
    const auto head = files.readPart(file, 0, pdb::kHeadBytes);
    if (!head)
        return kInvalidDatabase;
    const bool older = pdb::has1xPrefix(file.filename().string());
    const auto count = pdb::countDataRecords(head.value(), older ? pdb::FileFormat::Older : pdb::FileFormat::Present);
    return count ? count.value() : kInvalidDatabase;
}

} // namespace tallybook::document
