// Desktop software of the handheld whose users and queue a test sets, and whose calls it can read.
#pragma once

#include "core/handheld/HandheldDesktop.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace tallybook::test {

class FakeDesktop : public handheld::HandheldDesktop {
public:
    struct User {
        std::string name;
        std::filesystem::path directory;
    };

    std::filesystem::path core = "/palm";
    std::vector<User> users;
    std::optional<int> count;                   // instead of the number of users
    std::optional<platform::Error> fault;       // of UmGetUserCount
    std::optional<platform::Error> lost;        // of UmGetUserDirectory
    std::deque<platform::Result<int>> installs; // what the next calls of PltInstallFile give; kQueued after these
    platform::Status removal;
    std::vector<std::string> calls; // of the queue: "install Ann /palm/x", "remove Ann /palm/x"

    platform::Result<std::filesystem::path> CmGetCorePath() override { return core; }
    platform::Result<int> UmGetUserCount() override {
        if (fault)
            return *fault;
        return count.value_or(static_cast<int>(users.size()));
    }
    platform::Result<std::uint32_t> UmGetUserID(int index) override {
        return static_cast<std::uint32_t>(index + 500);
    }
    platform::Result<std::string> UmGetUserName(std::uint32_t id) override { return users.at(id - 500).name; }
    platform::Result<std::filesystem::path> UmGetUserDirectory(std::uint32_t id) override {
        if (lost)
            return *lost;
        return users.at(id - 500).directory;
    }
    platform::Result<int> PltInstallFile(const std::string& user, const std::filesystem::path& path) override {
        calls.push_back("install " + user + ' ' + path.string());
        if (installs.empty())
            return handheld::kQueued;
        const platform::Result<int> next = installs.front();
        installs.pop_front();
        return next;
    }
    platform::Status PltRemoveInstallFile(const std::string& user, const std::filesystem::path& path) override {
        calls.push_back("remove " + user + ' ' + path.string());
        return removal;
    }
};

inline platform::Error refusal(const std::string& text) {
    return {.kind = platform::ErrorKind::File, .tag = {}, .text = text};
}

} // namespace tallybook::test
