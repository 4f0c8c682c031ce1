// Runs the real command as a process of its own.
#pragma once

#include "adapters/TemporaryFolder.h"
#include "core/platform/Files.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tallybook::cli {

struct CommandResult {
    int code = -1;  // exit code, or -1 when the process did not end by itself
    int signal = 0; // that ended it
    std::string out;
    std::string err;
};

// The line on standard error that says a text about a file.
inline std::string said(const std::string& subject, const std::string& text) {
    return "tallybook: " + subject + (subject.empty() ? "" : ": ") + text + '\n';
}

// A folder for a test's files. The command finds its temporary files in a folder of their own beside them.
class CommandTest {
public:
    CommandTest();

    // Path of a file in the folder.
    std::filesystem::path path(const std::string& name) const { return m_folder.path() / "files" / name; }
    void put(const std::string& name, const platform::Bytes& bytes) const;
    void put(const std::string& name, const std::string& text) const;
    platform::Bytes bytes(const std::string& name) const;
    std::string text(const std::string& name) const;

    // Runs the command in the folder, its standard input no terminal. With `output` that file gets its output.
    CommandResult run(const std::vector<std::string>& arguments, const std::string& input = {},
                      const std::filesystem::path& output = {}) const;

    // Runs it with an output that nobody reads any more.
    CommandResult runWithoutReader(const std::vector<std::string>& arguments) const;

    // Runs it behind a terminal that types `typed` once the prompt has appeared, each line as it is asked for.
    // Output and messages come together in `out`.
    CommandResult runAtTerminal(const std::vector<std::string>& arguments, const std::string& prompt,
                                const std::string& typed) const;

    // Runs it until it has written something to its output, which nobody reads on, and sends it a signal. Gives the
    // signal that ended it, or -1; `during` runs ahead of the signal.
    int runUntilSignal(const std::vector<std::string>& arguments, const std::string& input, int signal,
                       const std::function<void()>& during) const;

    // The path of the command.
    static std::string command();
    // The folder for the command's temporary files.
    std::filesystem::path temporaryFolder() const { return m_folder.path() / "tmp"; }
    // Whether the command has left anything in the folder for temporary files.
    bool temporaryFolderIsEmpty() const;

private:
    adapters::TemporaryFolder m_folder;
};

} // namespace tallybook::cli
