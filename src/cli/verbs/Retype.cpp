// tallybook retype FILE FIELD TYPE --out OUT: the change of a field's type, its questions answered by options.
#include "cli/frame/Session.h"
#include "cli/frame/Texts.h"
#include "cli/rows/FieldNames.h"
#include "cli/schema/SchemaFields.h"
#include "cli/verbs/Verbs.h"
#include "core/design/FieldProperties.h"
#include "core/design/FieldProps.h"
#include "core/document/grid/Recalculate.h"

#include <memory>
#include <ostream>
#include <string>

namespace tallybook::cli {

namespace {

struct RetypeOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::filesystem::path out;
    std::string field;      // UTF-8
    std::string type;       // UTF-8
    std::string attributes; // JSON
    bool convert = false;
    bool newKeys = false;
    bool keepKeys = false;
    bool newList = false;
    bool keepList = false;
};

// How the questions of the change begin.
constexpr std::string_view kConvertQuestion = "Are you sure you want to convert this field from ";
constexpr std::string_view kKeysQuestion = "WARNING:  This action will change the field into 'key'.";
constexpr std::string_view kListQuestion = "Clear existing list and create new list?";

void prepareAnswers(const RetypeOptions& options, TerminalUser& user) {
    if (options.convert)
        user.prepareAnswer(kConvertQuestion, platform::Answer::Yes);
    if (options.newKeys || options.keepKeys)
        user.prepareAnswer(kKeysQuestion, options.newKeys ? platform::Answer::Yes : platform::Answer::No);
    if (options.newList || options.keepList)
        user.prepareAnswer(kListQuestion, options.newList ? platform::Answer::Yes : platform::Answer::No);
}

// The slot of the named field; throws a SchemaFault when there is none.
int slotOf(const model::Document& doc, const std::string& field) {
    const auto column = columnNamedOrNumbered(doc, field);
    if (const std::string* reason = std::get_if<std::string>(&column))
        throw SchemaFault{ExitCode::Refused, {}, *reason};
    return model::slotOfColumn(std::get<int>(column));
}

model::FieldType typeOf(const std::string& name) {
    const auto type = fieldTypeNamed(name);
    if (!type)
        throw SchemaFault{ExitCode::Usage, {}, noSuchType(name)};
    return *type;
}

Json attributesOf(const std::string& text) {
    try {
        return text.empty() ? Json::object() : Json::parse(text);
    } catch (const Json::parse_error& error) {
        throw SchemaFault{ExitCode::Usage, "--attributes", error.what()};
    }
}

// Field Properties on the field, with the type chosen and the attributes entered, and its OK.
bool change(Session& session, const RetypeOptions& options) {
    model::Document& doc = session.document();
    platform::Services& services = session.services();
    const model::FieldType type = typeOf(options.type);
    const int slot = slotOf(doc, options.field);
    if (!design::typeMayChange(slot) && type != model::FieldType::List)
        throw SchemaFault{ExitCode::Refused, {}, std::string(kCategoriesAreList)};
    if (!design::mayOpenFieldProps(doc, services, slot))
        return false;
    design::FieldPropDraft draft = design::fillAttributeValues(doc.CurrDB20, slot, services);
    design::selectFieldType(draft, type, doc.CurrDB20, slot, services);
    const Json json = attributesOf(options.attributes);
    const SchemaObject attributes(json, "--attributes");
    for (const char* key : {"slot", "type", "searched", "carried", "items"})
        if (attributes.has(key))
            attributes.misuse(key, "It is no attribute.");
    if (attributes.has("name"))
        draft.txtFieldName = attributes.text("name");
    enterAttributes(attributes, doc.CurrDB20, services, draft);
    // No is an answer too, and more than one question goes on with it: nobody has given it here.
    return design::fieldPropertiesOK(doc, services, slot, draft, design::FieldPropMode::Document).accepted &&
           !session.user().leftUnanswered();
}

ExitCode retype(const RetypeOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file, Session::Purpose::Save))
        return ExitCode::Refused;
    prepareAnswers(options, session.user());
    try {
        if (!change(session, options)) {
            session.explainRefusal();
            return ExitCode::Refused;
        }
    } catch (const SchemaFault& fault) {
        terminal.say((fault.place.empty() ? "" : fault.place + ": ") + fault.text);
        return fault.code;
    }
    document::recalcExpressions(session.document(), session.services());
    return session.saveTo(options.out);
}

// A question with two options, one for each answer.
void addAnswers(Verb& verb, const char* yes, bool& yesGiven, const char* yesText, const char* no, bool& noGiven,
                const char* noText) {
    verb.flag(yes, yesGiven, yesText);
    verb.flag(no, noGiven, noText).excludes(yes);
}

} // namespace

void addRetype(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<RetypeOptions>();
    Verb verb = command.verb("retype", "Change the type of a field and save the database elsewhere");
    addFileArgument(verb, options->file);
    verb.argument("FIELD", options->field, "The field's name, or @ and its slot");
    verb.argument("TYPE", options->type, "The new type, as \"Auto Incremental\"");
    verb.option("--out", options->out, "The file to write, replaced whole when it exists").required();
    verb.option("--attributes", options->attributes, "What the new type needs, as members of a description");
    verb.flag("--convert", options->convert, "Convert the values, some of which may be lost");
    addAnswers(verb, "--new-keys", options->newKeys, "To Key: the column's numbers become the records' keys",
               "--keep-keys", options->keepKeys, "To Key: the records keep their keys");
    addAnswers(verb, "--new-list", options->newList, "To List: the field's old items give way to the column's texts",
               "--keep-list", options->keepList, "To List: the field keeps the items that it has");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = retype(*options, terminal); });
}

} // namespace tallybook::cli
