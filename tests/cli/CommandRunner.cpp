#include "cli/CommandRunner.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/wait.h>
#include <unistd.h>

namespace tallybook::cli {

namespace {

std::string readText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void redirect(const std::filesystem::path& path, int flags, int descriptor) {
    const int file = open(path.c_str(), flags, 0600);
    if (file < 0 || dup2(file, descriptor) < 0)
        _exit(126);
    close(file);
}

// Never returns.
[[noreturn]] void execute(const std::vector<std::string>& arguments, const std::filesystem::path& folder) {
    if (chdir((folder / "files").c_str()) != 0)
        _exit(126);
    alarm(120); // a command that waits for ever fails its test
    setenv("TMPDIR", (folder / "tmp").c_str(), 1);
    std::vector<char*> all = {const_cast<char*>(TALLYBOOK_COMMAND)};
    for (const std::string& argument : arguments)
        all.push_back(const_cast<char*>(argument.c_str()));
    all.push_back(nullptr);
    execv(TALLYBOOK_COMMAND, all.data());
    _exit(127);
}

int exitCode(pid_t process, int* signal = nullptr) {
    int status = 0;
    const bool ended = waitpid(process, &status, 0) == process;
    if (ended && signal != nullptr && WIFSIGNALED(status))
        *signal = WTERMSIG(status);
    return ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The side of a new terminal that the process gets; the other one is given back.
int openTerminal(std::string& name) {
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return -1;
    name = ptsname(master);
    return master;
}

} // namespace

CommandTest::CommandTest() {
    std::filesystem::create_directory(m_folder.path() / "files");
    std::filesystem::create_directory(m_folder.path() / "tmp");
}

void CommandTest::put(const std::string& name, const platform::Bytes& bytes) const {
    put(name, std::string(bytes.begin(), bytes.end()));
}

void CommandTest::put(const std::string& name, const std::string& text) const {
    std::ofstream file(path(name), std::ios::binary);
    file << text;
    file.close();
    EXPECT_TRUE(file) << name;
}

platform::Bytes CommandTest::bytes(const std::string& name) const {
    const std::string all = text(name);
    return {all.begin(), all.end()};
}

std::string CommandTest::text(const std::string& name) const {
    EXPECT_TRUE(std::filesystem::exists(path(name))) << name;
    return readText(path(name));
}

CommandResult CommandTest::run(const std::vector<std::string>& arguments, const std::string& input,
                               const std::filesystem::path& output) const {
    const std::filesystem::path in = m_folder.path() / "in";
    const std::filesystem::path out = output.empty() ? m_folder.path() / "out" : output;
    const std::filesystem::path err = m_folder.path() / "err";
    std::ofstream(in, std::ios::binary) << input;
    const pid_t process = fork();
    if (process == 0) {
        redirect(in, O_RDONLY, STDIN_FILENO);
        redirect(out, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        redirect(err, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        execute(arguments, m_folder.path());
    }
    CommandResult result;
    result.code = exitCode(process);
    if (output.empty())
        result.out = readText(out);
    result.err = readText(err);
    return result;
}

CommandResult CommandTest::runWithoutReader(const std::vector<std::string>& arguments) const {
    const std::filesystem::path err = m_folder.path() / "err";
    int ends[2];
    if (pipe(ends) != 0)
        return {};
    close(ends[0]);
    const pid_t process = fork();
    if (process == 0) {
        dup2(ends[1], STDOUT_FILENO);
        redirect(err, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        execute(arguments, m_folder.path());
    }
    close(ends[1]);
    CommandResult result;
    result.code = exitCode(process, &result.signal);
    result.err = readText(err);
    return result;
}

CommandResult CommandTest::runAtTerminal(const std::vector<std::string>& arguments, const std::string& prompt,
                                         const std::string& typed) const {
    std::string name;
    const int master = openTerminal(name);
    EXPECT_GE(master, 0) << "no terminal could be made";
    if (master < 0)
        return {};
    const pid_t process = fork();
    if (process == 0) {
        close(master);
        setsid();
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            redirect(name, O_RDWR, descriptor);
        execute(arguments, m_folder.path());
    }
    CommandResult result;
    std::size_t answered = 0; // prompts answered so far end here
    std::string rest = typed;
    char buffer[256];
    for (;;) {
        const ssize_t count = read(master, buffer, sizeof buffer);
        if (count <= 0)
            break; // the terminal's other side is gone
        result.out.append(buffer, static_cast<std::size_t>(count));
        const std::size_t found = result.out.find(prompt, answered);
        if (found == std::string::npos || rest.empty())
            continue;
        answered = found + prompt.size();
        const std::size_t end = rest.find('\n') + 1;
        EXPECT_EQ(write(master, rest.data(), end), static_cast<ssize_t>(end));
        rest.erase(0, end);
    }
    result.code = exitCode(process);
    close(master);
    return result;
}

std::string CommandTest::command() {
    return TALLYBOOK_COMMAND;
}

int CommandTest::runUntilSignal(const std::vector<std::string>& arguments, const std::string& input, int signal,
                                const std::function<void()>& during) const {
    const std::filesystem::path in = m_folder.path() / "in";
    std::ofstream(in, std::ios::binary) << input;
    int output[2];
    EXPECT_EQ(pipe(output), 0);
    const pid_t process = fork();
    if (process == 0) {
        redirect(in, O_RDONLY, STDIN_FILENO);
        redirect("/dev/null", O_WRONLY, STDERR_FILENO);
        dup2(output[1], STDOUT_FILENO);
        close(output[0]);
        close(output[1]);
        execute(arguments, m_folder.path());
    }
    close(output[1]);
    char first = 0;
    EXPECT_EQ(read(output[0], &first, 1), 1);
    during();
    kill(process, signal);
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    close(output[0]);
    return WIFSIGNALED(status) ? WTERMSIG(status) : -1;
}

bool CommandTest::temporaryFolderIsEmpty() const {
    return std::filesystem::is_empty(temporaryFolder());
}

} // namespace tallybook::cli
