// tallybook info FILE: what a database is made of.
#include "cli/frame/Session.h"
#include "cli/frame/VisibleText.h"
#include "cli/rows/GridRows.h"
#include "cli/rows/ModelJson.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"

#include <iomanip>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

namespace tallybook::cli {

namespace {

using model::DatabaseModel;
using model::FieldDef;
using model::FieldType;

struct InfoOptions {
    CommonOptions common;
    std::filesystem::path file;
    bool json = false;
};

// Slots that are in use, in order: a view or filter that has a name, a form that counts.
template <class Slots> std::vector<int> namedSlots(const Slots& slots) {
    std::vector<int> named;
    for (std::size_t slot = 0; slot < slots.size(); ++slot)
        if (!slots[slot].Name.empty())
            named.push_back(static_cast<int>(slot));
    return named;
}

Json withSlot(int slot, const Json& rest) {
    Json json = {{"slot", slot}};
    json.update(rest);
    return json;
}

Json infoJson(const model::Document& doc) {
    const DatabaseModel& db = doc.CurrDB20;
    Json json = {{"name", calc::ansi::toUtf8(db.DBName)},
                 {"formatVersion", db.FormatVersion},
                 {"records", doc.NumDataRecs},
                 {"lastKey", db.LastKey},
                 {"readOnly", db.ReadOnly != 0},
                 {"noBackup", db.NoBackup != 0},
                 {"showStartup", db.ShowStartup != 0},
                 {"startupText", calc::ansi::toUtf8(db.StartupText)},
                 {"passwords", passwordKindsJson(db)},
                 {"startView", db.HdrByte2},
                 {"startFilters", db.HdrWord1}};
    Json fields = Json::array();
    for (const int column : usedColumns(doc)) {
        const int slot = model::slotOfColumn(column);
        Json field = fieldJson(db, slot);
        const Json attribute = attributeJson(db, slot);
        if (attribute.is_object())
            field.update(attribute);
        fields.push_back(std::move(field));
    }
    json["fields"] = std::move(fields);
    json["views"] = Json::array();
    for (const int slot : namedSlots(db.Views))
        json["views"].push_back(withSlot(slot, viewJson(db.Views[static_cast<std::size_t>(slot)])));
    json["filters"] = Json::array();
    for (const int slot : namedSlots(db.Filters))
        json["filters"].push_back(withSlot(slot, filterJson(db.Filters[static_cast<std::size_t>(slot)])));
    json["forms"] = Json::array();
    for (int slot = 0; slot < std::min<int>(db.NumForms, model::MaxForms); ++slot)
        json["forms"].push_back(withSlot(slot, formJson(db.Forms[static_cast<std::size_t>(slot)])));
    return json;
}

// Text ------------------------------------------------------------------------------------------------------

// A text of the file on a line of its own.
std::string shown(std::string_view text) {
    return visibleText(calc::ansi::toUtf8(text));
}

std::string plural(int count, const std::string& one, const std::string& many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

// What stands behind a field's type, as "2 decimals, default 0".
std::string fieldNotes(const DatabaseModel& db, int slot) {
    const FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    std::vector<std::string> notes;
    if (hasList(field))
        notes.push_back(plural(db.Lists.at(slot).Count(), "item", "items"));
    if (field.Type == FieldType::Float || field.Type == FieldType::Expression ||
        field.Type == FieldType::AdvExpression)
        notes.push_back(plural(field.Decimals, "decimal", "decimals"));
    if (field.Type == FieldType::AutoIncremental)
        notes.push_back("next " + std::to_string(db.AutoIncNext.at(slot)));
    if (!db.Externals.at(slot).Source.empty())
        notes.push_back("from " + shown(db.Externals.at(slot).Source));
    if ((field.Type == FieldType::Integer || field.Type == FieldType::Long) && field.IncDec != 0)
        notes.emplace_back("buttons");
    if (field.SearchField != 0)
        notes.emplace_back("searched");
    if ((field.FieldFlags & 0x80) != 0)
        notes.emplace_back("barcode");
    if (!field.Default.empty())
        notes.push_back("default " + shown(field.Default));
    std::string all;
    for (const std::string& note : notes)
        all += (all.empty() ? "" : ", ") + note;
    return all;
}

void writeField(const DatabaseModel& db, int slot, std::ostream& out) {
    const FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    const std::string notes = fieldNotes(db, slot);
    out << "  " << std::setw(2) << slot << "  " << std::left << std::setw(22) << model::fieldTypeName(field.Type)
        << std::right << "  " << shown(field.Name);
    if (!notes.empty())
        out << "  (" << notes << ')';
    out << '\n';
}

template <class Slots> void writeNames(const char* heading, const Slots& slots, std::ostream& out) {
    const std::vector<int> named = namedSlots(slots);
    out << heading << ": " << named.size() << '\n';
    for (const int slot : named)
        out << "  " << std::setw(2) << slot << "  " << shown(slots[static_cast<std::size_t>(slot)].Name) << '\n';
}

void writeForms(const DatabaseModel& db, std::ostream& out) {
    const int count = std::min<int>(db.NumForms, model::MaxForms);
    out << "Forms: " << count << '\n';
    for (int slot = 0; slot < count; ++slot) {
        const model::FormDef& form = db.Forms[static_cast<std::size_t>(slot)];
        out << "  " << std::setw(2) << slot << "  " << shown(form.Name) << (form.Name.empty() ? "" : "  ") << '('
            << plural(form.NumItems, "item", "items") << ")\n";
    }
}

void writeInfo(const model::Document& doc, std::ostream& out) {
    const DatabaseModel& db = doc.CurrDB20;
    out << "Name: " << shown(db.DBName) << '\n'
        << "Format version: " << static_cast<int>(db.FormatVersion) << '\n'
        << "Records: " << doc.NumDataRecs << '\n'
        << "Last key: " << db.LastKey << '\n'
        << "Read only: " << (db.ReadOnly != 0 ? "yes" : "no") << '\n'
        << "Passwords:";
    const Json passwords = passwordKindsJson(db);
    for (const Json& kind : passwords)
        out << ' ' << kind.get<std::string>();
    out << (passwords.empty() ? " none" : "") << '\n';
    const std::vector<int> columns = usedColumns(doc);
    out << "Fields: " << columns.size() << '\n';
    for (const int column : columns)
        writeField(db, model::slotOfColumn(column), out);
    writeNames("Views", db.Views, out);
    writeNames("Filters", db.Filters, out);
    writeForms(db, out);
}

ExitCode info(const InfoOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Look))
        return ExitCode::Refused;
    if (options.json)
        terminal.out << visibleJson(infoJson(session.document()).dump(2)) << '\n';
    else
        writeInfo(session.document(), terminal.out);
    return ExitCode::Done;
}

} // namespace

void addInfo(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<InfoOptions>();
    Verb verb = command.verb("info", "Print what a database is made of");
    addFileArgument(verb, options->file);
    verb.flag("--json", options->json, "As JSON, with every attribute");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = info(*options, terminal); });
}

} // namespace tallybook::cli
