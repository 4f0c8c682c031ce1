// The editors that stand over the current cell, under the names that the document window gives them.
#pragma once

#include "core/document/edit/CellEditing.h"
#include "core/model/EditorState.h"

#include <QObject>
#include <QRect>

#include <optional>

class QAbstractItemView;
class QComboBox;
class QKeyEvent;
class QLineEdit;
class QWidget;

namespace tallybook::desktop {

class DatePicker;
class GridView;

// Whether there is any text to paste: false while no program owns the clipboard.
bool clipboardHasText();

// Shows an EditorState in the widget of its kind and reads it back. What is typed and pressed comes out as signals;
// nothing is decided here.
class CellEditors : public QObject {
    Q_OBJECT

public:
    // The widgets become children of the grid's viewport.
    explicit CellEditors(GridView& grid);

    // Shows the state over its cell; a state without an editor hides them all and gives the grid the focus back.
    void show(const model::EditorState& state);

    // Copies what the open widget holds into the state of the same kind.
    void read(model::EditorState& state) const;

    // Types a text into the open editor, as if it came from the keyboard.
    void insert(const QString& text);

    // Opens the calendar of the date picker on a day, counted from 1899-12-30.
    void openCalendar(int day);

    // Text1 while it is open, for the clipboard.
    QLineEdit* openText() const;

signals:
    void keyPressed(document::EditKey key);
    void textTyped();            // into Text1
    void spinAsked(int step);    // an arrow of UpDown1: +1 or -1
    void entryChosen(int entry); // in cmb1, with the mouse or Enter
    void clearDateAsked();       // the right button on DTPickerMS2
    void calendarAsked();        // its button, F4 or Alt+Down
    void dayPicked(int day);     // in its calendar, counted from 1899-12-30

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeText();
    void makeSpin();
    void makeCombos();
    void makeDate();
    void open(const model::EditorState& state);
    void update(const model::EditorState& state);
    void place(const model::EditorState& state);
    void hide();
    QWidget* widgetOf(model::EditorKind kind) const;
    std::optional<document::EditKey> keyOf(const QObject* watched, const QKeyEvent& event) const;
    bool filterPopup(QEvent* event);

    GridView& m_grid;
    QLineEdit* m_text = nullptr;
    QLineEdit* m_spin = nullptr;
    QWidget* m_upDown = nullptr;
    QComboBox* m_combo = nullptr;
    QAbstractItemView* m_list = nullptr; // that drops down from cmb1
    QComboBox* m_combo2 = nullptr;
    DatePicker* m_date = nullptr;
    model::EditorKind m_kind = model::EditorKind::None;
    int m_row = -1;
    int m_col = -1;
    bool m_lastWasKey = false; // in the closed list: a key moved the choice, nobody picked
};

} // namespace tallybook::desktop
