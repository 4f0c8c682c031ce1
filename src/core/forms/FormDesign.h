// The form designer without its widgets: the working copy, what is selected in it, and every decision.
#pragma once

#include "core/forms/FormGeometry.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"

#include <optional>
#include <string>
#include <vector>

namespace tallybook::forms {

inline constexpr int kSliderEnd = 11; // of Slider2; it is at once set back by one

// What the screen shows in a row's value column.
struct ShownValue {
    enum class Mark : std::uint8_t { None, Combo, CheckOff, CheckOn, Picture };
    std::string text;
    Mark mark = Mark::None;

    bool operator==(const ShownValue&) const = default;
};

class FormDesign {
public:
    // Takes the working copy. The database is as it was until it is saved.
    FormDesign(model::Document& doc, platform::Services& services);

    const FormBuilder& builder() const { return m_builder; }
    const std::vector<FieldLine>& fields() const { return m_fields; }
    FormGeometry geometry() const { return {m_builder, m_tab}; }
    const model::FormItem& item(const RowPlace& place) const { return m_builder.row(partOf(place), place.row); }

    // The row in hand, if any; it may be free.
    struct Selection {
        RowPlace place;
        Side side = Side::Label;

        bool operator==(const Selection&) const = default;
    };
    const std::optional<Selection>& selection() const { return m_selection; }
    bool hasItem() const; // something is selected, and it has a field or a text
    const FormLimits& limits() const { return m_limits; }

    // Selects an item (EditValue). A click on a row with nothing in it gives the message and selects the row.
    void click(const RowPlace& place, Side side);
    void EditValue(const RowPlace& place, Side side);
    // The arrow keys: one row on (+1) or back (-1) among the rows on show; the first row when none is selected.
    void walk(int step);
    void selectSide(Side side);
    // Command4: the next free row, from the selected one on; false when the part in view is full.
    bool selectPosition();

    // Puts a field, or a static text, into a row; what was there goes.
    void AddValue(const RowPlace& place, std::uint8_t field);
    // The same for the selected row, or the next free one; then the row behind it is selected. False when all rows
    // are taken and none is selected.
    bool addToSelected(std::uint8_t field);
    // A row dropped on another: moved there, those between close up; between base part and tab it changes places.
    void moveRow(const RowPlace& from, const RowPlace& to);
    // Alt+Up and Alt+Down: the selected row and its neighbour change places. False at the end of the part.
    bool exchange(int step);

    // The settings of the selected item. Setting a text that a file cannot hold is refused with a message.
    ItemSettings settings() const;
    bool setValue(const ItemSettings& settings);
    std::string help() const;
    bool setHelp(const std::string& text); // only of a row with a field; false when the text is refused

    // Empties the selected row; without one the message.
    bool ClearFld();
    // Command5: empties all parts, after a question.
    bool clearForm();

    // Tabs.
    int tabInView() const { return m_tab; } // from 1, 0 without tabs
    void setTabs(int count);                // UpDown1; kept within 0 to 14
    void selectTab(int tab);
    bool setTabName(const std::string& name); // Text4

    // Slider2: the row where the strip starts, from 1. Gives the value that the slider has to show.
    int slider() const { return m_builder.startRow + 1; }
    int setSlider(int value);
    int stepSlider(int step) { return setSlider(slider() + step); }

    // The splitter of the base part or of the tab in view.
    std::uint8_t formByte(bool onTab) const;
    void setSplitter(bool onTab, int position, int width);
    void moveSplitter(int pixels); // Ctrl+Left and Ctrl+Right: of the selected row's part, else of the part in view

    // "Show values": the screen with the values of a record.
    bool showsValues() const { return m_record.has_value(); }
    void showValues(bool on);
    int record() const { return m_record.value_or(0); }
    void stepRecord(int step);
    ShownValue shownValue(const RowPlace& place) const;

    bool changed() const { return differs(m_builder, m_stored); }
    void save();     // CmdSaveForm
    bool mayLeave(); // cmdQuit: asks when something changed; false to stay

private:
    int partOf(const RowPlace& place) const { return place.onTab ? m_tab : 0; }
    model::FormItem& itemAt(const RowPlace& place) { return m_builder.row(partOf(place), place.row); }
    bool isShown(const RowPlace& place) const { return geometry().isShown(place); }
    std::vector<RowPlace> shownRows() const;
    void keepSelectionShown();
    bool fits(const std::string& text, std::string_view what);
    ShownValue valueOf(const model::FormItem& item) const;

    model::Document& m_doc;
    platform::Services& m_services;
    FormBuilder m_stored; // as it was read, or last saved
    FormBuilder m_builder;
    std::vector<FieldLine> m_fields;
    int m_tab = 0;
    std::optional<Selection> m_selection;
    FormLimits m_limits;
    std::optional<int> m_record; // whose values are shown
};

} // namespace tallybook::forms
