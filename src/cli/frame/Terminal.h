// The command's three streams, and what can be asked of a person behind them.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tallybook::cli {

// All texts are UTF-8.
class Terminal {
public:
    Terminal(std::istream& input, std::ostream& output, std::ostream& messages, bool interactive,
             bool outputIsTerminal = false)
        : in(input), out(output), err(messages), m_interactive(interactive), m_outputIsTerminal(outputIsTerminal) {}

    // The process's own streams; interactive when standard input is a terminal. A reader that goes away ("| head")
    // does not end the process from then on, so that temporary folders are still removed: it is a failed write.
    static Terminal standard();

    bool interactive() const { return m_interactive; }
    bool outputIsTerminal() const { return m_outputIsTerminal; }

    // Whether somebody who read one of the streams has gone away. Nobody is told then: it is no failure of ours.
    static bool readerIsGone();
    // Ends the process by the signal that a reader who goes away sends.
    static void endByReader();

    // A message on standard error, on one line: "tallybook: SUBJECT: text".
    void say(std::string_view text) const;
    // The file that messages are about from now on; empty for none.
    void setSubject(std::string subject) { m_subject = std::move(subject); }

    // A line typed behind a prompt; nothing at the end of input, at Ctrl+C or when nobody sits there.
    std::optional<std::string> ask(std::string_view prompt);
    // The same without echo.
    std::optional<std::string> askSecret(std::string_view prompt);

    std::istream& in;
    std::ostream& out;
    std::ostream& err;

private:
    bool m_interactive;
    bool m_outputIsTerminal;
    std::string m_subject;
};

} // namespace tallybook::cli
