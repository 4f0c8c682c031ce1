#include "core/platform/Paths.h"

#include "core/platform/Ansi.h"

#include <array>
#include <string_view>

namespace tallybook::platform {

namespace {

// The pairs of the code page that do not stand 0x20 apart within one lead byte.
struct Pair {
    std::string_view lower;
    std::string_view upper;
};
constexpr std::array<Pair, 4> kPairs = {{
    {"\xC3\xBF", "\xC5\xB8"}, // y with diaeresis
    {"\xC5\xA1", "\xC5\xA0"}, // s with caron
    {"\xC5\x93", "\xC5\x92"}, // oe
    {"\xC5\xBE", "\xC5\xBD"}, // z with caron
}};

void foldLetter(char& first, char& second) {
    const auto low = static_cast<unsigned char>(second);
    if (first == '\xC3' && low >= 0xA0 && low <= 0xBE && low != 0xB7) { // B7 is the division sign
        second = static_cast<char>(low - 0x20);
        return;
    }
    for (const Pair& pair : kPairs)
        if (first == pair.lower[0] && second == pair.lower[1]) {
            first = pair.upper[0];
            second = pair.upper[1];
            return;
        }
}

} // namespace

std::string shownPath(const std::filesystem::path& path) {
    return ansi::fromUtf8(path.string());
}

std::string foldedName(const std::string& name) {
    std::string folded = name;
    for (std::size_t i = 0; i < folded.size(); ++i) {
        if (folded[i] >= 'a' && folded[i] <= 'z')
            folded[i] = static_cast<char>(folded[i] - ('a' - 'A'));
        else if (i + 1 < folded.size())
            foldLetter(folded[i], folded[i + 1]);
    }
    return folded;
}

std::filesystem::path findIgnoringCase(Files& files, const std::filesystem::path& path) {
    const Result<FileState> exact = files.state(path);
    if (!exact || exact.value().kind != FileKind::Missing)
        return path;
    const auto names = files.list(path.has_parent_path() ? path.parent_path() : std::filesystem::path("."));
    if (!names)
        return path;
    const std::string wanted = foldedName(path.filename().string());
    for (const std::filesystem::path& name : names.value())
        if (foldedName(name.string()) == wanted)
            return path.parent_path() / name;
    return path;
}

} // namespace tallybook::platform
