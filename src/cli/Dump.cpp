// tallybook dump FILE: every byte of a file, and what it means.
#include "cli/FileMap.h"
#include "cli/FixedRecords.h"
#include "cli/RecordJson.h"
#include "cli/Session.h"
#include "cli/Verbs.h"
#include "core/calc/Ansi.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/Passwords.h"
#include "core/platform/Paths.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

namespace tallybook::cli {

namespace {

using platform::ByteSpan;

struct DumpOptions {
    CommonOptions common;
    std::filesystem::path file;
};

Json headerJson(ByteSpan header) {
    Json json = Json::object();
    pdb::ByteReader in(header);
    json["name"] = calc::ansi::toUtf8(in.getPaddedText(32));
    json["attributes"] = in.getWord();
    json["version"] = in.getWord();
    json["created"] = in.getUnsignedLong();
    json["modified"] = in.getUnsignedLong();
    json["backedUp"] = in.getUnsignedLong();
    json["modificationNumber"] = in.getUnsignedLong();
    json["applicationInfo"] = in.getUnsignedLong();
    json["sortInfo"] = in.getUnsignedLong();
    json["type"] = calc::ansi::toUtf8(in.getPaddedText(4));
    json["creator"] = calc::ansi::toUtf8(in.getPaddedText(4));
    json["uniqueIdSeed"] = in.getUnsignedLong();
    json["nextRecordList"] = in.getUnsignedLong();
    json["records"] = in.getWord();
    if (!in.ok())
        json = Json::object(); // the hex says it all
    json["hex"] = hex(header);
    return json;
}

Json decoded(const ListEntry& entry, ByteSpan file, FixedRecords& fixed) {
    if (entry.record >= model::kFixedRecords)
        return dataRecordJson(file, entry.bytes, fixed.database());
    const platform::Status read = fixed.read(entry);
    if (!read)
        return {{"error", calc::ansi::toUtf8(read.error().text)}, {"position", fixed.end()}};
    return fixedRecordJson(fixed.database(), entry.record);
}

Json recordJson(const ListEntry& entry, ByteSpan file, FixedRecords& fixed) {
    Json json = {{"entry", entry.entry},       {"record", entry.record < 0 ? Json(nullptr) : Json(entry.record)},
                 {"offset", entry.offset},     {"attributes", entry.attributes},
                 {"uniqueId", entry.uniqueId}, {"hex", hex(entry.bytes.of(file))}};
    if (entry.record >= 0)
        json["decoded"] = decoded(entry, file, fixed);
    return json;
}

// A record a line, written as it is made: a whole file as one value would take many times its size.
void writeDump(const DumpOptions& options, ByteSpan file, const FileMap& map, std::ostream& out) {
    out << "{\"file\": {\"name\": " << Json(calc::ansi::toUtf8(platform::shownPath(options.file.filename()))).dump()
        << ", \"size\": " << file.size() << "},\n\"header\": " << headerJson(map.header.of(file)).dump()
        << ",\n\"records\": [";
    FixedRecords fixed(file, map);
    const char* separator = "\n";
    for (const ListEntry& entry : map.entries) {
        out << separator << recordJson(entry, file, fixed).dump();
        separator = ",\n";
    }
    out << "\n],\n\"gaps\": [";
    separator = "\n";
    for (const ByteRange& gap : map.gaps) {
        out << separator << Json({{"offset", gap.start}, {"hex", hex(gap.of(file))}}).dump();
        separator = ",\n";
    }
    out << "\n]}\n";
}

// A password guards against looking in, so it is asked for here too, as far as the file is sound enough to have
// one.
bool login(Session& session, ByteSpan file, const FileMap& map, const std::filesystem::path& path) {
    if (map.entries.empty())
        return true;
    FixedRecords fixed(file, map);
    if (!fixed.read(map.entries.front()))
        return true;
    model::Document& doc = session.document();
    doc.CurrDB20 = fixed.database();
    doc.CurrFileName = platform::shownPath(path.filename());
    return pdb::AuthorizeDB(doc, session.services(), model::PasswordKind::Login);
}

ExitCode dump(const DumpOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    const auto bytes = session.services().files.read(options.file);
    if (!bytes) {
        session.user().say(bytes.error().description());
        return ExitCode::Refused;
    }
    const FileMap map = mapFile(bytes.value());
    if (!login(session, bytes.value(), map, options.file)) {
        session.explainRefusal();
        return ExitCode::Refused;
    }
    writeDump(options, bytes.value(), map, terminal.out);
    return ExitCode::Done;
}

} // namespace

void addDump(CLI::App& app, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<DumpOptions>();
    CLI::App* verb = app.add_subcommand("dump", "Print every byte of a file as JSON, with its meaning");
    addFileArgument(*verb, options->file);
    addOpenOptions(*verb, options->common);
    verb->callback([options, &terminal, &code] { code = dump(*options, terminal); });
}

} // namespace tallybook::cli
