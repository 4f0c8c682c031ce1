#include "core/shell/RecentFiles.h"

#include "core/platform/Paths.h"
#include "core/platform/Settings.h"

#include <algorithm>
#include <charconv>

namespace tallybook::shell {

namespace {

constexpr std::string_view kSection = "Recent Files";
constexpr std::string_view kNoEntry = "0"; // what an entry that is not there reads as

std::string entrySection(int number) {
    return std::string(kSection) + "\\File" + std::to_string(number);
}

int countOf(const platform::Settings& settings) {
    const std::string text = settings.get(kSection, "Files", "0");
    int count = 0;
    std::from_chars(text.data(), text.data() + text.size(), count);
    return std::clamp(count, 0, kRecentFiles);
}

bool sameFile(const RecentFile& a, const RecentFile& b) {
    return platform::foldedName(a.name) == platform::foldedName(b.name) &&
           platform::foldedName(a.folder) == platform::foldedName(b.folder);
}

// Settings that came from a system with the other separator.
void useOwnSeparators(RecentFile& file) {
    if (file.folder.starts_with('/'))
        return; // here it is a character like any other
    std::replace(file.folder.begin(), file.folder.end(), '\\', '/');
    if (file.folder.ends_with('/'))
        file.folder.pop_back();
}

RecentFile split(std::string_view path) {
    const auto separator = path.rfind('/');
    if (separator == std::string_view::npos)
        return {std::string(path), {}};
    return {std::string(path.substr(separator + 1)), std::string(path.substr(0, separator))};
}

} // namespace

RecentList GetLatestList(const platform::Settings& settings) {
    RecentList list;
    const int count = countOf(settings);
    for (int number = 0; number < count; ++number) {
        const std::string section = entrySection(number);
        RecentFile entry{settings.get(section, "Name", kNoEntry), settings.get(section, "Path", kNoEntry)};
        useOwnSeparators(entry);
        if (entry.name != kNoEntry)
            list.push_back(std::move(entry));
    }
    return list;
}

RecentList BuildUsableFileList(std::string_view path, const RecentList& list) {
    RecentList result{split(path)};
    for (const RecentFile& entry : list)
        if (!sameFile(entry, result.front()))
            result.push_back(entry);
    if (result.size() > kRecentFiles)
        result.resize(kRecentFiles);
    return result;
}

void SaveMRUListToRegistry(const RecentList& list, platform::Settings& settings) {
    settings.set(kSection, "Files", std::to_string(list.size()));
    for (int number = 0; number < kRecentFiles; ++number) {
        const std::string section = entrySection(number);
        settings.removeSection(section);
        const auto index = static_cast<std::size_t>(number);
        if (index >= list.size())
            continue;
        settings.set(section, "Name", list[index].name);
        settings.set(section, "Path", list[index].folder);
    }
}

std::vector<std::string> UpdateMenuList(const RecentList& list) {
    std::vector<std::string> captions;
    for (const RecentFile& entry : list)
        captions.push_back(std::to_string(captions.size() + 1) + ' ' + entry.path());
    return captions;
}

} // namespace tallybook::shell
