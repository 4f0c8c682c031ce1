// tallybook image FILE RECORD FIELD --out PICTURE | --set PICTURE --out OUT: the picture of one cell.
#include "cli/frame/Session.h"
#include "cli/rows/FieldNames.h"
#include "cli/rows/PictureFile.h"
#include "cli/verbs/Verbs.h"
#include "core/forms/ImageCell.h"
#include "core/forms/ImageError.h"
#include "core/forms/PalmBitmap.h"
#include "core/pdb/Passwords.h"

#include <charconv>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace tallybook::cli {

namespace {

struct ImageOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::string record;
    std::string field; // UTF-8
    std::filesystem::path set;
    std::filesystem::path out;
};

struct Cell {
    int row = 0;
    int slot = 0;
};

// Records are counted from 1, as in the grid's first column.
std::optional<int> recordIn(const std::string& text, int records) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool good = error == std::errc{} && end == text.data() + text.size();
    return good && number >= 1 && number <= records ? std::optional(number) : std::nullopt;
}

// Says why there is no such cell.
std::optional<Cell> cellOf(const model::Document& doc, const ImageOptions& options, Terminal& terminal) {
    const int records = model::hasNoRecords(doc) ? 0 : doc.NumDataRecs;
    const auto record = recordIn(options.record, records);
    if (!record) {
        terminal.err << "There is no record " << options.record << "; the file has " << records << ".\n";
        return std::nullopt;
    }
    const auto column = columnNamedOrNumbered(doc, options.field);
    if (const std::string* reason = std::get_if<std::string>(&column)) {
        terminal.err << *reason << '\n';
        return std::nullopt;
    }
    const int slot = model::slotOfColumn(std::get<int>(column));
    if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type != model::FieldType::Image) {
        terminal.err << "The field \"" << options.field << "\" holds no pictures.\n";
        return std::nullopt;
    }
    return Cell{*record - 1 + model::kFirstDataRow, slot};
}

ExitCode refused(const platform::Error& error, Terminal& terminal) {
    terminal.err << forms::imageErrorMessage(error.number) << '\n';
    return ExitCode::Refused;
}

ExitCode takeOut(Session& session, const Cell& cell, const ImageOptions& options, Terminal& terminal) {
    const model::Document& doc = session.document();
    if (forms::cellPicture(doc, cell.row, cell.slot) == forms::CellPicture::None) {
        terminal.err << "The cell has no picture.\n";
        return ExitCode::Refused;
    }
    const auto bytes = forms::pictureBytes(doc, session.services(), cell.row, cell.slot);
    if (!bytes)
        return refused(bytes.error(), terminal);
    const auto bitmap = forms::readPalmBitmap(bytes.value());
    if (!bitmap)
        return refused(bitmap.error(), terminal);
    const auto written =
        writePicture(session.services().files, std::filesystem::absolute(options.out), bitmap.value());
    return written ? ExitCode::Done : refused(written.error(), terminal);
}

ExitCode putIn(Session& session, const Cell& cell, const ImageOptions& options, Terminal& terminal) {
    model::Document& doc = session.document();
    platform::Services& services = session.services();
    if (doc.CurrDB20.ReadOnly != 0) {
        terminal.err << "Tallybook is readonly.\n";
        return ExitCode::Refused;
    }
    if (!pdb::AuthorizeDB(doc, services, model::PasswordKind::Modify)) {
        session.explainRefusal();
        return ExitCode::Refused;
    }
    const auto bitmap = readPicture(services.files, std::filesystem::absolute(options.set));
    if (!bitmap)
        return refused(bitmap.error(), terminal);
    const auto bytes = forms::writePalmBitmap(bitmap.value());
    if (!bytes)
        return refused(bytes.error(), terminal);
    const auto put = forms::setPicture(doc, services, cell.row, cell.slot, bytes.value(), forms::systemRandom());
    if (!put)
        return refused(put.error(), terminal);
    return session.saveTo(options.out.empty() ? options.file : options.out);
}

ExitCode image(const ImageOptions& options, Terminal& terminal) {
    if (options.set.empty() && options.out.empty()) {
        terminal.err << "image needs --out PICTURE, or --set PICTURE.\n";
        return ExitCode::Usage;
    }
    Session session(terminal, options.common);
    if (!session.open(options.file))
        return ExitCode::Refused;
    const auto cell = cellOf(session.document(), options, terminal);
    if (!cell)
        return ExitCode::Refused;
    return options.set.empty() ? takeOut(session, *cell, options, terminal)
                               : putIn(session, *cell, options, terminal);
}

} // namespace

void addImage(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<ImageOptions>();
    Verb verb = command.verb("image", "Take the picture out of a cell, or put one in");
    addFileArgument(verb, options->file);
    verb.argument("RECORD", options->record, "The record's number, from 1");
    verb.argument("FIELD", options->field, "The field's name, or @ and its slot");
    verb.option("--out", options->out,
                "The picture to write, BMP or PNG by its ending; with --set the database, else FILE itself");
    verb.option("--set", options->set, "The picture to put in, BMP or PNG, at most 256 colours").existingFile();
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = image(*options, terminal); });
}

} // namespace tallybook::cli
