#include "core/handheld/DatabaseList.h"

#include "core/calc/values/Dates.h"
#include "core/calc/values/Text.h"
#include "core/document/joins/ExternalFiles.h"
#include "core/pdb/Container.h"
#include "core/pdb/Layout.h"
#include "core/pdb/Names.h"
#include "core/platform/Containment.h"
#include "core/platform/Paths.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tallybook::handheld {

namespace {

using platform::Files;
using platform::Result;
using Path = std::filesystem::path;

constexpr std::size_t kPrefixLength = pdb::kPrefix2x.size();
constexpr std::size_t kShortestName = 9; // a prefix, one character and the extension
// The handheld's own lists of categories, in the form that names are compared in.
constexpr std::array<std::string_view, 3> kSystemDatabases = {
    "MSA_SYSDBCATEGORIES.PDB", "MSA_MOSSBANKSYSCATEGORIES.PDB", "MS2_MOSSBANKSYSCATEGORIES.PDB"};

bool isSystemDatabase(const Path& file) {
    return std::ranges::find(kSystemDatabases, platform::foldedName(file.string())) != kSystemDatabases.end();
}

bool hasEnding(const Path& file, std::string_view prefix) {
    const std::string name = platform::foldedName(file.string());
    return name.starts_with(prefix) && name.ends_with(".PDB") && name.size() >= kShortestName;
}

// The regular files of a folder that a test of their names lets pass. Those that a link leads out of the folder to
// are not the user's.
template <class Test> Result<std::vector<Path>> filesOf(Files& files, const Path& folder, Test wanted) {
    auto names = files.list(folder);
    if (!names)
        return names.error();
    std::erase_if(names.value(), [&](const Path& name) {
        if (!wanted(name) || isSystemDatabase(name))
            return true;
        const auto state = files.state(folder / name);
        return !state || state.value().kind != platform::FileKind::Regular ||
               !platform::staysInFolder(files, folder / name);
    });
    return names;
}

bool namedBefore(const std::string& a, const std::string& b) {
    return calc::compareText(a, b, calc::TextCase::Folded) < 0;
}

std::string displayName(const Path& file) {
    const std::string name = pdb::RemoveUnderscore(platform::shownPath(file));
    return name.substr(kPrefixLength, name.size() - kPrefixLength - pdb::kExtension.size());
}

std::string withoutPrefix(const std::string& name) {
    const std::string_view start = std::string_view(name).substr(0, kPrefixLength);
    const bool prefixed = calc::equalText(start, pdb::kPrefix2x, calc::TextCase::Folded) ||
                          calc::equalText(start, pdb::kPrefix1x, calc::TextCase::Folded);
    return prefixed ? name.substr(kPrefixLength) : name;
}

// A row, or nothing for a file that is no database.
std::optional<DatabaseRow> rowOf(Files& files, const Path& folder, const Path& file) {
    const int records = document::numberOfRecords(files, folder / file);
    const auto state = files.state(folder / file);
    const auto head = files.readPart(folder / file, 0, pdb::layout::kHeaderSize);
    if (records < 0 || !state || !head)
        return std::nullopt;
    pdb::ByteReader in(head.value());
    const auto header = pdb::readheader20(in);
    if (!header)
        return std::nullopt;
    return DatabaseRow{.name = withoutPrefix(header.value().name),
                       .format = hasEnding(file, pdb::kPrefix1x) ? kFormat1x : kFormat2x,
                       .records = records,
                       .modified = state.value().modified,
                       .file = file};
}

} // namespace

Result<std::vector<DatabaseEntry>> getDBList20(Files& files, const Path& folder, NewEntry withNew) {
    const auto names = filesOf(files, folder, [](const Path& name) { return hasEnding(name, pdb::kPrefix2x); });
    if (!names)
        return names.error();
    std::vector<DatabaseEntry> entries;
    for (const Path& name : names.value())
        entries.push_back({displayName(name), name});
    std::ranges::stable_sort(entries, namedBefore, &DatabaseEntry::name);
    if (withNew == NewEntry::With)
        entries.insert(entries.begin(), {std::string(kNewDatabaseEntry), {}});
    return entries;
}

Result<std::vector<DatabaseRow>> getDBList(Files& files, const Path& folder) {
    const auto names = filesOf(files, folder, [](const Path& name) {
        return hasEnding(name, pdb::kPrefix2x) || hasEnding(name, pdb::kPrefix1x);
    });
    if (!names)
        return names.error();
    std::vector<DatabaseRow> rows;
    for (const Path& name : names.value())
        if (auto row = rowOf(files, folder, name))
            rows.push_back(std::move(*row));
    std::ranges::stable_sort(rows, namedBefore, &DatabaseRow::name);
    return rows;
}

std::string lastModifiedText(const platform::LocalTime& time, const platform::Regional& regional) {
    return calc::shortDate({time.year, time.month, time.day}, regional) + ' ' +
           calc::longTime({time.hour, time.minute, time.second}, regional);
}

} // namespace tallybook::handheld
