// tallybook images FILE DIR: every picture of a database as a file.
#include "cli/frame/Session.h"
#include "cli/rows/PictureFile.h"
#include "cli/verbs/Verbs.h"
#include "core/calc/values/Ansi.h"
#include "core/forms/ImageCell.h"
#include "core/forms/ImageError.h"
#include "core/forms/PalmBitmap.h"

#include <iomanip>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>

namespace tallybook::cli {

namespace {

struct ImagesOptions {
    CommonOptions common;
    std::filesystem::path file;
    std::filesystem::path folder;
    bool bmp = false;
};

// A text as a part of a file's name: letters, digits and "-", other characters as "_".
std::string nameOf(const std::string& text) {
    constexpr std::size_t kLongest = 40;
    std::string name;
    for (const char c : calc::ansi::toUtf8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                           (byte >= 'a' && byte <= 'z') || byte == '-' || byte >= 0x80;
        name += plain ? c : '_';
    }
    while (name.size() > kLongest) { // whole characters
        while (name.size() > 1 && (static_cast<unsigned char>(name.back()) & 0xC0) == 0x80)
            name.pop_back();
        name.pop_back();
    }
    return name;
}

// "00003 Picture Hammer.png": record, field, and the record's first text.
std::string fileNameOf(const model::Document& doc, int row, int slot, bool bmp) {
    std::ostringstream name;
    name << std::setw(5) << std::setfill('0') << row - model::kFirstDataRow + 1 << ' '
         << nameOf(doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Name);
    for (int other = 1; other <= model::MaxUserFields; ++other)
        if (doc.CurrDB20.Fields[static_cast<std::size_t>(other)].Type == model::FieldType::Text) {
            name << ' ' << nameOf(doc.grd.text(row, model::columnOfSlot(other)));
            break;
        }
    name << (bmp ? ".bmp" : ".png");
    return name.str();
}

class Writer {
public:
    Writer(Session& session, const ImagesOptions& options, Terminal& terminal)
        : m_session(session), m_options(options), m_terminal(terminal) {}

    void write(int row, int slot) {
        const model::Document& doc = m_session.document();
        const auto bytes = forms::pictureBytes(doc, m_session.services(), row, slot);
        const auto bitmap =
            bytes ? forms::readPalmBitmap(bytes.value()) : platform::Result<forms::Bitmap>(bytes.error());
        if (!bitmap)
            return complain(row, slot, bitmap.error());
        const std::string name = fileNameOf(doc, row, slot, m_options.bmp);
        const auto path = std::filesystem::absolute(m_options.folder) / name;
        if (const auto written = writePicture(m_session.services().files, path, bitmap.value()); !written)
            return complain(row, slot, written.error());
        m_terminal.out << name << '\n';
        ++m_written;
    }
    bool failed() const { return m_failed; }
    int written() const { return m_written; }

private:
    void complain(int row, int slot, const platform::Error& error) {
        m_failed = true;
        m_terminal.err << "Record " << row - model::kFirstDataRow + 1 << ", field " << slot << ": "
                       << forms::imageErrorMessage(error.number) << '\n';
    }

    Session& m_session;
    const ImagesOptions& m_options;
    Terminal& m_terminal;
    bool m_failed = false;
    int m_written = 0;
};

ExitCode images(const ImagesOptions& options, Terminal& terminal) {
    Session session(terminal, options.common);
    if (!session.open(options.file))
        return ExitCode::Refused;
    const model::Document& doc = session.document();
    Writer writer(session, options, terminal);
    const int records = model::hasNoRecords(doc) ? 0 : doc.NumDataRecs;
    for (int row = model::kFirstDataRow; row < model::kFirstDataRow + records; ++row)
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == model::FieldType::Image &&
                forms::cellPicture(doc, row, slot) != forms::CellPicture::None)
                writer.write(row, slot);
    return writer.failed() ? ExitCode::Refused : ExitCode::Done;
}

} // namespace

void addImages(Verb& command, Terminal& terminal, ExitCode& code) {
    auto options = std::make_shared<ImagesOptions>();
    Verb verb = command.verb("images", "Write every picture of a database into a folder, and print their names");
    addFileArgument(verb, options->file);
    verb.argument("DIR", options->folder, "The folder, which must exist");
    verb.flag("--bmp", options->bmp, "As BMP instead of PNG");
    addOpenOptions(verb, options->common);
    verb.runs([options, &terminal, &code] { code = images(*options, terminal); });
}

} // namespace tallybook::cli
