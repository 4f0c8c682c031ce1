#include "cli/frame/Terminal.h"

#include "cli/frame/VisibleText.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <iostream>
#include <sys/select.h>
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

// Signals that end a program end the wait for a key instead, which so puts the echo back and removes its files:
// Ctrl+C, the end of the terminal, a polite kill. They are held back but while the wait runs, so that none is missed.
// Everything is as it was before afterwards.
class InterruptEndsWait {
public:
    InterruptEndsWait() {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        sigemptyset(&m_signals);
        for (std::size_t i = 0; i < kEndings.size(); ++i) {
            sigaction(kEndings[i], &action, &m_before[i]);
            sigaddset(&m_signals, kEndings[i]);
        }
        sigprocmask(SIG_BLOCK, &m_signals, &m_mask);
    }
    ~InterruptEndsWait() {
        sigprocmask(SIG_SETMASK, &m_mask, nullptr);
        for (std::size_t i = 0; i < kEndings.size(); ++i)
            sigaction(kEndings[i], &m_before[i], nullptr);
    }
    InterruptEndsWait(const InterruptEndsWait&) = delete;
    InterruptEndsWait& operator=(const InterruptEndsWait&) = delete;

    // True when standard input has something to read, and none of them came first.
    bool wait() const {
        fd_set inputs;
        FD_ZERO(&inputs);
        FD_SET(STDIN_FILENO, &inputs);
        const bool ready = pselect(STDIN_FILENO + 1, &inputs, nullptr, nullptr, nullptr, &m_mask) == 1;
        sigset_t pending;
        sigpending(&pending); // a wait that finds something to read does not look at signals
        return ready && std::ranges::none_of(kEndings, [&](int s) { return sigismember(&pending, s) != 0; });
    }

private:
    static constexpr std::array kEndings = {SIGINT, SIGTERM, SIGHUP};

    std::array<struct sigaction, kEndings.size()> m_before{};
    sigset_t m_signals{};
    sigset_t m_mask{};
};

// Straight from the terminal: a stream would read on behind an interrupt.
std::optional<std::string> readLine(const InterruptEndsWait& interrupt) {
    std::string line;
    char c = 0;
    while (interrupt.wait() && read(STDIN_FILENO, &c, 1) == 1) {
        if (c == '\n')
            return line;
        line += c;
    }
    return std::nullopt;
}

volatile std::sig_atomic_t g_readerIsGone = 0; // a signal has no other place to leave its mark

} // namespace

Terminal Terminal::standard() {
    std::signal(SIGPIPE, [](int) { g_readerIsGone = 1; });
    return {std::cin, std::cout, std::cerr, isatty(STDIN_FILENO) != 0, isatty(STDOUT_FILENO) != 0};
}

bool Terminal::readerIsGone() {
    return g_readerIsGone != 0;
}

void Terminal::endByReader() {
    std::signal(SIGPIPE, SIG_DFL);
    std::raise(SIGPIPE);
}

void Terminal::say(std::string_view text) const {
    if (readerIsGone())
        return;
    err << "tallybook: ";
    if (!m_subject.empty())
        err << visibleText(m_subject) << ": ";
    err << visibleLine(text) << '\n';
}

std::optional<std::string> Terminal::ask(std::string_view prompt) {
    if (!m_interactive)
        return std::nullopt;
    const InterruptEndsWait interrupt;
    err << visibleText(prompt) << std::flush;
    return readLine(interrupt);
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
