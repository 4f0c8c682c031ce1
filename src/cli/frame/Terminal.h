// The command's three streams, and what can be asked of a person behind them.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::cli {

// All texts are UTF-8.
class Terminal {
public:
    Terminal(std::istream& input, std::ostream& output, std::ostream& messages, bool interactive)
        : in(input), out(output), err(messages), m_interactive(interactive) {}

    // The process's own streams; interactive when standard input is a terminal.
    static Terminal standard();

    bool interactive() const { return m_interactive; }

    // A line typed behind a prompt; nothing at the end of input, at Ctrl+C or when nobody sits there.
    std::optional<std::string> ask(std::string_view prompt);
    // The same without echo.
    std::optional<std::string> askSecret(std::string_view prompt);

    std::istream& in;
    std::ostream& out;
    std::ostream& err;

private:
    bool m_interactive;
};

} // namespace tallybook::cli
