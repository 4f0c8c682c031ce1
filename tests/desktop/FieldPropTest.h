// Field Properties in the hands of a test: its controls by name, and what a user does with them.
#pragma once

#include "desktop/DialogChecks.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/dialogs/frmFieldProp.h"
#include "desktop/document/frmDocument.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

namespace tallybook::test {

// Picks an entry of a list as a user does who has let it drop down.
inline void choose(QComboBox* box, const char* entry) {
    const int position = box->findText(QString::fromLatin1(entry));
    ASSERT_GE(position, 0) << box->objectName().toStdString() << ": " << entry;
    box->setFocus();
    box->showPopup();
    walkTo(box->view(), position);
    QTest::keyClick(box->view(), Qt::Key_Return);
}
inline void choose(QWidget& window, const char* list, const char* entry, int place = 0) {
    choose(child<QComboBox>(window, list, place), entry);
}

inline void enter(QLineEdit* line, const char* text) {
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, QString::fromLatin1(text));
}
inline void enter(QWidget& window, const char* line, const char* text, int place = 0) {
    enter(child<QLineEdit>(window, line, place), text);
}

inline void ok(QWidget& window) {
    clickOn(window, "OKButton");
}

// Presses a check box or an option with the key for it.
inline void tick(QWidget& window, const char* box, int place = 0) {
    auto* button = child<QAbstractButton>(window, box, place);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
}

struct OneUser {
    OneUser(model::Document& doc, platform::Services& services) : otherFolder(doc, services, users) {}
    handheld::UserList users{{"Ann"}, {"/palm/Ann/Backup"}};
    design::OtherFolder otherFolder;
};

// The dialog over a document of its own.
class LoneFieldProp : OneUser, public desktop::frmFieldProp {
public:
    LoneFieldProp(model::Document& doc, platform::Services& services, int slot, design::FieldPropMode mode)
        : OneUser(doc, services), frmFieldProp(doc, services, otherFolder, slot, mode, nullptr) {}
};

class FieldPropTest : public WindowTest {
protected:
    // Opens the dialog on a field of the open database and does what `step` does in it.
    void open(int slot, const std::function<void(QWidget& form)>& step) {
        script.expect([step](QWidget& form) {
            ASSERT_EQ(form.objectName(), QStringLiteral("frmFieldProp"));
            step(form);
        });
        QApplication::setActiveWindow(&window());
        go(0, slot);
        trigger("mnuViewFieldProp");
    }
    model::FieldDef& field(int slot) { return doc().CurrDB20.Fields[static_cast<std::size_t>(slot)]; }
};

} // namespace tallybook::test
