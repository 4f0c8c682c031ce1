// One database, opened as the desktop opens it, without its windows.
#pragma once

#include "adapters/PosixFiles.h"
#include "adapters/SystemClock.h"
#include "adapters/TemporaryFolder.h"
#include "cli/frame/ExitCode.h"
#include "cli/frame/Options.h"
#include "cli/frame/Terminal.h"
#include "cli/frame/TerminalUser.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <filesystem>
#include <optional>

namespace tallybook::cli {

// The application folder is a private one unless the options name one, so that a script neither meets nor leaves
// backups and working copies. It is made for those who save; whoever only looks writes nothing anywhere. Paths are
// taken as they are given.
class Session {
public:
    Session(Terminal& terminal, const CommonOptions& options);

    // Makes the folders that saving uses. False when there is no place for them, which has been said.
    bool prepareFolders();

    // Reads the file into the document, to be looked at alone or to be saved. False when that was refused; the reason
    // then stands on standard error.
    enum class Purpose { Look, Save };
    bool open(const std::filesystem::path& file, Purpose purpose = Purpose::Save);

    // Saves the document to a path, as the desktop does. Refused leaves the reason on standard error.
    ExitCode saveTo(const std::filesystem::path& out);

    // Says that something was refused, when nobody has said so yet.
    void explainRefusal();

    model::Document& document() { return m_document; }
    platform::Services& services() { return m_services; }
    TerminalUser& user() { return m_user; }

private:
    TerminalUser m_user;
    platform::Screen m_screen;
    adapters::PosixFiles m_files;
    adapters::SystemClock m_clock;
    platform::Regional m_regional;
    std::optional<adapters::TemporaryFolder> m_folder;
    platform::Services m_services;
    model::Document m_document;
};

} // namespace tallybook::cli
