// A folder of the test's own that goes with it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <system_error>

namespace tallybook::test {

class TempFolder {
public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tallybook-XXXXXX").string();
        m_path = mkdtemp(name.data()) == nullptr ? std::filesystem::path() : std::filesystem::path(name);
    }
    ~TempFolder() {
        std::error_code ignored;
        if (!m_path.empty())
            std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(std::string_view name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

inline void putFile(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary) << content;
}

inline std::string getFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// Names in a folder, sorted, with a blank between.
inline std::string namesIn(const std::filesystem::path& folder) {
    std::string names;
    std::set<std::string> sorted;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        sorted.insert(entry.path().filename().string());
    for (const std::string& name : sorted)
        names += (names.empty() ? "" : " ") + name;
    return names;
}

} // namespace tallybook::test
