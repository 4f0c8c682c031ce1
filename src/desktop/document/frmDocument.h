// The window of the open database: its grid, the editors over it, the choices of view and filter.
#pragma once

#include "core/document/edit/CellEditing.h"
#include "core/document/grid/GridDisplay.h"
#include "core/document/views/Views.h"
#include "core/model/Document.h"
#include "core/platform/Operation.h"
#include "core/platform/Services.h"
#include "desktop/grid/QtTextMeasure.h"

#include <QWidget>

#include <memory>

class QMenu;

namespace Ui {
class frmDocument;
}

namespace tallybook::desktop {

class CellEditors;
class PictureTip;
class frmMemoAw;

class frmDocument : public QWidget {
    Q_OBJECT

public:
    frmDocument(platform::Services& services, QWidget* parent);
    ~frmDocument() override;

    // The document to show, or nothing. It must outlive its stay here.
    void setDocument(model::Document* doc);
    void setPopUpMenus(QMenu* column, QMenu* row);

    GridView& grid() const;      // grd
    GridView& viewGrid() const;  // ViewGrd
    GridView& shownGrid() const; // the one of them that is shown
    CellEditors& editors() const { return *m_editors; }
    const document::TextMeasure& measure() const { return *m_measure; }

    // Before an operation on the document: what the open editor holds goes into doc.editor.
    void takeEditor();
    // After one: shows grid, editor and choices as they are now, the current cell among them.
    void showDocument();
    // After one that may have left the current cell in a row that a filter hides. A search may, on purpose.
    void leaveHiddenRows();
    // Shows the document, and opens what the operation asks for.
    void perform(const document::EditAction& action);
    // Ends the open edit as leaving its cell does.
    void commit();

signals:
    void documentChanged(); // an edit has been made here

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static constexpr std::string_view kLeaveCell = "Tallybook Form : Leave Cell";

    // The handler as an operation of its own: what nobody expected is shown under the tag.
    template <class... Arguments> auto operation(std::string_view tag, void (frmDocument::*handler)(Arguments...)) {
        return [this, tag, handler](Arguments... arguments) {
            if (!platform::runOperation(m_services.ui, tag, [&] { (this->*handler)(arguments...); }))
                showDocument();
        };
    }
    void connectGrid();
    void connectEditors();
    void connectChoices();
    void connectView();
    enum class Sight { MoveToCell, Stay };
    void showState(Sight sight);
    void showChoices();
    void showGrids();
    void chooseView(int entry);
    void chooseFilter(int entry);
    void chooseFilters();
    void editFilters();
    void editViews();
    void pressEdit();
    void editRecord();
    void typeOnView(int code, const QString& rest);
    void resizeViewColumn(int column, int twips);
    void bestFitViewColumn(int column);
    void clickView(document::MousePlace place);
    void afterChoice(document::Choice choice);
    int gridColumn(int viewColumn) const;
    bool ready() const { return m_doc != nullptr && m_doc->GridReady; }
    void typeOnCell(int code, const QString& rest);
    void clickCell(document::MousePlace place);
    void popUp(document::MousePlace place, QPoint globalPosition);
    void popUpByKey(QPoint globalPosition);
    QMenu* menuOf(document::PopUp which) const;
    void deleteByKey();
    void tabOn(bool back);
    void pressKey(document::EditKey key);
    void takeTyped();
    void spin(int step);
    void chooseEntry(int entry);
    void clearDate();
    void openCalendar();
    void pickDay(int day);
    void bestFitColumn(int column);
    void openMemo(const document::EditAction& action);
    void openAutoWriter(frmMemoAw& editor);
    void openRadio(const document::EditAction& action);
    void openExternalPicker(const document::EditAction& action);
    void openListEditor();
    void openImage();

    std::unique_ptr<Ui::frmDocument> m_ui;
    platform::Services& m_services;
    model::Document* m_doc = nullptr;
    CellEditors* m_editors;
    std::unique_ptr<QtTextMeasure> m_measure;
    bool m_choosesByKey = false; // in the closed list of a combo: the focus stays there
    PictureTip* m_pictureTip = nullptr;
    QMenu* m_columnMenu = nullptr;
    QMenu* m_rowMenu = nullptr;
};

} // namespace tallybook::desktop
