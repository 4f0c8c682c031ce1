#include "cli/script/Script.h"

#include "cli/frame/IncomingText.h"
#include "core/model/Limits.h"

#include <algorithm>
#include <utility>

namespace tallybook::cli {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Takes the words of one line from its front.
class LineReader {
public:
    explicit LineReader(std::string_view line) : m_rest(line) {}

    // Nothing at the end of the line, at a comment or after an error.
    std::optional<ScriptWord> next() {
        const std::size_t start = m_rest.find_first_not_of(kBlanks);
        if (start == std::string_view::npos || m_rest[start] == '#')
            return std::nullopt;
        m_rest.remove_prefix(start);
        return m_rest.front() == '"' ? quoted() : bare();
    }

    const std::string& error() const { return m_error; }

private:
    std::optional<ScriptWord> bare() {
        const std::size_t end = std::min(m_rest.find_first_of(" \t\r\""), m_rest.size());
        if (end < m_rest.size() && m_rest[end] == '"')
            return fail("a double quote in the middle of a word");
        ScriptWord word{std::string(m_rest.substr(0, end))};
        m_rest.remove_prefix(end);
        return word;
    }

    std::optional<ScriptWord> quoted() {
        ScriptWord word{"", true};
        for (std::size_t at = 1; at < m_rest.size(); ++at) {
            char c = m_rest[at];
            if (c == '"')
                return closed(std::move(word), at + 1);
            if (c == '\\') {
                const std::optional<char> meant = ++at < m_rest.size() ? escaped(m_rest[at]) : std::nullopt;
                if (!meant)
                    return fail("unknown escape: only \\\" \\\\ \\n \\t stand in a text");
                c = *meant;
            }
            word.text += c;
        }
        return fail("a text without its closing double quote");
    }

    std::optional<ScriptWord> closed(ScriptWord word, std::size_t end) {
        m_rest.remove_prefix(end);
        if (!m_rest.empty() && kBlanks.find(m_rest.front()) == std::string_view::npos)
            return fail("a blank is missing behind a text");
        return word;
    }

    static std::optional<char> escaped(char c) {
        switch (c) {
        case '"':
        case '\\':
            return c;
        case 'n':
            return '\n';
        case 't':
            return '\t';
        default:
            return std::nullopt;
        }
    }

    std::optional<ScriptWord> fail(std::string text) {
        m_error = std::move(text);
        return std::nullopt;
    }

    std::string_view m_rest;
    std::string m_error;
};

std::optional<ScriptError> parseLine(std::string_view text, int number, Script& script) {
    LineReader reader(text);
    ScriptLine line{number, "", {}};
    bool first = true;
    while (std::optional<ScriptWord> word = reader.next()) {
        if (first && word->quoted)
            return ScriptError{number, "a line begins with a command, not with a text"};
        if (first)
            line.command = std::move(word->text);
        else
            line.arguments.push_back(std::move(*word));
        first = false;
    }
    if (!reader.error().empty())
        return ScriptError{number, reader.error()};
    if (!first)
        script.push_back(std::move(line));
    return std::nullopt;
}

bool namesFile(const ScriptLine& line) {
    return line.command == "save-as";
}

// Which of the line's texts it is, where there are several.
std::string faultInText(const ScriptWord& word, const ScriptLine& line, const std::string& fault) {
    if (line.arguments.size() < 2)
        return fault;
    return "text " + std::to_string(&word - line.arguments.data() + 1) + ": " + fault;
}

} // namespace

std::variant<Script, ScriptError> parseScript(std::string_view text) {
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    Script script;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (std::optional<ScriptError> error = parseLine(text.substr(0, end), number, script))
            return *error;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return script;
}

const std::vector<ScriptCommand>& scriptCommands() {
    static const std::vector<ScriptCommand> kCommands = {
        {"goto", 1, 3, "goto ROW [FIELD], or goto where FIELD \"TEXT\""},
        {"click", 0, 2, "click [ROW FIELD]"},
        {"type", 1, 1, "type \"TEXT\""},
        {"key", 1, 1, "key enter|tab|shift+tab|escape|f2|blank|up|down|left|right"},
        {"pick", 1, 1, "pick \"ITEM\""},
        {"radio", 1, 1, "radio \"ITEM\""},
        {"date", 1, 1, "date YYYY-MM-DD|today|clear"},
        {"memo", 1, 1, "memo \"TEXT\""},
        {"toggle", 0, 0, "toggle"},
        {"add", 0, 0, "add"},
        {"delete", 0, 0, "delete"},
        {"delete-all", 0, 0, "delete-all"},
        {"recalc", 0, 0, "recalc"},
        {"select", 1, 2, "select ROW FIELD, or select all|row|column"},
        {"copy", 0, 0, "copy"},
        {"sort", 1, 2, "sort FIELD [desc]"},
        {"find", 1, 5, "find \"TEXT\" [case] [whole-word] [expression] [backward], or find next|previous"},
        {"show", 0, 1, "show [all]"},
        {"view", 1, 1, "view \"NAME\""},
        {"filter", 1, model::MaxFilters, "filter \"NAME\"..."},
        {"edit", 0, 0, "edit"},
        {"done", 0, 0, "done"},
        {"answer", 1, 2, "answer yes|no|ok|cancel [\"QUESTION\"]"},
        {"password", 1, 1, "password \"TEXT\""},
        {"save", 0, 0, "save"},
        {"save-as", 1, 1, "save-as NAME"},
        {"expect-cell", 3, 3, "expect-cell ROW FIELD \"TEXT\""},
        {"expect-at", 2, 2, "expect-at ROW FIELD"},
        {"expect-editor", 1, 1, "expect-editor none|\"TEXT\""},
        {"expect-message", 1, 1, "expect-message \"TEXT\""},
        {"expect-modified", 1, 1, "expect-modified yes|no"},
        {"expect-records", 1, 1, "expect-records NUMBER"},
        {"expect-shown", 1, 1, "expect-shown NUMBER"},
        {"expect-view", 1, 1, "expect-view \"NAME\""},
        {"expect-filter", 1, 1, "expect-filter \"NAME\""},
    };
    return kCommands;
}

std::optional<ScriptError> checkCommands(const Script& script) {
    for (const ScriptLine& line : script) {
        const auto& all = scriptCommands();
        const auto command = std::find_if(all.begin(), all.end(),
                                          [&](const ScriptCommand& known) { return known.name == line.command; });
        if (command == all.end())
            return ScriptError{line.number, "unknown command: " + line.command};
        const int count = static_cast<int>(line.arguments.size());
        if (count < command->leastArguments || count > command->mostArguments)
            return ScriptError{line.number, "usage: " + std::string(command->usage)};
    }
    return std::nullopt;
}

std::optional<ScriptError> checkTexts(const Script& script) {
    for (const ScriptLine& line : script) {
        if (namesFile(line))
            continue;
        for (const ScriptWord& word : line.arguments)
            if (const std::string fault = faultOfText(word.text); !fault.empty())
                return ScriptError{line.number, faultInText(word, line, fault)};
    }
    return std::nullopt;
}

Replaced takeNearestTexts(Script& script) {
    Replaced all;
    for (ScriptLine& line : script) {
        const std::size_t before = all.characters;
        if (namesFile(line))
            continue;
        for (ScriptWord& word : line.arguments) {
            NearestText nearest = nearestText(word.text);
            all.characters += nearest.replaced;
            all.questionMarks += nearest.questionMarks;
            word.text = std::move(nearest.utf8);
        }
        all.lines += all.characters > before ? 1 : 0;
    }
    return all;
}

} // namespace tallybook::cli
