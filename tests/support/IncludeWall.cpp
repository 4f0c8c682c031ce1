#include "support/IncludeWall.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>

namespace tallybook::test {

namespace {

// The rooms of the core from the top down: each may include those behind it.
constexpr std::array<std::string_view, 11> kRooms = {"shell",    "convert", "print", "design",   "forms", "handheld",
                                                     "document", "pdb",     "calc",  "platform", "model"};

// The folders inside a large room from the bottom up: each may include those before it. What lies in the room itself
// stands above them all.
struct Alcoves {
    std::string_view room;
    std::vector<std::string_view> folders;
};
const std::array kAlcoves = {
    Alcoves{"core/calc", {"values", "cells", "expressions", "conditions"}},
    Alcoves{"cli", {"frame", "rows", "inspect", "schema", "script", "verbs"}},
    Alcoves{"desktop", {"platform", "grid", "forms", "dialogs", "document", "main"}},
};

std::string_view firstPart(std::string_view path) {
    return path.substr(0, path.find('/'));
}

std::string_view secondPart(std::string_view path) {
    const auto slash = path.find('/');
    return slash == std::string_view::npos ? std::string_view{} : firstPart(path.substr(slash + 1));
}

std::optional<std::size_t> levelOf(std::string_view room) {
    const auto found = std::find(kRooms.begin(), kRooms.end(), room);
    if (found == kRooms.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - kRooms.begin());
}

// The floor of a file's alcove in a room; one above the highest for a file of the room itself. Nothing for a file of
// another room or of an alcove that is not listed.
std::optional<std::size_t> floorOf(const Alcoves& alcoves, std::string_view file) {
    if (!file.starts_with(alcoves.room) || file.substr(alcoves.room.size(), 1) != "/")
        return std::nullopt;
    const std::string_view inside = file.substr(alcoves.room.size() + 1);
    if (inside.find('/') == std::string_view::npos)
        return alcoves.folders.size();
    const auto found = std::find(alcoves.folders.begin(), alcoves.folders.end(), firstPart(inside));
    if (found == alcoves.folders.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - alcoves.folders.begin());
}

std::string faultInRoom(std::string_view file, const Include& include) {
    for (const Alcoves& alcoves : kAlcoves) {
        const auto own = floorOf(alcoves, file);
        const auto other = floorOf(alcoves, include.name);
        if (own && other && *other > *own)
            return include.name + " stands above";
    }
    return "";
}

// Qt's own headers begin with a capital Q, or lie in a folder that does; ours and the standard's never do.
bool isQt(const Include& include) {
    return include.name.starts_with('Q') || include.name.starts_with("qt");
}

// Standard headers have neither a folder nor an ending.
bool isStandard(const Include& include) {
    return include.angled && !isQt(include) && include.name.find_first_of("./") == std::string::npos;
}

std::string faultInCore(std::string_view file, const Include& include) {
    if (isQt(include))
        return "the core has no Qt, but includes " + include.name;
    if (include.angled)
        return isStandard(include) ? "" : "the core has the standard library alone, but includes " + include.name;
    if (firstPart(include.name) != "core")
        return "the core includes " + include.name + " from outside";
    const auto own = levelOf(secondPart(file));
    const auto other = levelOf(secondPart(include.name));
    if (!own)
        return "the folder is no room of the core";
    if (!other)
        return include.name + " lies in no room of the core";
    if (*other < *own)
        return include.name + " stands above";
    return "";
}

// What the folders around the core may include of ours, themselves apart.
std::vector<std::string_view> reachOf(std::string_view folder) {
    if (folder == "adapters")
        return {"core"};
    if (folder == "cli" || folder == "desktop")
        return {"core", "adapters"};
    if (folder == "app")
        return {"core", "adapters", "desktop"};
    return {};
}

std::string faultAroundCore(std::string_view file, const Include& include) {
    const std::string_view folder = firstPart(file);
    const bool mayUseQt = folder == "desktop" || folder == "app";
    if (isQt(include))
        return mayUseQt ? "" : "only desktop/ and app/ have Qt, but this includes " + include.name;
    // A name without a folder is a generated header of the same folder ("ui_frmMain.h").
    if (include.angled || include.name.find('/') == std::string::npos)
        return "";
    const std::string_view target = firstPart(include.name);
    const auto reach = reachOf(folder);
    if (target == folder || std::find(reach.begin(), reach.end(), target) != reach.end())
        return "";
    return include.name + " is not for " + std::string(folder) + "/";
}

// The text without its comments; line breaks stay. Strings that hold comment signs do not occur before includes.
std::string withoutComments(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == "//") {
            i = std::min(text.find('\n', i), text.size());
        } else if (text.substr(i, 2) == "/*") {
            const std::size_t end = std::min(text.find("*/", i + 2), text.size());
            out.append(static_cast<std::size_t>(std::count(text.begin() + static_cast<std::ptrdiff_t>(i),
                                                           text.begin() + static_cast<std::ptrdiff_t>(end), '\n')),
                       '\n');
            i = end + 1;
            continue;
        }
        if (i < text.size())
            out += text[i];
    }
    return out;
}

// Takes the spaces in front of a text away.
std::string_view trimmed(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

std::optional<Include> parseInclude(std::string_view line, int number) {
    line = trimmed(line);
    if (!line.starts_with('#'))
        return std::nullopt;
    line = trimmed(line.substr(1));
    if (!line.starts_with("include"))
        return std::nullopt;
    line = trimmed(line.substr(7));
    if (!line.starts_with('<') && !line.starts_with('"'))
        return std::nullopt;
    const bool angled = line.front() == '<';
    const auto end = line.find(angled ? '>' : '"', 1);
    return Include{number, angled, std::string(line.substr(1, end - 1))};
}

std::string readText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

std::vector<Include> includesOf(std::string_view text) {
    std::vector<Include> includes;
    std::istringstream lines(withoutComments(text));
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (auto include = parseInclude(line, number))
            includes.push_back(*include);
    }
    return includes;
}

std::string faultOfInclude(std::string_view file, const Include& include) {
    const std::string fault = firstPart(file) == "core" ? faultInCore(file, include) : faultAroundCore(file, include);
    return fault.empty() ? faultInRoom(file, include) : fault;
}

std::vector<std::string> faultsBelow(const std::filesystem::path& sourceFolder) {
    std::vector<std::string> faults;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sourceFolder)) {
        const auto ending = entry.path().extension();
        if (ending != ".h" && ending != ".cpp")
            continue;
        const std::string file = entry.path().lexically_relative(sourceFolder).generic_string();
        for (const Include& include : includesOf(readText(entry.path()))) {
            const std::string fault = faultOfInclude(file, include);
            if (!fault.empty())
                faults.push_back(file + ":" + std::to_string(include.line) + ": " + fault);
        }
    }
    std::sort(faults.begin(), faults.end());
    return faults;
}

} // namespace tallybook::test
