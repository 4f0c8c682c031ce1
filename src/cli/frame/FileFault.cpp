#include "cli/frame/FileFault.h"

#include "cli/frame/Texts.h"
#include "core/document/file/OpenSave.h"
#include "core/pdb/Layout.h"
#include "core/pdb/Names.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace tallybook::cli {

namespace {

constexpr std::size_t kCreatorPosition = 64;

bool hasPresentCreator(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 4> creator{};
    stream.seekg(kCreatorPosition);
    stream.read(creator.data(), creator.size());
    return stream && std::string_view(creator.data(), creator.size()) == pdb::layout::kCreator;
}

} // namespace

std::string faultOfAccess(const std::filesystem::path& file) {
    std::error_code ignored;
    if (access(file.c_str(), R_OK) != 0)
        return cannotBeOpened(std::strerror(errno));
    return std::filesystem::is_directory(file, ignored) ? cannotBeOpened(std::strerror(EISDIR)) : std::string();
}

std::string faultOfFile(const std::filesystem::path& file) {
    std::error_code ignored;
    const bool there = std::filesystem::exists(file, ignored);
    const std::filesystem::path path = there ? file : document::savedPath(std::filesystem::absolute(file));
    if (std::string fault = faultOfAccess(path); !fault.empty())
        return fault;
    const bool lacksPrefix = !pdb::has2xPrefix(path.filename().string()) && hasPresentCreator(path);
    return lacksPrefix ? std::string(kNoPrefix) : std::string();
}

} // namespace tallybook::cli
