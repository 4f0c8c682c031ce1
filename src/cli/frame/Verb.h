// A verb of the command line, with its arguments and options. Verb.cpp alone knows the library that parses them,
// whose headers take seconds to compile in every file that includes them.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace tallybook::cli {

// An option that was declared; each call adds a condition to it.
class VerbOption {
public:
    explicit VerbOption(CLI::Option& option) : m_option(&option) {}

    VerbOption& required();
    VerbOption& existingFile();
    VerbOption& existingFolder();
    VerbOption& among(const std::vector<std::string>& values); // the help shows what it is otherwise
    VerbOption& excludes(const char* other);                   // an option that was declared before

private:
    CLI::Option* m_option;
};

// A view of what the parser owns. Names are as on the command line, "-y,--yes" for two of them; texts are the help's.
// What is read goes into the values, which must live until the verb has run.
class Verb {
public:
    explicit Verb(CLI::App& app) : m_app(&app) {}

    // A verb below this one, which then needs one of those.
    Verb verb(const char* name, const char* text);
    // Options of which one at most may be given.
    Verb alternatives(const char* name);

    // Arguments have no name on the command line: they are required, in the order in which they were declared.
    void argument(const char* name, std::filesystem::path& value, const char* text);
    void argument(const char* name, std::string& value, const char* text);
    void arguments(const char* name, std::vector<std::string>& values, const char* text); // one or more

    VerbOption option(const char* name, std::filesystem::path& value, const char* text);
    VerbOption option(const char* name, std::string& value, const char* text);
    VerbOption option(const char* name, std::vector<std::string>& values, const char* text); // one each time
    VerbOption flag(const char* name, bool& given, const char* text);

    // What is done once the command line has been read.
    void runs(std::function<void()> run);

private:
    CLI::App* m_app;
};

} // namespace tallybook::cli
