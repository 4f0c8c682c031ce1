// The windows that edit the items of a list and compose a value from one, opened from the cell, with keys and mouse.
#include "desktop/DialogChecks.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/dialogs/dlgAutoWriter.h"
#include "desktop/dialogs/frmListEditor.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace tallybook::test {
namespace {

using desktop::dlgAutoWriter;
using desktop::frmListEditor;
using model::columnOfSlot;

QStringList linesOf(const QListWidget& list) {
    QStringList lines;
    for (int row = 0; row < list.count(); ++row)
        lines += list.item(row)->text();
    return lines;
}

QStringList words(const char* spaced) {
    return QString::fromLatin1(spaced).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

class Lists : public WindowTest {
protected:
    // Picks the last entry of the list in a cell, which opens the editor.
    void editItems(int record, int slot) {
        click(record, slot);
        auto* box = WindowTest::find<QComboBox>("cmb1");
        const QModelIndex last = box->model()->index(box->count() - 1, 0);
        box->view()->scrollTo(last);
        const QRect entry = box->view()->visualRect(last);
        QTest::mouseMove(box->view()->viewport(), entry.center());
        QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, {}, entry.center(),
                          QApplication::doubleClickInterval());
        QCoreApplication::processEvents();
    }
    // The input box of the editor, answered with a text.
    void answer(const char* prompt, const char* preset, const char* typed) {
        script.expect([prompt, preset, typed](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("List Editor"));
            auto* label = box.findChild<QLabel*>();
            auto* line = box.findChild<QLineEdit*>();
            ASSERT_TRUE(label != nullptr && line != nullptr);
            EXPECT_EQ(label->text(), QString::fromLatin1(prompt));
            EXPECT_EQ(line->text(), QString::fromLatin1(preset));
            line->selectAll();
            QTest::keyClicks(line, QString::fromLatin1(typed));
            QTest::keyClick(line, Qt::Key_Return);
        });
    }
    const model::ListDef& shelf() { return doc().CurrDB20.Lists.at(kShelf); }
};

TEST_F(Lists, theLastEntryOfACellsListOpensTheEditorOfItsItems) {
    openSample();
    script.expect([](QWidget& editor) {
        EXPECT_EQ(editor.objectName(), QStringLiteral("frmListEditor"));
        EXPECT_EQ(child<QComboBox>(editor, "cmbList")->currentText(), QStringLiteral("Shelf"));
        auto* lst = child<QListWidget>(editor, "lst");
        EXPECT_EQ(linesOf(*lst), words("Upper Middle Lower"));
        EXPECT_EQ(lst->currentRow(), 0);
        EXPECT_TRUE(lst->hasFocus());
        clickOn(editor, "OKButton");
    });
    editItems(0, kShelf);
    EXPECT_EQ(text(0, kShelf), "Middle");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Lists, theCategoriesAreEditedInTheSameWindow) {
    openSample();
    script.expect([this](QWidget& editor) {
        EXPECT_EQ(child<QComboBox>(editor, "cmbList")->currentText(), QStringLiteral("Categories"));
        auto* lst = child<QListWidget>(editor, "lst");
        answer("Edit Item", "Personal", "Private");
        press(editor, Qt::Key_Down);
        clickOn(editor, "cmdEdit");
        EXPECT_EQ(linesOf(*lst), words("Business Private"));
        clickOn(editor, "OKButton");
    });
    editItems(0, kCategory);
    EXPECT_EQ(text(1, kCategory), "Private");
    EXPECT_EQ(text(0, kCategory), "Unfiled");
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Lists, aDoubleClickEditsAndTheColumnShowsTheNewText) {
    openSample();
    script.expect([this](QWidget& editor) {
        auto* lst = child<QListWidget>(editor, "lst");
        answer("Edit Item", "Middle", "Centre");
        const QPoint place = lst->visualItemRect(lst->item(1)).center();
        QTest::mouseClick(lst->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(lst->viewport(), Qt::LeftButton, {}, place);
        EXPECT_EQ(linesOf(*lst), words("Upper Centre Lower"));
        EXPECT_EQ(lst->currentRow(), 1);
        clickOn(editor, "OKButton");
    });
    editItems(0, kShelf);
    EXPECT_EQ(text(0, kShelf), "Centre");
    EXPECT_EQ(text(1, kShelf), "Centre");
    EXPECT_EQ(text(2, kShelf), "");
    EXPECT_EQ(doc().CellLongs.get(0, kShelf), 2);
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Lists, escapeClosesWithTheChangesMade) {
    openSample();
    script.expect([this](QWidget& editor) {
        answer("Edit Item", "Upper", "Top");
        press(editor, Qt::Key_F2);
        press(editor, Qt::Key_Escape);
    });
    editItems(0, kShelf);
    EXPECT_EQ(shelf().Items.front(), "Top");
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(Lists, itemsAreAddedMovedSortedAndDeletedWithTheKeys) {
    openSample();
    script.expect([this](QWidget& editor) {
        auto* lst = child<QListWidget>(editor, "lst");
        answer("Enter new item", "", "Attic");
        press(editor, Qt::Key_Insert);
        EXPECT_EQ(linesOf(*lst), words("Upper Middle Lower Attic"));
        EXPECT_EQ(lst->currentRow(), 3);
        press(editor, Qt::Key_Up, Qt::ControlModifier);
        EXPECT_EQ(linesOf(*lst), words("Upper Middle Attic Lower"));
        EXPECT_EQ(lst->currentRow(), 2);
        press(editor, Qt::Key_Down, Qt::ControlModifier);
        EXPECT_EQ(linesOf(*lst), words("Upper Middle Lower Attic"));
        clickOn(editor, "cmdSort");
        lst->setFocus();
        EXPECT_EQ(linesOf(*lst), words("Attic Lower Middle Upper"));
        QTest::mouseClick(lst->viewport(), Qt::LeftButton, {}, lst->visualItemRect(lst->item(2)).center());
        script.expectMessage(QStringLiteral("Are you sure you want to delete the item Middle ?"),
                             QStringLiteral("No"));
        press(editor, Qt::Key_Delete);
        EXPECT_EQ(lst->count(), 4);
        script.expectMessage(QStringLiteral("Are you sure you want to delete the item Middle ?"),
                             QStringLiteral("Yes"));
        press(editor, Qt::Key_Delete);
        EXPECT_EQ(linesOf(*lst), words("Attic Lower Upper"));
        press(editor, Qt::Key_Return); // the default button
        EXPECT_FALSE(editor.isVisible());
    });
    editItems(0, kShelf);
    EXPECT_EQ(shelf(), (model::ListDef{{4, 3, 1}, {"Attic", "Lower", "Upper"}}));
    EXPECT_EQ(text(0, kShelf), ""); // no item has the id any more
    EXPECT_EQ(doc().CellLongs.get(0, kShelf), 2);
}

TEST_F(Lists, theButtonsDoTheSameWithTheMouse) {
    openSample();
    script.expect([this](QWidget& editor) {
        auto* lst = child<QListWidget>(editor, "lst");
        clickOn(editor, "cmdDown");
        EXPECT_EQ(linesOf(*lst), words("Middle Upper Lower"));
        EXPECT_EQ(lst->currentRow(), 1);
        clickOn(editor, "cmdUp");
        EXPECT_EQ(linesOf(*lst), words("Upper Middle Lower"));
        script.expectMessage(QStringLiteral("Are you sure you want to delete the item Upper ?"),
                             QStringLiteral("Yes"));
        clickOn(editor, "cmdDelete");
        answer("Enter new item", "", "Highest");
        clickOn(editor, "CmdAdd");
        EXPECT_EQ(linesOf(*lst), words("Middle Lower Highest"));
        clickOn(editor, "cmdSort");
        EXPECT_EQ(linesOf(*lst), words("Highest Lower Middle"));
        clickOn(editor, "OKButton");
    });
    editItems(0, kShelf);
    EXPECT_EQ(shelf(), (model::ListDef{{1, 3, 2}, {"Highest", "Lower", "Middle"}}));
    EXPECT_EQ(text(0, kShelf), "Middle"); // sorting changes no record
}

TEST_F(Lists, anEmptyListCanOnlyBeAddedTo) {
    openSample([](model::Document& sample) { sample.CurrDB20.Lists[kShelf] = {}; });
    script.expect([this](QWidget& editor) {
        for (const char* button : {"cmdEdit", "cmdDelete", "cmdSort", "cmdUp", "cmdDown"})
            EXPECT_FALSE(isEnabled(editor, button)) << button;
        EXPECT_TRUE(isEnabled(editor, "CmdAdd"));
        answer("Enter new item", "", "Cellar");
        clickOn(editor, "CmdAdd");
        for (const char* button : {"cmdEdit", "cmdDelete", "cmdSort", "cmdUp", "cmdDown"})
            EXPECT_TRUE(isEnabled(editor, button)) << button;
        script.expect([](QWidget& box) {
            EXPECT_EQ(qobject_cast<QMessageBox*>(&box)->text(),
                      QStringLiteral("Are you sure you want to delete the item Cellar ?"));
            QTest::keyClick(&box, Qt::Key_Return); // No is the default
        });
        clickOn(editor, "cmdDelete");
        EXPECT_EQ(linesOf(*child<QListWidget>(editor, "lst")), words("Cellar"));
        script.expect([](QWidget& box) { pressButton(box, QStringLiteral("Yes")); });
        clickOn(editor, "cmdDelete");
        EXPECT_FALSE(isEnabled(editor, "cmdDelete"));
        clickOn(editor, "OKButton");
    });
    editItems(0, kShelf);
}

TEST_F(Lists, withNothingSelectedTheButtonsAskForAnItem) {
    openSample();
    script.expect([this](QWidget& editor) {
        auto* lst = child<QListWidget>(editor, "lst");
        QTest::mouseClick(lst->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          lst->visualItemRect(lst->item(0)).center());
        ASSERT_TRUE(lst->selectedItems().isEmpty());
        for (const char* button : {"cmdEdit", "cmdDelete", "cmdUp", "cmdDown"}) {
            script.expectMessage(QStringLiteral("Select an item first"));
            clickOn(editor, button);
        }
        clickOn(editor, "OKButton");
    });
    editItems(0, kShelf);
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(Lists, anotherListIsChosenAbove) {
    openSample();
    script.expect([this](QWidget& editor) {
        auto* cmbList = child<QComboBox>(editor, "cmbList");
        EXPECT_EQ(cmbList->count(), 2);
        QTest::keyClick(cmbList, Qt::Key_Up);
        EXPECT_EQ(linesOf(*child<QListWidget>(editor, "lst")), words("Business Personal"));
        answer("Edit Item", "Business", "Trade");
        clickOn(editor, "cmdEdit");
        clickOn(editor, "OKButton");
    });
    editItems(0, kShelf);
    EXPECT_EQ(doc().CurrDB20.Lists.at(kCategory).Items.front(), "Trade");
    EXPECT_EQ(text(0, kShelf), "Middle");
}

TEST_F(Lists, theSixtyFirstItemIsRefused) {
    openSample([](model::Document& sample) {
        model::ListDef& list = sample.CurrDB20.Lists[kShelf];
        for (std::uint8_t id = 4; id <= 60; ++id) {
            list.ItemIds.push_back(id);
            list.Items.push_back("Shelf " + std::to_string(id));
        }
    });
    script.expect([this](QWidget& editor) {
        script.expectMessage(QStringLiteral("List fields cannot have more than 60 items"));
        clickOn(editor, "CmdAdd");
        EXPECT_EQ(child<QListWidget>(editor, "lst")->count(), 60);
        clickOn(editor, "OKButton");
    });
    editItems(0, kShelf);
}

TEST_F(Lists, theEditorHasAnOrderOfItsControls) {
    model::Document sample;
    makeSample(sample, regional);
    frmListEditor editor(sample, services, kShelf, nullptr);
    showAndActivate(editor);
    EXPECT_EQ(defaultButton(editor), QStringLiteral("OKButton"));
    EXPECT_EQ(tabOrder(editor), words("lst CmdAdd cmdEdit cmdDelete cmdSort cmdUp cmdDown OKButton cmbList"));
    expectNoAccessKeyTwice(editor);
    press(editor, Qt::Key_S, Qt::AltModifier);
    auto* lst = child<QListWidget>(editor, "lst");
    EXPECT_TRUE(QTest::qWaitFor([lst] { return linesOf(*lst) == words("Lower Middle Upper"); })); // the button moves
    press(editor, Qt::Key_L, Qt::AltModifier);
    EXPECT_TRUE(child<QComboBox>(editor, "cmbList")->hasFocus());
}

class AutoWriterWindow : public WindowTest {
protected:
    // Opens the long editor of a record's Kind, and the auto writer from there.
    void write(const ModalScript::Step& choose, const QString& expected, const char* end = "OKButton") {
        script.expect([this, choose, expected, end](QWidget& memo) {
            script.expect(choose);
            auto* button = child<QPushButton>(memo, "CmdAw");
            EXPECT_TRUE(button->isVisible());
            QTest::mouseClick(button, Qt::LeftButton);
            EXPECT_EQ(child<QPlainTextEdit>(memo, "txtMemo")->toPlainText(), expected);
            clickOn(memo, end);
        });
        click(0, kKind);
    }
};

TEST_F(AutoWriterWindow, chosenItemsComeBehindTheText) {
    openSample([](model::Document& sample) { sample.grd.setText(2, columnOfSlot(kKind), "Diary"); });
    write(
        [](QWidget& dialog) {
            EXPECT_EQ(dialog.objectName(), QStringLiteral("dlgAutoWriter"));
            auto* list = child<QListWidget>(dialog, "List1");
            EXPECT_EQ(linesOf(*list), words("Novel Essay"));
            EXPECT_TRUE(list->hasFocus());
            EXPECT_TRUE(list->selectedItems().isEmpty());
            press(dialog, Qt::Key_Space);
            press(dialog, Qt::Key_Down);
            press(dialog, Qt::Key_Space);
            press(dialog, Qt::Key_Return);
        },
        QStringLiteral("Diary,Novel,Essay"));
    EXPECT_EQ(text(0, kKind), "Diary,Novel,Essay");
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(AutoWriterWindow, chosenItemsReplaceTheText) {
    openSample([](model::Document& sample) { sample.grd.setText(2, columnOfSlot(kKind), "Diary"); });
    write(
        [](QWidget& dialog) {
            auto* list = child<QListWidget>(dialog, "List1");
            for (const int row : {1, 0})
                QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                                  list->visualItemRect(list->item(row)).center());
            clickOn(dialog, "optReplace");
            clickOn(dialog, "OKButton");
        },
        QStringLiteral("Novel,Essay"));
    EXPECT_EQ(text(0, kKind), "Novel,Essay");
}

TEST_F(AutoWriterWindow, cancelAndAnEmptyChoiceLeaveTheText) {
    openSample([](model::Document& sample) { sample.grd.setText(2, columnOfSlot(kKind), "Diary"); });
    write(
        [](QWidget& dialog) {
            child<QListWidget>(dialog, "List1")->selectAll();
            clickOn(dialog, "CancelButton");
        },
        QStringLiteral("Diary"));
    write([](QWidget& dialog) { clickOn(dialog, "OKButton"); }, QStringLiteral("Diary"));
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(AutoWriterWindow, whatItWroteIsDroppedWithTheLongEditor) {
    openSample();
    const std::string before = text(0, kKind);
    write(
        [](QWidget& dialog) {
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
            clickOn(dialog, "optReplace");
            clickOn(dialog, "OKButton");
        },
        QStringLiteral("Essay"), "CancelButton");
    EXPECT_EQ(text(0, kKind), before);
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(AutoWriterWindow, aNumberTakesOneItem) {
    openSample([](model::Document& sample) {
        sample.CurrDB20.Fields[kPages].AutoWriter = 1;
        sample.CurrDB20.Lists[kPages] = {{1, 2}, {"100", "250"}};
    });
    script.expect([this](QWidget& memo) {
        script.expect([](QWidget& dialog) {
            EXPECT_FALSE(child<QWidget>(dialog, "OptAction")->isVisible());
            auto* list = child<QListWidget>(dialog, "List1");
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
            const QPoint place = list->visualItemRect(list->item(1)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
        });
        clickOn(memo, "CmdAw");
        EXPECT_EQ(child<QLineEdit>(memo, "MaskEdBox1")->text(), QStringLiteral("250"));
        clickOn(memo, "OKButton");
    });
    click(0, kPages);
    EXPECT_EQ(text(0, kPages), "250");
}

TEST_F(AutoWriterWindow, aMemoThatMayOnlyBeReadHasNothingToWrite) {
    openSample([](model::Document& sample) {
        sample.CurrDB20.Fields[kNotes].AutoWriter = 1;
        sample.CurrDB20.Lists[kNotes] = {{1}, {"Read"}};
    });
    doc().CurrDB20.ReadOnly = 1;
    script.expect([](QWidget& memo) {
        EXPECT_FALSE(child<QPushButton>(memo, "CmdAw")->isEnabled());
        clickOn(memo, "CancelButton");
    });
    click(0, kNotes);
}

TEST(AutoWriterDialog, hasAnOrderOfItsControls) {
    dlgAutoWriter dialog({"Novel", "Essay"}, dlgAutoWriter::Choice::Several, nullptr);
    showAndActivate(dialog);
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("OKButton"));
    EXPECT_EQ(tabOrder(dialog), words("List1 optAppend OKButton CancelButton"));
    EXPECT_EQ(child<QListWidget>(dialog, "List1")->selectionMode(), QAbstractItemView::MultiSelection);
    expectNoAccessKeyTwice(dialog);
    EXPECT_EQ(dialog.action(), design::OptAction::Append);
    press(dialog, Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&dialog] { return dialog.action() == design::OptAction::Replace; }));
}

} // namespace
} // namespace tallybook::test
