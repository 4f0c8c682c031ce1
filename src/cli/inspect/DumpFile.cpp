#include "cli/inspect/DumpFile.h"

#include "cli/frame/VisibleText.h"
#include "cli/inspect/FileMap.h"
#include "cli/inspect/FixedRecords.h"
#include "cli/inspect/RecordJson.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/ByteReader.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace tallybook::cli {

namespace {

using platform::ByteSpan;

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
    const ByteSpan bytes = entry.passed ? ByteSpan() : entry.bytes.of(file);
    Json json = {{"entry", entry.entry},       {"record", entry.record < 0 ? Json(nullptr) : Json(entry.record)},
                 {"offset", entry.offset},     {"attributes", entry.attributes},
                 {"uniqueId", entry.uniqueId}, {"hex", hex(bytes)}};
    if (entry.passed)
        json["passed"] = true;
    else if (entry.record >= 0)
        json["decoded"] = decoded(entry, file, fixed);
    return json;
}

} // namespace

// A record a line, written as it is made: a whole file as one value would take many times its size.
void writeDump(ByteSpan file, const std::string& name, std::ostream& out) {
    const FileMap map = mapFile(file);
    out << "{\"file\": {\"name\": " << visibleJson(Json(name).dump()) << ", \"size\": " << file.size()
        << "},\n\"header\": " << visibleJson(headerJson(map.header.of(file)).dump()) << ",\n\"records\": [";
    FixedRecords fixed(file, map);
    const char* separator = "\n";
    for (const ListEntry& entry : map.entries) {
        out << separator << visibleJson(recordJson(entry, file, fixed).dump());
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

} // namespace tallybook::cli
