#include "cli/frame/Session.h"

#include "cli/frame/FileFault.h"
#include "cli/frame/Texts.h"
#include "core/document/file/OpenSave.h"
#include "core/platform/AppFolders.h"

#include <string>
#include <string_view>

namespace tallybook::cli {

Session::Session(Terminal& terminal, const CommonOptions& options)
    : m_user(terminal, {options.yes, options.password()}),
      m_regional(options.regional()), m_services{m_user,
                                                 m_screen,
                                                 m_files,
                                                 m_clock,
                                                 m_regional,
                                                 options.applicationFolder.empty()
                                                     ? std::filesystem::path()
                                                     : std::filesystem::absolute(options.applicationFolder)} {}

bool Session::prepareFolders() {
    if (m_services.applicationFolder.empty())
        m_services.applicationFolder = m_folder.emplace().path();
    if (m_services.applicationFolder.empty()) {
        m_user.say(std::string(kNoTemporaryFolder));
        return false;
    }
    for (const std::string_view folder : {platform::kTempFolder, platform::kBackupFolder}) {
        (void)platform::CreateDir(m_services, folder); // what is missing in the end shows when it is used
        m_files.sweepLeftOvers(platform::applicationPath(m_services, folder));
    }
    return true;
}

bool Session::open(const std::filesystem::path& file, Purpose purpose) {
    m_user.setSubject(file.string());
    if (const std::string fault = faultOfFile(file); !fault.empty()) {
        m_user.sayUtf8(fault);
        return false;
    }
    if (purpose == Purpose::Save && !prepareFolders())
        return false;
    const document::KeptCopies copies = purpose == Purpose::Look ? document::KeptCopies::None
                                        : m_folder               ? document::KeptCopies::Temporary
                                                                 : document::KeptCopies::All;
    const bool yes = m_user.setYes(false); // a question now is about another file: whether it may be thrown away
    const auto outcome = document::OpenDatabase(m_document, m_services, std::filesystem::absolute(file),
                                                document::FileNames::AsGiven, copies);
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
    if (document::savePDBFile20(m_document, m_services, target, document::FileNames::AsGiven) ==
        document::Outcome::Done)
        return ExitCode::Done;
    explainRefusal();
    return ExitCode::Refused;
}

void Session::explainRefusal() {
    if (!m_user.spoke())
        m_user.say(std::string(kRefusedInSilence));
}

} // namespace tallybook::cli
