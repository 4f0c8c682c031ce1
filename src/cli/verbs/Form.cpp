// tallybook form FILE: the handheld's screens.
#include "cli/frame/Session.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"
#include "core/forms/FormItems.h"

#include <array>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace tallybook::cli {

namespace {

using calc::ansi::toUtf8;
using Json = nlohmann::ordered_json;

struct FormOptions {
    CommonOptions common;
    std::filesystem::path file;
    bool json = false;
};

constexpr std::array kFontNames = {"standard", "bold", "large", "large bold"};
constexpr std::array kPlaces = {"left", "centre", "right"};

std::string colourName(const model::Colour& colour) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour.red, colour.green, colour.blue);
    return text.data();
}

// The field of a row as people name it; its number when there is no such field.
std::string fieldOf(const model::DatabaseModel& db, const model::FormItem& item) {
    if (forms::isStaticText(item))
        return "(Static Text)";
    if (item.Field < model::MaxFieldSlots && db.Fields[item.Field].Type != model::FieldType::NotUsed)
        return toUtf8(db.Fields[item.Field].Name);
    return "field " + std::to_string(item.Field) + ", which does not exist";
}

Json sideJson(const model::FormItem& item, forms::Side side) {
    const forms::ItemSettings settings = forms::settingsOf(item, side);
    return {{"font", kFontNames[static_cast<std::size_t>(settings.font)]},
            {"colour", colourName(settings.fore)},
            {"background", colourName(settings.back)}};
}

Json rowJson(const model::DatabaseModel& db, const model::FormItem& item, int row) {
    Json json = {{"row", row + 1}, {"slot", item.Field}};
    const bool isText = forms::isStaticText(item);
    json[isText ? "text" : "field"] = isText ? toUtf8(item.Caption) : fieldOf(db, item);
    Json label = sideJson(item, forms::Side::Label);
    const auto shown = forms::settingsOf(item, forms::Side::Label);
    if (isText) {
        label["align"] = kPlaces[static_cast<std::size_t>(shown.alignment)];
    } else {
        label["text"] = toUtf8(item.Caption);
        Json value = sideJson(item, forms::Side::Value);
        const auto settings = forms::settingsOf(item, forms::Side::Value);
        value["locked"] = settings.locked;
        value["asCombo"] = settings.asCombo;
        value["asLabel"] = settings.asLabel;
        json["value"] = std::move(value);
    }
    json["label"] = std::move(label);
    json["displayByte"] = item.ItemByte2;
    if (!item.ItemText.empty())
        json["help"] = toUtf8(item.ItemText);
    return json;
}

Json partJson(const model::DatabaseModel& db, const forms::FormBuilder& builder, int number) {
    const forms::FormPart& part = builder.part(number);
    Json rows = Json::array();
    for (int row = 0; row < forms::kRows; ++row)
        if (!forms::isFree(builder.row(number, row)))
            rows.push_back(rowJson(db, builder.row(number, row), row));
    Json json = Json::object();
    if (number > 0)
        json["tab"] = toUtf8(forms::tabCaption(builder, number));
    json["splitter"] = part.FormByte;
    json["rows"] = std::move(rows);
    return json;
}

Json formsJson(const model::DatabaseModel& db, const forms::FormBuilder& builder) {
    Json tabs = Json::array();
    for (int tab = 1; tab <= builder.tabs; ++tab)
        tabs.push_back(partJson(db, builder, tab));
    return {{"startRow", builder.startRow + 1}, {"base", partJson(db, builder, 0)}, {"tabs", std::move(tabs)}};
}

// Text ------------------------------------------------------------------------------------------------------

// Font and colours that are not the usual ones, as " [bold, #ff0000 on #ffffff]".
std::string looks(const model::FormItem& item, forms::Side side) {
    const forms::ItemSettings settings = forms::settingsOf(item, side);
    std::string text;
    const auto add = [&text](const std::string& part) { text += (text.empty() ? " [" : ", ") + part; };
    if (settings.font > 0)
        add(kFontNames[static_cast<std::size_t>(settings.font)]);
    const forms::ItemSettings usual;
    if (!(settings.fore == usual.fore && settings.back == usual.back))
        add(colourName(settings.fore) + " on " + colourName(settings.back));
    if (settings.alignment != forms::Alignment::Left)
        add(kPlaces[static_cast<std::size_t>(settings.alignment)]);
    if (settings.locked)
        add("locked");
    if (settings.asCombo)
        add("as combo");
    if (settings.asLabel)
        add("as label");
    return text.empty() ? text : text + ']';
}

// A help of several lines stands on one.
std::string onOneLine(const std::string& text) {
    std::string line;
    for (const char c : toUtf8(text))
        line += c == '\n' || c == '\r' ? ' ' : c;
    return line;
}

void writeRow(const model::DatabaseModel& db, const model::FormItem& item, int row, std::ostream& out) {
    out << (row < 9 ? "   " : "  ") << row + 1 << "  " << toUtf8(forms::shownLabel(item))
        << looks(item, forms::Side::Label);
    if (forms::isStaticText(item))
        out << "  (Static Text)";
    else
        out << "  |  " << fieldOf(db, item) << looks(item, forms::Side::Value);
    out << '\n';
    if (!item.ItemText.empty())
        out << "      help: " << onOneLine(item.ItemText) << '\n';
}

void writePart(const model::DatabaseModel& db, const forms::FormBuilder& builder, int number, std::ostream& out) {
    out << (number == 0 ? std::string("Base part")
                        : "Tab " + std::to_string(number) + ": " + toUtf8(forms::tabCaption(builder, number)))
        << ", values from pixel " << static_cast<int>(builder.part(number).FormByte) << '\n';
    for (int row = 0; row < forms::kRows; ++row)
        if (!forms::isFree(builder.row(number, row)))
            writeRow(db, builder.row(number, row), row, out);
}

ExitCode form(const FormOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Look))
        return ExitCode::Refused;
    const model::DatabaseModel& db = session.document().CurrDB20;
    const forms::FormBuilder builder = forms::TransferPDBInfoToFormBuilder(db);
    if (options.json) {
        terminal.out << formsJson(db, builder).dump(2) << '\n';
        return ExitCode::Done;
    }
    writePart(db, builder, 0, terminal.out);
    if (builder.tabs > 0)
        terminal.out << "Tabs begin at row " << builder.startRow + 1 << '\n';
    for (int tab = 1; tab <= builder.tabs; ++tab)
        writePart(db, builder, tab, terminal.out);
    return ExitCode::Done;
}

} // namespace

void addForm(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<FormOptions>();
    Verb verb = command.verb("form", "Print the handheld's screens");
    addFileArgument(verb, options->file);
    verb.flag("--json", options->json, "As JSON, with fonts, colours and display flags of every row");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = form(*options, terminal); });
}

} // namespace tallybook::cli
