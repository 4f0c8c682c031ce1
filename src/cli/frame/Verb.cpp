#include "cli/frame/Verb.h"

#include <CLI/CLI.hpp>
#include <utility>

namespace tallybook::cli {

VerbOption& VerbOption::required() {
    m_option->required();
    return *this;
}

VerbOption& VerbOption::existingFile() {
    m_option->check(CLI::ExistingFile);
    return *this;
}

VerbOption& VerbOption::existingFolder() {
    m_option->check(CLI::ExistingDirectory);
    return *this;
}

VerbOption& VerbOption::among(const std::vector<std::string>& values) {
    m_option->check(CLI::IsMember(values));
    m_option->capture_default_str();
    return *this;
}

VerbOption& VerbOption::excludes(const char* other) {
    m_option->excludes(other);
    return *this;
}

Verb Verb::verb(const char* name, const char* text) {
    m_app->require_subcommand(1);
    return Verb(*m_app->add_subcommand(name, text));
}

Verb Verb::alternatives(const char* name) {
    CLI::App* group = m_app->add_option_group(name);
    group->require_option(0, 1);
    return Verb(*group);
}

void Verb::argument(const char* name, std::filesystem::path& value, const char* text) {
    m_app->add_option(name, value, text)->required();
}

void Verb::argument(const char* name, std::string& value, const char* text) {
    m_app->add_option(name, value, text)->required();
}

void Verb::arguments(const char* name, std::vector<std::string>& values, const char* text) {
    m_app->add_option(name, values, text)->required();
}

VerbOption Verb::option(const char* name, std::filesystem::path& value, const char* text) {
    return VerbOption(*m_app->add_option(name, value, text));
}

VerbOption Verb::option(const char* name, std::string& value, const char* text) {
    return VerbOption(*m_app->add_option(name, value, text));
}

VerbOption Verb::option(const char* name, std::vector<std::string>& values, const char* text) {
    return VerbOption(*m_app->add_option(name, values, text)->allow_extra_args(false));
}

VerbOption Verb::flag(const char* name, bool& given, const char* text) {
    return VerbOption(*m_app->add_flag(name, given, text));
}

void Verb::runs(std::function<void()> run) {
    m_app->callback(std::move(run));
}

} // namespace tallybook::cli
