// A saved conversion, run in one direction, and the list of the saved ones.
#pragma once

#include "core/convert/ConversionSpec.h"
#include "core/convert/OutsideTables.h"
#include "core/convert/TextBridge.h"
#include "core/handheld/Users.h"
#include "core/platform/Services.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::convert {

// What the box before an import onto an existing database shows.
struct PdbInfo {
    std::string title;
    std::string message;
    std::vector<std::string> views;
    std::vector<std::string> filters;
    std::vector<std::string> forms;
};

// What a run shows beside messages. The windows, the command and the tests each have their own.
class RunWindows : public RunWatcher {
public:
    // The runner, shown for the length of a run.
    virtual void beginRun() {}
    virtual void endRun() {}
    // DlgEximpMsg: the message, and the lines that its details unfold.
    virtual void showErrorReport(const std::string& message, const std::string& details) = 0;
    // frmViewDetail. `refresh` reads the file again. True when the user wants to go on.
    virtual bool viewDetail(const PdbInfo& info, const std::function<PdbInfo()>& refresh) = 0;
    // The file of a run is about to change, or has changed: a window that has it open asks and reloads.
    virtual bool mayChange(const std::filesystem::path& pdb) {
        static_cast<void>(pdb);
        return true;
    }
    virtual void changed(const std::filesystem::path& pdb) { static_cast<void>(pdb); }
    // Holds other runs of this user's off as long as it is kept; nothing when another one does not end.
    virtual std::shared_ptr<void> lockRuns() { return std::make_shared<int>(); }
};

// All that a run works with.
struct RunContext {
    platform::Services& services;
    handheld::HandheldDesktop& desktop;
    const handheld::UserList& users;
    RunWindows& windows;
    OpenOutside openOutside{}; // none: other databases cannot be opened
};

// The words that name the system's settings, and the arguments of the bridge that follow from them and a spec.
struct RunSettings {
    std::string DateOption;
    std::string TimeOption;
    std::string DecimalOption;
    BridgeFlags flags;
    ImportMode mode = ImportMode::Create;
};
RunSettings workOutSettings(const ConversionSpec& spec, const platform::Regional& regional, SpecDirection direction);

// Runs a spec's file. True when it went well to its end; the user has been told in any case.
bool runConversion(const RunContext& context, const std::filesystem::path& specPath, SpecDirection direction);

// The work of a run, on a database that is there or to be made: `folder` and `fileName` are those of the user's file.
// False when it failed, which has been told.
bool ImportExportFunction(const RunContext& context, ConversionSpec& spec, const model::DatabaseModel& db,
                          SpecDirection direction, const std::filesystem::path& folder, const std::string& fileName);

// The database of a spec in a user's folder: on the disk its name has "_" for blanks.
std::filesystem::path databasePath(const std::filesystem::path& folder, std::string_view tallybookName);

// Shows what a file holds before records are imported into it. True when the user agrees.
bool ShowPdbInfo(const RunContext& context, const std::filesystem::path& path, std::string_view tallybookName);

// The list. ------------------------------------------------------------------------------------------------------

struct SpecRow {
    std::filesystem::path file;
    std::string name;
    std::string database; // "(prompt)" when the spec asks for it
    std::string outside;  // file, file and table, or data source
    std::string kind;     // as ExternalKind; empty when the spec cannot be read
    bool isChecked = false;
};

std::vector<SpecRow> getSpecList(platform::Services& services, SpecDirection direction);

// Runs the checked rows after the warning. True when something was run.
bool runChecked(const RunContext& context, std::vector<SpecRow>& rows, SpecDirection direction);

// Deletes the checked rows' files to the trash after a question. True when the list is to be made anew.
bool deleteChecked(platform::Services& services, const std::vector<SpecRow>& rows);

} // namespace tallybook::convert
