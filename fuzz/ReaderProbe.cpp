#include "ReaderProbe.h"

#include "core/document/grid/Recalculate.h"
#include "core/pdb/Database.h"
#include "core/pdb/OlderDatabase.h"
#include "support/TestServices.h"

#include <algorithm>

namespace tallybook::fuzz {

namespace {

const char* const kFileName = "MS2_Probe.pdb";
const char* const kTempCopy = "/app/Temp/Copy_Probe.pdb";

std::string complaintAbout(const platform::Error& error) {
    if (error.kind == platform::ErrorKind::Internal)
        return "a damaged file is no fault of the program: " + error.description();
    if (error.kind != platform::ErrorKind::Refused && (error.tag.empty() || error.text.empty()))
        return "a refusal without operation or reason: \"" + error.tag + "\", \"" + error.text + "\"";
    return {};
}

std::string complaintAbout(const model::Document& doc) {
    if (doc.NumDataRecs < 0 || doc.NumDataRecs > model::kMaxDataRecords)
        return "impossible count of records: " + std::to_string(doc.NumDataRecs);
    if (doc.NumFileRecs != doc.NumDataRecs + model::kFixedRecords)
        return "the file's count of records does not go with the data records'";
    if (doc.grd.dataRows() != std::max(1, doc.NumDataRecs))
        return "the grid's rows do not go with the records";
    if (model::hasNoRecords(doc) && doc.grd.rowHeight(model::kFirstDataRow) != 0)
        return "the placeholder row is in sight";
    if (doc.CurrDB20.Fields[0].Type != model::FieldType::List)
        return "slot 0 is not the list of categories";
    return {};
}

// What a save recomputes, or moves, is not compared.
std::string complaintAboutCopy(const model::Document& doc, const model::Document& copy) {
    if (copy.NumDataRecs != doc.NumDataRecs)
        return "the saved file has " + std::to_string(copy.NumDataRecs) + " records, not " +
               std::to_string(doc.NumDataRecs);
    if (model::highestField(copy.CurrDB20) != model::highestField(doc.CurrDB20))
        return "the saved file has other fields";
    if (copy.CurrDB20.NumViews != doc.CurrDB20.NumViews)
        return "the saved file has other views";
    if (copy.CurrDB20.NumFilters != model::highestFilter(doc.CurrDB20))
        return "the saved file has other filters";
    for (int record = 0; record < doc.NumDataRecs; ++record)
        if (copy.RecKeys[record] != doc.RecKeys[record])
            return "the saved file has another key for record " + std::to_string(record);
    return {};
}

std::string rebuild(model::Document& doc, platform::ByteSpan file, test::TestServices& computer) {
    computer.files.put(kTempCopy, platform::Bytes(file.begin(), file.end()));
    doc.TempCopyPath = kTempCopy;
    const auto built = pdb::buildDatabase(doc, computer);
    if (!built)
        return "what was opened cannot be saved: " + built.error().tag + ": " + built.error().description();
    model::Document copy;
    if (const auto status = pdb::readDatabase(copy, built.value().bytes, kFileName, computer.regional); !status)
        return "what was saved does not open: " + status.error().tag + ": " + status.error().description();
    return complaintAboutCopy(doc, copy);
}

// What a read has given, whichever way it ended.
void judge(const platform::Status& status, const model::Document& doc, ProbeResult& result) {
    result.opened = status.ok();
    if (result.opened) {
        result.complaint = complaintAbout(doc);
        return;
    }
    result.message = status.error().description();
    result.complaint = complaintAbout(status.error());
}

std::string probeParts(platform::ByteSpan file) {
    if (const auto verdict = pdb::verifyRecords(file); !verdict)
        if (std::string complaint = complaintAbout(verdict.error()); !complaint.empty())
            return complaint;
    model::DatabaseModel structure;
    if (const auto status = pdb::readStructure(structure, file, kFileName); !status)
        return complaintAbout(status.error());
    return {};
}

} // namespace

ProbeResult probeReader(platform::ByteSpan file) {
    ProbeResult result;
    result.complaint = probeParts(file);
    if (!result.complaint.empty())
        return result;
    test::TestServices computer;
    model::Document doc;
    judge(pdb::readDatabase(doc, file, kFileName, computer.regional), doc, result);
    if (result.opened && result.complaint.empty())
        result.complaint = rebuild(doc, file, computer);
    return result;
}

ProbeResult probeOlder(platform::ByteSpan file) {
    ProbeResult result;
    test::TestServices computer;
    model::Document doc;
    judge(pdb::readOlderDatabase(doc, file, computer.regional), doc, result);
    if (!result.opened || !result.complaint.empty())
        return result;
    document::calcOlderExpressions(doc, computer);
    result.complaint = rebuild(doc, file, computer);
    return result;
}

} // namespace tallybook::fuzz
