#include "adapters/TemporaryFolder.h"

#include "adapters/EndBySignal.h"
#include "adapters/LeftOvers.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <system_error>

namespace tallybook::adapters {

namespace {

constexpr const char* kStem = "tallybook-temporary-";

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    if (error)
        return;
    sweepTemporaryFolders(parent, kStem);
    std::string name = (parent / (std::string(kStem) + "XXXXXX")).string();
    const SignalsWait wait;
    if (mkdtemp(name.data()) == nullptr)
        return;
    m_path = name;
    m_held = FileHandle(retried([&] { return open(m_path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    holdAsOwner(m_held.get());
    noteUnfinished(m_path);
}

TemporaryFolder::~TemporaryFolder() {
    if (m_path.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
    forgetUnfinished(m_path);
}

} // namespace tallybook::adapters
