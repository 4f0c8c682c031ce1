#include "cli/frame/Session.h"

#include "cli/frame/FileFault.h"
#include "cli/frame/Texts.h"
#include "core/document/file/OpenSave.h"

#include <string>
#include <system_error>

namespace tallybook::cli {

std::filesystem::path Session::applicationFolder(const CommonOptions& options, const adapters::TemporaryFolder& own) {
    return options.applicationFolder.empty() ? own.path() : std::filesystem::absolute(options.applicationFolder);
}

Session::Session(Terminal& terminal, const CommonOptions& options)
    : m_user(terminal, {options.yes, options.password()}),
      m_regional(options.regional()), m_services{m_user,  m_screen,   m_files,
                                                 m_clock, m_regional, applicationFolder(options, m_folder)} {}

bool Session::prepareFolders() {
    if (m_services.applicationFolder.empty()) {
        m_user.say(std::string(kNoTemporaryFolder));
        return false;
    }
    std::error_code ignored; // what is missing in the end shows when it is used
    for (const char* folder : {"Temp", "Backup"})
        std::filesystem::create_directory(m_services.applicationFolder / folder, ignored);
    return true;
}

bool Session::open(const std::filesystem::path& file) {
    m_user.setSubject(file.string());
    if (const std::string fault = faultOfFile(file); !fault.empty()) {
        m_user.sayUtf8(fault);
        return false;
    }
    if (!prepareFolders())
        return false;
    const bool yes = m_user.setYes(false); // a question now is about another file: whether it may be thrown away
    const auto outcome = document::OpenDatabase(m_document, m_services, std::filesystem::absolute(file));
    m_user.setYes(yes);
    if (outcome == document::Outcome::Done) {
        m_user.forgetSpoken(); // a join without its database is no refusal
        return true;
    }
    explainRefusal();
    return false;
}

ExitCode Session::saveTo(const std::filesystem::path& out) {
    const std::filesystem::path target = std::filesystem::absolute(out);
    if (document::refusesFileName(m_document, m_services, target))
        return ExitCode::Refused;
    if (document::savePDBFile20(m_document, m_services, target) == document::Outcome::Done)
        return ExitCode::Done;
    explainRefusal();
    return ExitCode::Refused;
}

void Session::explainRefusal() {
    if (!m_user.spoke())
        m_user.say(std::string(kRefusedInSilence));
}

} // namespace tallybook::cli
