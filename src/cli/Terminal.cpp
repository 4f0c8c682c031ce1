#include "cli/Terminal.h"

#include <iostream>
#include <termios.h>
#include <unistd.h>

namespace tallybook::cli {

namespace {

// Echo of standard input off; what it was before afterwards.
class NoEcho {
public:
    NoEcho() : m_known(tcgetattr(STDIN_FILENO, &m_before) == 0) {
        if (!m_known)
            return;
        termios silent = m_before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~NoEcho() {
        if (m_known)
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
    }
    NoEcho(const NoEcho&) = delete;
    NoEcho& operator=(const NoEcho&) = delete;

private:
    termios m_before{};
    bool m_known;
};

} // namespace

Terminal Terminal::standard() {
    return {std::cin, std::cout, std::cerr, isatty(STDIN_FILENO) != 0};
}

std::optional<std::string> Terminal::ask(std::string_view prompt) {
    if (!m_interactive)
        return std::nullopt;
    err << prompt << std::flush;
    std::string line;
    if (!std::getline(in, line))
        return std::nullopt;
    return line;
}

std::optional<std::string> Terminal::askSecret(std::string_view prompt) {
    if (!m_interactive)
        return std::nullopt;
    const NoEcho silence;
    std::optional<std::string> line = ask(prompt);
    err << '\n'; // the one that was typed did not show
    return line;
}

} // namespace tallybook::cli
