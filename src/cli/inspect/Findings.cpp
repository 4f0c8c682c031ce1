#include "cli/inspect/Findings.h"

#include "cli/frame/VisibleText.h"
#include "cli/inspect/FixedRecords.h"
#include "core/calc/values/Ansi.h"
#include "core/model/Document.h"
#include "core/pdb/Database.h"
#include "core/pdb/Layout.h"

#include <algorithm>
#include <memory>

namespace tallybook::cli {

namespace {

using platform::ByteSpan;

Finding asFinding(const platform::Error& error) {
    Finding finding{error.record, {}, calc::ansi::toUtf8(error.text)};
    if (error.offset)
        finding.byte = static_cast<std::size_t>(*error.offset);
    return finding;
}

bool isExpression(const model::DatabaseModel& db, int record) {
    if (record < pdb::layout::kFirstAttribute || record > pdb::layout::kLastAttribute)
        return false;
    const model::FieldType type = db.Fields[static_cast<std::size_t>(record - pdb::layout::kFirstAttribute)].Type;
    return type == model::FieldType::Expression || type == model::FieldType::AdvExpression;
}

// Bytes of a record that its reader leaves, or takes from the next one. Without data records the last key and the
// spare filters are left on purpose.
void checkExtent(const FixedRecords& fixed, const ListEntry& entry, Findings& findings) {
    const bool leftOnPurpose = fixed.records() <= model::kFixedRecords &&
                               (entry.record == pdb::layout::kLastKey || entry.record == pdb::layout::kFilters);
    if (leftOnPurpose && fixed.end() < entry.bytes.end)
        return;
    if (isExpression(fixed.database(), entry.record) && fixed.end() + 1 == entry.bytes.end)
        return; // the block's last byte says nothing
    if (fixed.end() < entry.bytes.end)
        findings.push_back(
            {entry.record, fixed.end(),
             byteCount(entry.bytes.end - fixed.end()) + " at its end not read: a save leaves them out"});
    else if (fixed.end() > entry.bytes.end)
        findings.push_back(
            {entry.record, entry.bytes.end,
             "its content runs on " + byteCount(fixed.end() - entry.bytes.end) + " into what stands behind it"});
}

void checkFixedRecords(FixedRecords& fixed, const FileMap& map, Findings& findings) {
    for (const ListEntry& entry : map.entries) {
        if (entry.record < 0 || entry.record >= model::kFixedRecords || entry.bytes.size() == 0)
            continue;
        if (const platform::Status read = fixed.read(entry); !read) {
            findings.push_back(asFinding(read.error()));
            continue;
        }
        checkExtent(fixed, entry, findings);
        checkFixedRecord(fixed.database(), entry, findings);
    }
}

// What the reader of the program itself says, when none of the findings so far is about the same record.
void checkWhole(ByteSpan file, const platform::Regional& regional, Findings& findings) {
    const auto doc = std::make_unique<model::Document>();
    model::clearDocument(*doc);
    const platform::Status read = pdb::readDatabase(*doc, file, "", regional);
    if (read)
        return;
    const Finding refusal = asFinding(read.error());
    const bool known = std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.record == refusal.record && finding.text == refusal.text;
    });
    if (!known)
        findings.push_back(refusal);
}

} // namespace

std::string byteCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string findingLine(const Finding& finding) {
    const std::string text = visibleText(finding.text); // names and texts of the file among it
    std::string line;
    if (finding.record)
        line += "record " + std::to_string(*finding.record);
    if (finding.byte)
        line += (line.empty() ? "byte " : ", byte ") + std::to_string(*finding.byte);
    return line.empty() ? text : line + ": " + text;
}

Findings checkFile(ByteSpan file, const platform::Regional& regional) {
    Findings findings;
    const FileMap map = mapFile(file);
    checkContainer(file, map, findings);
    FixedRecords fixed(file, map);
    checkFixedRecords(fixed, map, findings);
    checkReferences(fixed.database(), map, findings);
    checkDataRecords(file, map, fixed.database(), regional, findings);
    checkWhole(file, regional, findings);
    return findings;
}

} // namespace tallybook::cli
