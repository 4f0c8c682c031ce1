// tallybook expr check FILE TEXT: what an advanced expression compiles to.
#include "cli/frame/IncomingText.h"
#include "cli/frame/Session.h"
#include "cli/frame/VisibleText.h"
#include "cli/rows/RowText.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/expressions/ExpressionWords.h"
#include "core/calc/values/Ansi.h"
#include "core/design/ExpressionStore.h"

#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::cli {

namespace {

struct ExprOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::string text; // UTF-8
    std::string format = "Text";
};

// A token's text, or the number that it stands for.
std::string tokenArgument(calc::Token code, const std::string& text) {
    namespace token = calc::token;
    if (code == token::kColour || code == token::kFunction || code == token::kOperator)
        return std::to_string(calc::words::codeOf(text));
    return text;
}

// A row for each token: number, code, text, what is shown. Then what all of them show.
void writeTokens(const calc::TokenArray& tokens, const calc::TokenTextArray& texts,
                 std::span<const std::string> names, std::ostream& out) {
    RowText row(RowForm::Tsv);
    for (std::size_t i = 0; i < tokens.size() && tokens[i] != calc::token::kEnd; ++i) {
        row.add(std::to_string(i));
        row.add(std::to_string(tokens[i]));
        row.add(calc::ansi::toUtf8(tokenArgument(tokens[i], texts[i])));
        const std::string shown =
            calc::displayText(std::span(tokens).subspan(i, 1), std::span(texts).subspan(i, 1), names);
        row.add(calc::ansi::toUtf8(shown));
        out << row.finish();
    }
    row.add(calc::ansi::toUtf8(calc::displayText(tokens, texts, names)));
    out << row.finish();
}

// The text with a caret under the place, each character one column wide.
void writePlace(std::string text, std::size_t position, std::ostream& out) {
    const auto isObeyed = [](char c) {
        const std::string shown = calc::ansi::toUtf8({&c, 1});
        return visibleText(shown) != shown;
    };
    std::replace_if(text.begin(), text.end(), isObeyed, ' ');
    out << calc::ansi::toUtf8(text) << '\n' << std::string(position, ' ') << "^\n";
}

// The trial that storing makes: the text is worked out with made-up values. What is wrong is said.
bool passesTrial(Session& session, const std::string& text, const std::string& format) {
    const auto formats = design::advancedFormats();
    const auto chosen = std::find(formats.begin(), formats.end(), format);
    model::ExprDef trial;
    return design::StoreExpression25({text, static_cast<int>(chosen - formats.begin())}, session.document().CurrDB20,
                                     {}, 0, session.services(), trial);
}

ExitCode check(const ExprOptions& options, Terminal& terminal) {
    if (const std::string fault = faultOfText(options.text); !fault.empty()) {
        terminal.say(fault);
        return ExitCode::Complaint;
    }
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Look))
        return ExitCode::Refused;
    const std::string text = checkedText(options.text);
    const auto names = design::usableFieldNames(session.document().CurrDB20);
    calc::TokenArray tokens{};
    calc::TokenTextArray texts;
    calc::CompileError error;
    if (calc::Compile(text, names, tokens, texts, error) < 0) {
        writePlace(text, error.position, terminal.err);
        terminal.say(calc::ansi::toUtf8(error.text));
        return ExitCode::Complaint;
    }
    if (!passesTrial(session, text, options.format))
        return ExitCode::Complaint;
    writeTokens(tokens, texts, names, terminal.out);
    return ExitCode::Done;
}

} // namespace

void addExpr(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<ExprOptions>();
    Verb verb = command.verb("expr", "Work with expressions");
    Verb checks = verb.verb("check", "Compile an advanced expression of a file's fields and try it out");
    addFileArgument(checks, options->file);
    checks.argument("TEXT", options->text, "The expression; behind -- when it begins with a minus");
    std::vector<std::string> formats;
    for (const std::string_view format : design::advancedFormats())
        formats.emplace_back(format);
    checks.option("--format", options->format, "The result's format; Text takes any result").among(formats);
    addOpenOptions(checks, options->common);
    checks.runs([options, &terminal, &code] { code = check(*options, terminal); });
}

} // namespace tallybook::cli
