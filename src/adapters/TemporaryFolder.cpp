#include "adapters/TemporaryFolder.h"

#include <cstdlib>
#include <string>
#include <system_error>

namespace tallybook::adapters {

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
    if (error)
        return;
    std::string name = (parent / "tallybook-XXXXXX").string();
    if (mkdtemp(name.data()) != nullptr)
        m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    if (!m_path.empty())
        std::filesystem::remove_all(m_path, ignored);
}

} // namespace tallybook::adapters
