#include "adapters/AppFolder.h"

#include <cstdlib>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace tallybook::adapters {

namespace {

std::filesystem::path fromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
}

std::filesystem::path homeFolder() {
    if (std::filesystem::path home = fromEnvironment("HOME"); home.is_absolute())
        return home;
    const passwd* user = getpwuid(getuid());
    return user == nullptr || user->pw_dir == nullptr ? std::filesystem::path("/")
                                                      : std::filesystem::path(user->pw_dir);
}

std::filesystem::path executableFolder() {
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    return failed ? std::filesystem::path() : program.parent_path();
}

} // namespace

platform::Surroundings surroundings() {
    return {.executableFolder = executableFolder(),
            .home = homeFolder(),
            .dataHome = fromEnvironment("XDG_DATA_HOME"),
            .configHome = fromEnvironment("XDG_CONFIG_HOME"),
            .runtime = fromEnvironment("XDG_RUNTIME_DIR")};
}

std::filesystem::path dataFolder(const platform::Surroundings& surroundings) {
    return surroundings.dataHome.is_absolute() ? surroundings.dataHome : surroundings.home / ".local" / "share";
}

std::string accountName() {
    const passwd* user = getpwuid(getuid());
    if (user != nullptr && user->pw_name != nullptr && *user->pw_name != '\0')
        return user->pw_name;
    const std::string name = fromEnvironment("USER").filename().string(); // an account that the system does not list
    return name.empty() || name == "." || name == ".." ? "user" : name;
}

} // namespace tallybook::adapters
