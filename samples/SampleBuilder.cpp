#include "SampleBuilder.h"

#include "adapters/PosixFiles.h"
#include "adapters/TemporaryFolder.h"
#include "core/calc/values/Ansi.h"
#include "core/pdb/Database.h"
#include "core/platform/Clock.h"
#include "core/platform/QuietUser.h"
#include "core/platform/Services.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace tallybook::samples {

namespace {

using model::columnOfSlot;
using model::FieldType;

constexpr platform::LocalTime kNow{2004, 3, 1, 9, 30, 0};
constexpr std::uint8_t kColumnWidth = 60;

// Where a new picture waits for the save that takes it in.
std::filesystem::path waitingPicture(const std::filesystem::path& applicationFolder, std::size_t number) {
    const std::string digits = std::to_string(number);
    return applicationFolder / "Temp" / ("rlw_" + std::string(10 - digits.size(), '0') + digits + ".rle");
}

void putPictures(const std::vector<platform::Bytes>& pictures, const std::filesystem::path& applicationFolder) {
    std::filesystem::create_directories(applicationFolder / "Temp");
    for (std::size_t number = 1; number <= pictures.size(); ++number) {
        const platform::Bytes& bytes = pictures[number - 1];
        std::ofstream file(waitingPicture(applicationFolder, number), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file)
            throw std::runtime_error("a picture could not be written");
    }
}

} // namespace

SampleBuilder::SampleBuilder(std::string name) {
    model::clearDocument(m_doc);
    m_doc.CurrDB20.DBName = std::move(name);
    field(0).Type = FieldType::List;
    field(0).Name = "Categories";
}

int SampleBuilder::addField(FieldType type, std::string_view name) {
    const int slot = ++m_fields;
    field(slot).Type = type;
    field(slot).Name = calc::ansi::fromUtf8(name);
    return slot;
}

void SampleBuilder::addItems(int slot, std::initializer_list<const char*> items) {
    model::ListDef& list = m_doc.CurrDB20.Lists[slot];
    for (const char* item : items) {
        list.Items.push_back(calc::ansi::fromUtf8(item));
        list.ItemIds.push_back(static_cast<std::uint8_t>(list.Items.size()));
    }
}

void SampleBuilder::addRecord(std::string_view category) {
    model::appendRecord(m_doc);
    m_doc.RecKeys.set(record(), ++m_doc.CurrDB20.LastKey);
    m_doc.grd.setText(row(), columnOfSlot(0), "Unfiled");
    if (!category.empty())
        setItem(0, category);
    for (int slot = 1; slot <= m_fields; ++slot) {
        if (field(slot).Type == FieldType::Checkbox)
            check(slot, false);
        else if (field(slot).Type == FieldType::Key)
            set(slot, std::to_string(m_doc.CurrDB20.LastKey));
    }
}

void SampleBuilder::set(int slot, std::string_view text) {
    m_doc.grd.setText(row(), columnOfSlot(slot), calc::ansi::fromUtf8(text));
}

void SampleBuilder::setItem(int slot, std::string_view item) {
    const model::ListDef& list = m_doc.CurrDB20.Lists.at(slot);
    const auto found = std::find(list.Items.begin(), list.Items.end(), calc::ansi::fromUtf8(item));
    if (found == list.Items.end())
        throw std::runtime_error("no such item: " + std::string(item));
    set(slot, item);
    m_doc.CellLongs.set(record(), slot, list.ItemIds[static_cast<std::size_t>(found - list.Items.begin())]);
}

void SampleBuilder::check(int slot, bool on) {
    m_doc.grd.setPicture(row(), columnOfSlot(slot), on ? model::Picture::CheckOn : model::Picture::CheckOff);
}

void SampleBuilder::setKey(int slot, std::string_view key) {
    m_doc.CellVals.set(record(), slot, calc::ansi::fromUtf8(key));
}

void SampleBuilder::setPicture(int slot, platform::Bytes bitmap) {
    m_pictures.push_back(std::move(bitmap));
    set(slot, "*{Image}");
    m_doc.CellLongs.set(record(), slot, static_cast<std::int32_t>(m_pictures.size()));
}

void SampleBuilder::setColour(int slot, std::uint32_t colour) {
    m_doc.grd.setColour(row(), columnOfSlot(slot), colour);
}

void SampleBuilder::addView(std::string_view name, std::initializer_list<int> slots, int sortSlot) {
    model::ViewDef& view = m_doc.CurrDB20.Views[static_cast<std::size_t>(m_views++)];
    view.Name = calc::ansi::fromUtf8(name);
    view.SortFields[0] = static_cast<std::uint8_t>(sortSlot);
    for (const int slot : slots) {
        view.Columns[view.NumCols].Field = static_cast<std::uint8_t>(slot);
        view.Columns[view.NumCols].Width = kColumnWidth;
        ++view.NumCols;
    }
    m_doc.CurrDB20.NumViews = static_cast<std::uint8_t>(m_views);
    m_doc.CurrDB20.HdrByte2 = m_doc.CurrDB20.NumViews; // no view of this number: all fields are shown at first
}

void SampleBuilder::addFilter(std::string_view name, const std::vector<Condition>& conditions) {
    model::FilterDef& filter = m_doc.CurrDB20.Filters[static_cast<std::size_t>(m_filters++)];
    filter.Name = calc::ansi::fromUtf8(name);
    std::array<std::uint8_t, 6> operands{};
    for (std::size_t at = 0; at < conditions.size(); ++at) {
        operands[at * 2] = static_cast<std::uint8_t>(conditions[at].slot); // the right one stays 0: a constant
        filter.CondValues[at] = conditions[at].value;
        filter.CondOps[at] = static_cast<std::uint8_t>(conditions[at].op);
        if (at > 0)
            filter.CondLinks[at - 1] = 'A';
    }
    std::copy_n(operands.begin(), 3, filter.CondFields.begin());
    std::copy_n(operands.begin() + 3, 3, filter.CondFields2.begin());
    m_doc.CurrDB20.NumFilters = static_cast<std::uint8_t>(m_filters);
}

void SampleBuilder::addForm(std::initializer_list<int> slots) {
    constexpr model::Colour kWhite{255, 255, 255};
    model::FormDef& form = m_doc.CurrDB20.Forms[0];
    form.FormByte = 60; // where the values begin, of 160 pixels
    for (const int slot : slots) {
        model::FormItem& item = form.Items[form.NumItems];
        item.Field = static_cast<std::uint8_t>(slot);
        item.Row = form.NumItems;
        item.LabelBack = kWhite;
        item.DataBack = kWhite;
        item.Caption = field(slot).Name;
        ++form.NumItems;
    }
}

platform::Bytes SampleBuilder::build() {
    const adapters::TemporaryFolder folder;
    if (!m_pictures.empty())
        putPictures(m_pictures, folder.path());
    // Whatever is said or asked is a fault of the sample.
    platform::QuietUser user(platform::QuietUser::Said::Thrown);
    platform::Screen screen;
    adapters::PosixFiles files;
    const platform::FixedClock clock(kNow);
    const platform::Regional regional;
    platform::Services services{user, screen, files, clock, regional, folder.path()};
    auto built = pdb::buildDatabase(m_doc, services);
    if (!built)
        throw std::runtime_error(built.error().tag + ": " + built.error().description());
    return std::move(built).value().bytes;
}

} // namespace tallybook::samples
