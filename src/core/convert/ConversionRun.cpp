#include "core/convert/ConversionRun.h"

#include "core/calc/values/Text.h"
#include "core/convert/RowTransfer.h"
#include "core/convert/SpecFile.h"
#include "core/document/file/OpenSave.h"
#include "core/pdb/Database.h"
#include "core/pdb/Names.h"
#include "core/platform/Ansi.h"
#include "core/platform/AppFolders.h"
#include "core/platform/Guards.h"
#include "core/platform/Operation.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/RecycleBin.h"
#include "core/platform/WholeFile.h"

#include <algorithm>
#include <optional>

namespace tallybook::convert {

namespace {

using platform::Icon;
using platform::Services;
using platform::Status;
namespace texts = platform::texts;
using Path = std::filesystem::path;

constexpr std::string_view kRunTag = "runConversion";
constexpr std::string_view kFunctionTag = "Import Export : Function";

void say(Services& services, std::string text, Icon icon) {
    services.ui.message({.text = std::move(text), .icon = icon, .title = {}});
}

void report(Services& services, const platform::Error& error, std::string_view tag) {
    platform::Error shown = error;
    shown.tag = tag;
    services.ui.showError(shown);
}

bool exists(platform::Files& files, const Path& path) {
    const auto state = files.state(path);
    return state && state.value().kind != platform::FileKind::Missing;
}

std::int16_t flagOf(bool set) {
    return set ? 1 : 0;
}

bool isDayFirst(const std::string& shortDate) {
    std::string pattern = calc::upper(shortDate);
    std::erase(pattern, ' ');
    return pattern.starts_with("D/M/") || pattern.starts_with("DD/MM/");
}

bool isText(const ConversionSpec& spec) {
    return spec.ExternalKind == kKindText;
}

// The name for the disk: the Tallybook's name as it is, with prefix and ending.
std::string fileNameOf(std::string_view tallybookName) {
    return std::string(pdb::kPrefix2x) + std::string(tallybookName) + std::string(pdb::kExtension);
}

// The file as it is there: under the name with underscores, or else with its blanks.
Path existingDatabase(platform::Files& files, const Path& folder, const std::string& fileName) {
    const Path path = folder / platform::ansi::toUtf8(fileName);
    const Path onDisk = document::savedPath(path);
    return exists(files, onDisk) ? onDisk : path;
}

std::optional<platform::Bytes> readFile(Services& services, const Path& path) {
    if (!exists(services.files, path)) {
        say(services, "Error opening file " + platform::shownPath(path), Icon::Critical);
        return std::nullopt;
    }
    auto bytes = services.files.read(path);
    if (!bytes) {
        report(services, bytes.error(), kRunTag);
        return std::nullopt;
    }
    return std::move(bytes).value();
}

bool getDBProps20(Services& services, const Path& path, model::DatabaseModel& db) {
    const auto bytes = readFile(services, path);
    if (!bytes)
        return false;
    const Status read = pdb::readStructure(db, *bytes, platform::shownPath(path.filename()));
    if (!read)
        report(services, read.error(), kRunTag);
    return read.ok();
}

int countRecords(Services& services, const Path& path) {
    const auto bytes = services.files.read(path);
    if (!bytes)
        return 0;
    const auto count = pdb::countDataRecords(bytes.value(), pdb::FileFormat::Present);
    return count ? count.value() : 0;
}

// What the log's file holds; nothing without one.
std::optional<std::string> logText(Services& services) {
    const auto bytes = services.files.read(platform::applicationPath(services, kLogName));
    if (!bytes)
        return std::nullopt;
    return std::string(bytes.value().begin(), bytes.value().end());
}

// The last line of the log behind two line breaks; nothing without a log.
std::string lastLogLine(Services& services) {
    const auto log = logText(services);
    if (!log)
        return {};
    const std::size_t lineEnd = log->find_last_of('\n');
    return "\n\n" + (lineEnd == std::string::npos ? *log : log->substr(lineEnd + 1));
}

// Shows the runner as long as it lives.
class Runner {
public:
    explicit Runner(RunWindows& windows) : m_windows(windows) { m_windows.beginRun(); }
    ~Runner() { m_windows.endRun(); }
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

private:
    RunWindows& m_windows;
};

// One run of ImportExportFunction.
class Function {
public:
    Function(const RunContext& context, ConversionSpec& spec, const model::DatabaseModel& db, SpecDirection direction,
             Path folder, std::string fileName)
        : m_context(context), m_services(context.services), m_spec(spec), m_db(db), m_direction(direction),
          m_folder(std::move(folder)), m_fileName(std::move(fileName)),
          m_settings(workOutSettings(spec, context.services.regional, direction)),
          m_pdb(existingDatabase(context.services.files, m_folder, m_fileName)) {}

    bool run() {
        if (!isText(m_spec)) {
            const bool isAccess = m_spec.ExternalKind == kKindAccess;
            say(m_services, isAccess ? "Can't open the database." : "Can't open the Connection.", Icon::Critical);
            return false;
        }
        const std::optional<int> number = m_direction == SpecDirection::Import ? import() : exportText();
        return number && finish(*number);
    }

private:
    std::optional<int> import();
    std::optional<int> exportText();
    bool finish(int number);
    bool makeSafetyCopy();
    Path safetyCopy() const {
        return platform::applicationPath(m_services, platform::kTempFolder) / m_pdb.filename();
    }
    int numberOfCall(const BridgeCall& call, BridgeCode code);
    std::string stoppedText() const;
    TransferState transferState();
    void restoreCleaned();

    const RunContext& m_context;
    Services& m_services;
    ConversionSpec& m_spec;
    const model::DatabaseModel& m_db;
    SpecDirection m_direction;
    Path m_folder;
    std::string m_fileName;
    RunSettings m_settings;
    Path m_pdb;
    bool m_hasSafetyCopy = false;
};

TransferState Function::transferState() {
    return {.services = m_services,
            .spec = m_spec,
            .db = m_db,
            .flags = m_settings.flags,
            .writesNames = m_settings.flags.WithNameRow == 1,
            .writesTypes = m_settings.flags.WithTypeRow == 1,
            .watcher = &m_context.windows};
}

bool Function::makeSafetyCopy() {
    if (!exists(m_services.files, m_pdb))
        return true;
    const Status copied = platform::copyWholeFile(m_services.files, m_pdb, safetyCopy());
    m_hasSafetyCopy = copied.ok();
    if (!copied)
        report(m_services, copied.error(), kFunctionTag);
    return copied.ok();
}

// The number of the run; nothing when it ends without a report.
std::optional<int> Function::import() {
    if (!makeSafetyCopy())
        return std::nullopt;
    TransferState state = transferState();
    const Path temporary = platform::applicationPath(m_services, kImportFile);
    if (!ImportFromDBNew(state, temporary)) {
        say(m_services, state.isStopped ? stoppedText() : "Import could not be completed", Icon::Critical);
        return std::nullopt;
    }
    BridgeCall call{.services = m_services, .watcher = &m_context.windows};
    const BridgeCode code = Text2Tiny(call, temporary, m_folder / platform::ansi::toUtf8(m_fileName),
                                      static_cast<std::int16_t>(m_settings.mode), m_settings.flags);
    restoreCleaned();
    return numberOfCall(call, code);
}

// A text that was cleaned of its line of types has its copy put back.
void Function::restoreCleaned() {
    const Path path = storedPath(m_spec.ExternalPath, m_services.applicationFolder);
    Path before = path;
    before += "before";
    if (!exists(m_services.files, before))
        return;
    if (platform::copyWholeFile(m_services.files, before, path))
        (void)m_services.files.remove(before);
}

std::optional<int> Function::exportText() {
    if (m_folder.empty())
        m_folder = m_services.applicationFolder;
    Path target = storedPath(m_spec.ExternalPath, m_services.applicationFolder);
    if (m_spec.ExternalPath == kPromptPath) {
        const auto chosen = m_services.ui.askSaveName("Export Tallybook " + m_spec.TallybookName,
                                                      "Text Files (*.txt;*.csv)|*.txt;*.csv|All Files (*.*)|*.*", {});
        if (!chosen)
            return std::nullopt;
        target = *chosen;
    }
    BridgeCall call{.services = m_services, .watcher = &m_context.windows};
    const BridgeCode code = Tiny2Text(call, m_pdb, target, flagOf(m_spec.AppendRecords != 0), m_settings.flags);
    if (code != BridgeCode::Good)
        return numberOfCall(call, code);
    TransferState state = transferState();
    if (WriteExternalField(state, target, m_pdb) && EraseExtraColumn(state, target))
        return 0;
    if (state.isStopped)
        say(m_services, stoppedText(), Icon::Information);
    return kStopped;
}

int Function::numberOfCall(const BridgeCall& call, BridgeCode code) {
    if (call.isTurnedDown)
        return kStopped;
    if (call.isStopped) {
        say(m_services, stoppedText(), Icon::Information);
        return kStopped;
    }
    if (call.isOverLimit) {
        say(m_services, std::string(texts::kTooManyRecords), Icon::Critical);
        return kStopped;
    }
    return numberOf(code);
}

// A stopped run says that everything is as it was, and where the copy from before lies.
std::string Function::stoppedText() const {
    std::string text(texts::kStopped);
    if (m_hasSafetyCopy)
        text += ' ' + texts::safetyCopy(platform::shownPath(safetyCopy()));
    return text;
}

bool Function::finish(int number) {
    if (number == 0) {
        if (m_hasSafetyCopy) {
            (void)m_services.files.remove(safetyCopy());
            if (m_direction == SpecDirection::Import && exists(m_services.files, safetyCopy()))
                (void)platform::copyWholeFile(m_services.files, safetyCopy(), m_pdb);
        }
        return true;
    }
    if (number == kStopped || number == kNoTable || number == kDriverFailed)
        return false;
    std::string details = logText(m_services).value_or("No Details available");
    if (m_hasSafetyCopy)
        details += "\r\n" + texts::safetyCopy(platform::shownPath(safetyCopy()));
    m_context.windows.showErrorReport("An error ocurred during import/export.\n\nError MSA" + std::to_string(number) +
                                          ": " + std::string(bridgeText(number)),
                                      details);
    return false;
}

// One run of runConversion.
class Run {
public:
    Run(const RunContext& context, const Path& specPath, SpecDirection direction)
        : m_context(context), m_services(context.services), m_specPath(specPath), m_direction(direction) {}

    bool run() {
        if (!readSpecs(m_services, m_spec, m_specPath))
            return false;
        const auto user = std::ranges::find(m_context.users.UserNames, m_spec.HotSyncUser);
        if (user == m_context.users.UserNames.end()) {
            say(m_services, "User ID not found for Conversion Specs " + platform::shownPath(m_specPath),
                Icon::Critical);
            return false;
        }
        m_folder = m_context.users.UserFolders[static_cast<std::size_t>(user - m_context.users.UserNames.begin())];
        m_fileName = fileNameOf(m_spec.TallybookName);
        return readDatabase() && (m_direction == SpecDirection::Import ? import() : exportAll());
    }

private:
    bool readDatabase();
    bool import();
    bool exportAll();
    std::string install();
    bool saveCopy(const Path& file);
    Path database() const { return existingDatabase(m_services.files, m_folder, m_fileName); }

    const RunContext& m_context;
    Services& m_services;
    const Path& m_specPath;
    SpecDirection m_direction;
    ConversionSpec m_spec;
    model::DatabaseModel m_db;
    Path m_folder;
    std::string m_fileName;
};

bool Run::readDatabase() {
    if (exists(m_services.files, database()))
        m_spec.NewDatabase = 0;
    if (m_spec.NewDatabase == 1)
        model::Clearg_CurrDB20(m_db);
    else if (!getDBProps20(m_services, database(), m_db))
        return false;
    // By the row's own number, which for a new database makes the fields that the mapping implies.
    for (std::size_t row = 0; row < kSpecRows; ++row) {
        const std::uint8_t type = m_spec.Entries[row].TypeCode;
        if (type != 0 && type < model::kFieldTypes && m_db.Fields[row].Type == model::FieldType::NotUsed)
            m_db.Fields[row].Type = static_cast<model::FieldType>(type);
    }
    return true;
}

bool Run::import() {
    if (!m_context.windows.mayChange(database()))
        return false;
    if (!ImportExportFunction(m_context, m_spec, m_db, m_direction, m_folder, m_fileName))
        return false;
    const Path file = database();
    m_context.windows.changed(file);
    std::string note = install();
    if (!m_spec.SaveCopyFolder.empty() && saveCopy(file))
        note += std::string(note.empty() ? "" : " and") + " was saved in " + m_spec.SaveCopyFolder;
    say(m_services,
        "Data imported successfully into Tallybook \"" + m_spec.TallybookName + "\"." + lastLogLine(m_services) +
            "\n\nNew database " + note,
        Icon::Information);
    return true;
}

// Queues the file for whom the spec names, and tells for whom it is.
std::string Run::install() {
    const bool forAll = isYes(m_spec.InstallToAll);
    if (!forAll && m_spec.InstallToUser.empty())
        return {};
    const auto& names = m_context.users.UserNames;
    const auto user = std::ranges::find(names, m_spec.InstallToUser);
    if (!forAll && user == names.end()) {
        say(m_services, texts::noSuchUser(m_spec.InstallToUser), Icon::Critical);
        return {};
    }
    const std::string handled = handheld::installToUser(
        m_services, m_context.desktop, m_context.users, database(), platform::shownPath(database().filename()),
        static_cast<int>(user - names.begin()), forAll ? handheld::ForUsers::All : handheld::ForUsers::One);
    if (forAll)
        return "will be installed to users " + handled;
    return handled.empty() ? std::string() : "will be installed to user " + m_spec.InstallToUser;
}

bool Run::saveCopy(const Path& file) {
    const Path folder = storedPath(m_spec.SaveCopyFolder, m_services.applicationFolder);
    const Status copied = platform::copyWholeFile(m_services.files, file, folder / file.filename());
    if (!copied)
        report(m_services, copied.error(), kRunTag);
    return copied.ok();
}

bool Run::exportAll() {
    if (!ImportExportFunction(m_context, m_spec, m_db, m_direction, m_folder, m_fileName))
        return false;
    const std::string name = "database " + m_spec.HotSyncUser + " / " + m_spec.TallybookName;
    const int records = countRecords(m_services, database());
    if (records > 0)
        say(m_services,
            'D' + name.substr(1) + ": Total of " + std::to_string(records) + " records exported successfully",
            Icon::Information);
    else
        say(m_services, "No records to be exported in " + name, Icon::Warning);
    return true;
}

PdbInfo infoOf(const model::DatabaseModel& db, const Path& path, std::string_view tallybookName) {
    PdbInfo info;
    info.title = "Details of " + platform::shownPath(path.filename());
    info.message = "You are trying to import records into the local copy of the handheld Tallybook \"" +
                   std::string(tallybookName) +
                   "\"\n\nThe local copy of the Tallybook contains :\n\nWarning: If this information does not match "
                   "the Tallybook on the handheld then HotSync and click Refresh\n\nExisting data records in the "
                   "above database will be appended or deleted as specified in the Conversion Specs\n\nDo you want "
                   "to run this conversion?";
    for (const model::ViewDef& view : db.Views)
        if (!view.Name.empty())
            info.views.push_back(view.Name);
    for (const model::FilterDef& filter : db.Filters)
        if (!filter.Name.empty() && filter.CondFields[0] != 0)
            info.filters.push_back(filter.Name);
    for (int form = 0; form < std::min<int>(db.NumForms, model::MaxForms); ++form) {
        const model::FormDef& one = db.Forms[static_cast<std::size_t>(form)];
        const auto fields =
            std::ranges::count_if(one.Items, [](const model::FormItem& item) { return item.Field != 0; });
        info.forms.push_back(std::to_string(fields) + "\tFields: " + (one.Name.empty() ? "Form" : one.Name));
    }
    return info;
}

std::string outsideOf(const ConversionSpec& spec) {
    if (spec.ExternalKind == kKindOdbc)
        return GetStrVal(spec.ExternalPath, "DSN=");
    if (spec.ExternalKind == kKindAccess)
        return spec.ExternalPath + " / " + spec.ObjectName;
    return spec.ExternalPath;
}

bool anyChecked(const std::vector<SpecRow>& rows) {
    return std::ranges::any_of(rows, &SpecRow::isChecked);
}

bool ask(Services& services, std::string text) {
    return services.ui.message({.text = std::move(text),
                                .icon = Icon::Question,
                                .buttons = platform::Buttons::YesNo,
                                .title = {},
                                .preferred = platform::Answer::No}) == platform::Answer::Yes;
}

// Lets the user look at the databases that are there before records are imported into them; a refusal leaves the row
// out of the run.
void confirmDatabases(const RunContext& context, std::vector<SpecRow>& rows) {
    for (SpecRow& row : rows) {
        ConversionSpec spec;
        if (!row.isChecked || row.database == kPromptPath ||
            !loadSpecs(context.services.files, spec, row.file, SpecFields::Without))
            continue;
        const auto user = std::ranges::find(context.users.UserNames, spec.HotSyncUser);
        if (user == context.users.UserNames.end())
            continue;
        const Path& folder =
            context.users.UserFolders[static_cast<std::size_t>(user - context.users.UserNames.begin())];
        const Path path = databasePath(folder, spec.TallybookName);
        if (exists(context.services.files, path))
            row.isChecked = ShowPdbInfo(context, path, spec.TallybookName);
    }
}

std::string warningOf(const std::vector<SpecRow>& rows, SpecDirection direction) {
    std::string text = "Existing data records in the following ";
    text += direction == SpecDirection::Import ? "Tallybook Pocket" : "external";
    text += " database\nwill be appended or deleted as specified in specs:\n\n";
    for (const SpecRow& row : rows) {
        const std::string& name = direction == SpecDirection::Import ? row.database : row.outside;
        if (row.isChecked && name != kPromptPath)
            text += "-> " + name + '\n';
    }
    return text + "\nDo you want to run the selected Conversion Specs?";
}

} // namespace

RunSettings workOutSettings(const ConversionSpec& spec, const platform::Regional& regional, SpecDirection direction) {
    RunSettings settings;
    const bool dayFirst = isDayFirst(regional.shortDate);
    settings.DateOption = dayFirst ? "-d:DD/MM/YY" : "-d:MM/DD/YY";
    settings.TimeOption = regional.twelveHours ? "-t:ampm" : "-t:military";
    settings.DecimalOption = regional.decimal == ',' ? "-dec:comma" : "-dec:period";
    BridgeFlags& flags = settings.flags;
    flags.DateFlag = flagOf(dayFirst);
    flags.TimeFlag = flagOf(!regional.twelveHours);
    flags.DecimalFlag = flagOf(regional.decimal == ',');
    flags.Delimiter = spec.SourceKind == "C" ? 0 : spec.SourceKind == "S" ? 1 : 2;
    flags.WithCategories = flagOf(spec.MapCategories != 0);
    flags.ListsAsIndex = flagOf(spec.ListsAsIndex != 0);
    settings.mode = spec.NewDatabase == 1     ? ImportMode::Create
                    : spec.AppendRecords == 0 ? ImportMode::Replace
                                              : ImportMode::Append;
    const bool isImport = direction == SpecDirection::Import;
    const bool makesNew = isImport && spec.NewDatabase == 1;
    if (isText(spec)) {
        flags.DateFlag = flagOf(spec.DateFormat != 0);
        flags.TimeFlag = flagOf(spec.TimeFormat != 0);
        flags.HasSeconds = flagOf(spec.HasSeconds != 0);
        flags.WithTypeRow = flagOf((makesNew || !isImport) && isYes(spec.SecondRowTypes));
        flags.WithNameRow = flagOf(makesNew || isYes(spec.FirstRowNames));
    } else {
        flags.Delimiter = flags.DecimalFlag; // ";" beside a decimal comma
        flags.HasSeconds = 1;
        flags.WithTypeRow = flagOf(makesNew);
        flags.WithNameRow = 1;
    }
    return settings;
}

bool ImportExportFunction(const RunContext& context, ConversionSpec& spec, const model::DatabaseModel& db,
                          SpecDirection direction, const Path& folder, const std::string& fileName) {
    bool result = false;
    platform::runOperation(context.services.ui, kFunctionTag,
                           [&] { result = Function(context, spec, db, direction, folder, fileName).run(); });
    return result;
}

bool runConversion(const RunContext& context, const Path& specPath, SpecDirection direction) {
    const std::shared_ptr<void> lock = context.windows.lockRuns();
    if (!lock) {
        say(context.services, std::string(texts::kOtherRun), Icon::Critical);
        return false;
    }
    const platform::HourGlass wait(context.services.screen);
    const Runner runner(context.windows);
    bool result = false;
    platform::runOperation(context.services.ui, kRunTag, [&] { result = Run(context, specPath, direction).run(); });
    return result;
}

Path databasePath(const Path& folder, std::string_view tallybookName) {
    return document::savedPath(folder / platform::ansi::toUtf8(fileNameOf(tallybookName)));
}

bool ShowPdbInfo(const RunContext& context, const Path& path, std::string_view tallybookName) {
    const auto load = [&] {
        model::DatabaseModel db;
        (void)getDBProps20(context.services, path, db);
        return infoOf(db, path, tallybookName);
    };
    return context.windows.viewDetail(load(), load);
}

std::vector<SpecRow> getSpecList(Services& services, SpecDirection direction) {
    std::vector<SpecRow> rows;
    const auto files = specFiles(services, direction);
    if (!files) {
        report(services, files.error(), "Conversion Specs : getSpecList");
        return rows;
    }
    for (const Path& file : files.value()) {
        SpecRow& row = rows.emplace_back();
        row.file = file;
        row.name = specName(file);
        ConversionSpec spec;
        if (!loadSpecs(services.files, spec, file, SpecFields::Without)) {
            row.outside = texts::kSpecUnreadable;
            continue;
        }
        row.kind = spec.ExternalKind;
        row.database = spec.TallybookName;
        row.outside = outsideOf(spec);
    }
    return rows;
}

bool runChecked(const RunContext& context, std::vector<SpecRow>& rows, SpecDirection direction) {
    if (!anyChecked(rows)) {
        say(context.services, "Select one or more Conversion Specs.", Icon::Warning);
        return false;
    }
    if (direction == SpecDirection::Import)
        confirmDatabases(context, rows);
    if (!anyChecked(rows) || !ask(context.services, warningOf(rows, direction)))
        return false;
    const auto total = static_cast<int>(std::ranges::count_if(rows, &SpecRow::isChecked));
    int number = 0;
    for (const SpecRow& row : rows) {
        if (!row.isChecked)
            continue;
        context.services.screen.progress(texts::runningSpec(row.name), number++, total);
        (void)runConversion(context, row.file, direction);
    }
    context.services.screen.progress({}, 0, 0);
    return true;
}

bool deleteChecked(Services& services, const std::vector<SpecRow>& rows) {
    if (!anyChecked(rows)) {
        say(services, "Select a Conversion Spec first.", Icon::Warning);
        return false;
    }
    if (!ask(services, "Are you sure to delete the selected Conversion Specs?"))
        return false;
    for (const SpecRow& row : rows)
        if (row.isChecked)
            (void)platform::MoveToRecycleBin(services, row.file);
    return true;
}

} // namespace tallybook::convert
