// Files that fail where a test wants it. Every call of the interface counts, those of an open file too.
#pragma once

#include "core/platform/Files.h"

#include <algorithm>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tallybook::test {

// Passes every call on to other files, which outlive it, but for the one that is to fail.
class FailingFiles : public platform::Files {
public:
    using Path = std::filesystem::path;

    enum class Mode {
        Once,   // the call fails, the next ones work
        Onward, // as if the program had stopped there: nothing is done from that call on
    };

    explicit FailingFiles(platform::Files& under) : m_under(under) {}

    int failAt = 0; // which call, from 1; 0 for none
    Mode mode = Mode::Once;
    std::errc number = std::errc::io_error;
    std::size_t mostPerWrite = static_cast<std::size_t>(-1); // bytes that one write takes
    std::function<void(int call)> before;                    // runs before each call

    int calls() const { return static_cast<int>(m_names.size()); }
    // The calls made so far, by name: "state", "write".
    const std::vector<std::string>& names() const { return m_names; }
    // Forgets the calls and sets which of the next ones fails.
    void restart(int fail) {
        m_names.clear();
        failAt = fail;
    }

    platform::Result<platform::FileState> state(const Path& path) override {
        return pass("state", path, [&] { return m_under.state(path); });
    }
    platform::Result<platform::Bytes> read(const Path& path) override {
        return pass("read", path, [&] { return m_under.read(path); });
    }
    platform::Result<platform::Bytes> readPart(const Path& path, std::uint64_t offset, std::size_t count) override {
        return pass("readPart", path, [&] { return m_under.readPart(path, offset, count); });
    }
    platform::Result<std::unique_ptr<platform::OutputFile>> create(const Path& path, const Path& like) override {
        return pass("create", path, [&]() -> platform::Result<std::unique_ptr<platform::OutputFile>> {
            auto made = m_under.create(path, like);
            if (!made)
                return made;
            return std::unique_ptr<platform::OutputFile>(
                std::make_unique<Output>(*this, path, std::move(made).value()));
        });
    }
    platform::Status rename(const Path& from, const Path& to) override {
        return pass("rename", to, [&] { return m_under.rename(from, to); });
    }
    platform::Status remove(const Path& path) override {
        return pass("remove", path, [&] { return m_under.remove(path); });
    }
    platform::Status makeFolder(const Path& path) override {
        return pass("makeFolder", path, [&] { return m_under.makeFolder(path); });
    }
    platform::Status syncFolder(const Path& path) override {
        return pass("syncFolder", path, [&] { return m_under.syncFolder(path); });
    }
    platform::Result<std::unique_ptr<platform::FolderLock>> lockFolder(const Path& path) override {
        return pass("lockFolder", path, [&] { return m_under.lockFolder(path); });
    }
    platform::Result<std::vector<Path>> list(const Path& folder) override {
        return pass("list", folder, [&] { return m_under.list(folder); });
    }
    platform::Result<Path> resolve(const Path& path) override {
        return pass("resolve", path, [&] { return m_under.resolve(path); });
    }

private:
    class Output : public platform::OutputFile {
    public:
        Output(FailingFiles& owner, Path path, std::unique_ptr<platform::OutputFile> under)
            : m_owner(owner), m_path(std::move(path)), m_under(std::move(under)) {}

        platform::Result<std::size_t> write(platform::ByteSpan bytes) override {
            const auto part = bytes.first(std::min(bytes.size(), m_owner.mostPerWrite));
            return m_owner.pass("write", m_path, [&] { return m_under->write(part); });
        }
        platform::Status sync() override {
            return m_owner.pass("sync", m_path, [&] { return m_under->sync(); });
        }
        platform::Status close() override {
            return m_owner.pass("close", m_path, [&] { return m_under->close(); });
        }

    private:
        FailingFiles& m_owner;
        Path m_path;
        std::unique_ptr<platform::OutputFile> m_under;
    };

    template <class Call> auto pass(const char* name, const Path& path, Call call) -> decltype(call()) {
        m_names.emplace_back(name);
        if (before)
            before(calls());
        const bool fails = failAt > 0 && (mode == Mode::Once ? calls() == failAt : calls() >= failAt);
        if (fails)
            return platform::Error{.kind = platform::ErrorKind::File,
                                   .tag = {},
                                   .text = std::string("The call ") + name + " failed for \"" + path.string() + "\".",
                                   .number = static_cast<int>(number)};
        return call();
    }

    platform::Files& m_under;
    std::vector<std::string> m_names;
};

} // namespace tallybook::test
