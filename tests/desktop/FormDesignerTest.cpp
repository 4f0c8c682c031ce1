#include "core/forms/ImageCell.h"
#include "core/forms/PalmBitmap.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/forms/FormScreen.h"
#include "desktop/forms/OutsideEditor.h"
#include "forms/Pictures.h"

#include <QCheckBox>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTreeWidget>

namespace tallybook::test {
namespace {

using desktop::FormScreen;

const QString kAskSave = QStringLiteral("Do you want to save the changes you made to the form?");

class FormDesigner : public WindowTest {
protected:
    void design(const ModalScript::Step& step) {
        script.expect([step](QWidget& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("frmDesignForm"));
            step(dialog);
            if (dialog.isVisible())
                dialog.close();
        });
        trigger("mnuFormDesigner");
    }
    const model::FormDef& form(int part) { return doc().CurrDB20.Forms[static_cast<std::size_t>(part)]; }
};

FormScreen* screenOf(QWidget& dialog) {
    return child<FormScreen>(dialog, "BoxControl");
}

// The middle of a row, on the label's or the value's side; rows of the handheld are 12 pixels high below 16.
QPoint pointOf(QWidget& dialog, int line, bool value) {
    const int zoom = screenOf(dialog)->zoom();
    return {(value ? 120 : 10) * zoom, (16 + line * 12 + 6) * zoom};
}

// What the mouse does between pressing on a field of the list and letting go over the screen.
void drop(QWidget& dialog, const char* kind, int number, QPoint point) {
    QMimeData data;
    data.setData(QString::fromLatin1(kind), QByteArray::number(number));
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(screenOf(dialog), &enter);
    QDropEvent event(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(screenOf(dialog), &event);
}

QString labelOf(QWidget& dialog, const char* name) {
    auto* label = child<QLabel>(dialog, name);
    return label->isVisible() ? label->text() : QStringLiteral("hidden");
}

TEST_F(FormDesigner, fieldsAreDroppedAndSaved) {
    openSample();
    design([](QWidget& dialog) {
        drop(dialog, desktop::kFieldMime, kTitle, pointOf(dialog, 0, false));
        drop(dialog, desktop::kFieldMime, kPages, pointOf(dialog, 3, true));
        drop(dialog, desktop::kFieldMime, 255, pointOf(dialog, 1, false));
        EXPECT_EQ(labelOf(dialog, "LblFldLabel0"), QStringLiteral("Title"));
        EXPECT_EQ(labelOf(dialog, "LblFldValue0"), QStringLiteral("Text"));
        EXPECT_EQ(labelOf(dialog, "LblFldLabel1"), QStringLiteral("Label"));
        EXPECT_EQ(labelOf(dialog, "LblFldValue1"), QStringLiteral("hidden"));
        EXPECT_EQ(labelOf(dialog, "LblFldLabel2"), QStringLiteral("hidden"));
        clickOn(dialog, "CmdSaveForm");
        EXPECT_EQ(labelOf(dialog, "LblFldLabel2"), QStringLiteral("Pages")); // closed up
        clickOn(dialog, "cmdQuit");
    });
    EXPECT_TRUE(doc().DocModified);
    trigger("mnuFileSave");
    const auto saved = savedFile();
    const model::FormDef& base = saved->CurrDB20.Forms[0];
    ASSERT_EQ(base.NumItems, 3);
    EXPECT_EQ(base.Items[0].Field, kTitle);
    EXPECT_EQ(base.Items[1].Field, 255);
    EXPECT_EQ(base.Items[2].Field, kPages);
}

TEST_F(FormDesigner, theKeyboardDoesAllThatTheMouseDoes) {
    openSample();
    design([](QWidget& dialog) {
        QApplication::setActiveWindow(&dialog);
        auto* list = child<QTreeWidget>(dialog, "LVFieldList");
        list->setFocus();
        press(dialog, Qt::Key_Return); // the first field
        press(dialog, Qt::Key_Down);
        press(dialog, Qt::Key_Return); // the second
        screenOf(dialog)->setFocus();
        press(dialog, Qt::Key_Up);                  // from the third row to the second
        press(dialog, Qt::Key_Up, Qt::AltModifier); // which becomes the first
        press(dialog, Qt::Key_Right, Qt::ControlModifier);
        press(dialog, Qt::Key_Right); // its value
        EXPECT_TRUE(isEnabled(dialog, "FldLock"));
        QTest::keyClick(child<QCheckBox>(dialog, "FldLock"), Qt::Key_Space);
        clickOn(dialog, "CmdSaveForm");
        clickOn(dialog, "cmdQuit");
    });
    ASSERT_EQ(form(0).NumItems, 2);
    EXPECT_EQ(form(0).Items[0].Field, kPages);
    EXPECT_EQ(form(0).Items[0].ItemByte2, 1);
    EXPECT_EQ(form(0).Items[1].Field, kTitle);
    EXPECT_EQ(form(0).FormByte, 41);
}

TEST_F(FormDesigner, rowIsDroppedOnAnother) {
    openSample();
    design([](QWidget& dialog) {
        for (const int slot : {kTitle, kPages, kPrice})
            drop(dialog, desktop::kFieldMime, slot,
                 pointOf(dialog,
                         slot == kTitle   ? 0
                         : slot == kPages ? 1
                                          : 2,
                         false));
        drop(dialog, desktop::kRowMime, 0, pointOf(dialog, 2, false));
        clickOn(dialog, "CmdSaveForm");
    });
    EXPECT_EQ(form(0).Items[0].Field, kPages);
    EXPECT_EQ(form(0).Items[1].Field, kPrice);
    EXPECT_EQ(form(0).Items[2].Field, kTitle);
}

TEST_F(FormDesigner, clickOnAFreeRowTellsWhatToDo) {
    openSample();
    design([this](QWidget& dialog) {
        script.expectMessage(QStringLiteral("Drag a field from the list and drop at the position required"));
        QTest::mouseClick(screenOf(dialog), Qt::LeftButton, {}, pointOf(dialog, 4, false));
        script.expectMessage(QStringLiteral("You must click on a field in the Palm screen to remove it."));
        QTest::keyClick(screenOf(dialog), Qt::Key_Delete);
    });
}

TEST_F(FormDesigner, labelFontAndColourAreSet) {
    openSample();
    design([this](QWidget& dialog) {
        drop(dialog, desktop::kFieldMime, kTitle, pointOf(dialog, 0, false));
        QTest::mouseClick(screenOf(dialog), Qt::LeftButton, {}, pointOf(dialog, 0, false));
        EXPECT_EQ(textOf(dialog, "FldLabel"), "Title");
        typeInto(dialog, "FldLabel", QStringLiteral("Name of it"));
        QTest::mouseClick(child<QRadioButton>(dialog, "OptFont3"), Qt::LeftButton);
        script.expect([](QWidget& colours) { clickOn(colours, "box7"); }); // red
        clickOn(dialog, "cmdForecolor");
        script.expect([](QWidget& help) {
            QTest::keyClicks(help.focusWidget(), QStringLiteral("As printed"));
            clickOn(help, "cmdOK");
        });
        clickOn(dialog, "Cmdpophlp");
        EXPECT_EQ(labelOf(dialog, "LblFldLabel0"), QStringLiteral("Name of it"));
        clickOn(dialog, "CmdSaveForm");
    });
    const model::FormItem& item = form(0).Items[0];
    EXPECT_EQ(item.Caption, "Name of it");
    EXPECT_EQ(item.ItemKind, 3);
    EXPECT_EQ(item.LabelFore, (model::Colour{255, 0, 0}));
    EXPECT_EQ(item.ItemText, "As printed");
}

TEST_F(FormDesigner, tabsComeWithTheirStripAndStart) {
    openSample();
    design([](QWidget& dialog) {
        EXPECT_FALSE(child<QTabBar>(dialog, "TabStrip1")->isVisible());
        EXPECT_FALSE(child<QSlider>(dialog, "Slider2")->isVisible());
        QTest::keyClick(child<QSpinBox>(dialog, "UpDown1"), Qt::Key_Up);
        QTest::keyClick(child<QSpinBox>(dialog, "UpDown1"), Qt::Key_Up);
        auto* strip = child<QTabBar>(dialog, "TabStrip1");
        EXPECT_TRUE(strip->isVisible());
        EXPECT_EQ(strip->tabText(1), QStringLiteral("tab2"));
        EXPECT_TRUE(child<QSlider>(dialog, "Slider2")->isVisible());
        auto* start = child<QSpinBox>(dialog, "UpDown2");
        for (int i = 0; i < 12; ++i)
            QTest::keyClick(start, Qt::Key_Up);
        EXPECT_EQ(start->value(), 10);
        EXPECT_EQ(child<QSlider>(dialog, "Slider2")->value(), 10);
        for (int i = 0; i < 7; ++i)
            QTest::keyClick(start, Qt::Key_Down);
        EXPECT_EQ(start->value(), 3);
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(1).center());
        typeInto(dialog, "Text4", QStringLiteral("Notes"));
        EXPECT_EQ(strip->tabText(1), QStringLiteral("Notes"));
        drop(dialog, desktop::kFieldMime, kNotes, pointOf(dialog, 3, false)); // line 2 is the strip
        EXPECT_EQ(labelOf(dialog, "LbltabFldLabel0"), QStringLiteral("Notes"));
        clickOn(dialog, "CmdSaveForm");
    });
    EXPECT_EQ(doc().CurrDB20.NumForms, 3);
    EXPECT_EQ(doc().CurrDB20.StartForm, 3);
    EXPECT_EQ(form(2).Name, "Notes");
    EXPECT_EQ(form(2).Items[0].Field, kNotes);
}

TEST_F(FormDesigner, splitterIsDragged) {
    openSample();
    design([](QWidget& dialog) {
        FormScreen* screen = screenOf(dialog);
        const int zoom = screen->zoom();
        QTest::mousePress(screen, Qt::LeftButton, {}, {40 * zoom, 30 * zoom});
        QTest::mouseMove(screen, {90 * zoom, 30 * zoom});
        QTest::mouseMove(screen, {80 * zoom, 30 * zoom});
        QTest::mouseRelease(screen, Qt::LeftButton, {}, {80 * zoom, 30 * zoom});
        clickOn(dialog, "CmdSaveForm");
    });
    EXPECT_EQ(form(0).FormByte, 80);
}

TEST_F(FormDesigner, quittingAsksAboutChanges) {
    openSample();
    design([this](QWidget& dialog) {
        drop(dialog, desktop::kFieldMime, kTitle, pointOf(dialog, 0, false));
        script.expectMessage(kAskSave, QStringLiteral("Cancel"));
        clickOn(dialog, "cmdQuit");
        EXPECT_TRUE(dialog.isVisible());
        script.expectMessage(kAskSave, QStringLiteral("No"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(form(0).NumItems, 0);
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(FormDesigner, valuesOfTheRecordsAreShown) {
    openSample();
    const std::string first = text(0, kTitle);
    const std::string second = text(1, kTitle);
    design([&](QWidget& dialog) {
        drop(dialog, desktop::kFieldMime, kTitle, pointOf(dialog, 0, false));
        QTest::keyClick(child<QCheckBox>(dialog, "chkShowValues"), Qt::Key_Space);
        EXPECT_EQ(labelOf(dialog, "LblFldValue0").toStdString(), first);
        clickOn(dialog, "cmdNextRecord");
        EXPECT_EQ(labelOf(dialog, "LblFldValue0").toStdString(), second);
        script.expectMessage(kAskSave, QStringLiteral("No"));
        clickOn(dialog, "cmdQuit");
    });
}

TEST_F(FormDesigner, readOnlyDatabaseIsRefused) {
    openSample([](model::Document& sample) { sample.CurrDB20.ReadOnly = 1; });
    script.expectMessage(QStringLiteral("Tallybook is readonly."));
    trigger("mnuFormDesigner");
}

// Pictures ----------------------------------------------------------------------------------------------------

class PictureDialog : public WindowTest {
protected:
    void edit(const ModalScript::Step& step) {
        script.expect([step](QWidget& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("frmEditImage"));
            step(dialog);
            if (dialog.isVisible())
                dialog.close();
        });
        click(0, kPicture);
    }
    void putPicture(model::Document& document, const forms::Bitmap& bitmap) {
        ASSERT_TRUE(forms::setPicture(document, services, model::kFirstDataRow, kPicture,
                                      forms::writePalmBitmap(bitmap).value(), forms::systemRandom())
                        .ok());
    }
    forms::Bitmap m_chequers = drawn(1, {kWhite, kBlack}, {"10101", "01010", "11111"});
};

TEST_F(PictureDialog, newPictureIsSaved) {
    openSample();
    edit([](QWidget& dialog) {
        EXPECT_EQ(child<QLabel>(dialog, "lblStatus")->text(), QStringLiteral("160 x 160, 2 colours, 338 bytes"));
        clickOn(dialog, "cmdSave");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(text(0, kPicture), "*{Image}");
    EXPECT_TRUE(doc().DocModified);
    trigger("mnuFileSave");
    EXPECT_EQ(text(0, kPicture), " {Image}");
    EXPECT_EQ(savedFile()->grd.text(2, model::columnOfSlot(kPicture)), " {Image}");
}

TEST_F(PictureDialog, cancelChangesNothing) {
    openSample();
    edit([](QWidget& dialog) { clickOn(dialog, "cmdCancel"); });
    EXPECT_EQ(text(0, kPicture), "");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(PictureDialog, pictureIsCopiedAndPasted) {
    openSample();
    putPicture(doc(), m_chequers);
    edit([this](QWidget& dialog) {
        clickOn(dialog, "cmdCopy");
        script.expect([](QWidget& import) {
            EXPECT_EQ(import.objectName(), QStringLiteral("dlgImportPicture"));
            clickOn(import, "cmdOK");
        });
        clickOn(dialog, "cmdPaste");
        EXPECT_TRUE(child<QLabel>(dialog, "lblStatus")->text().startsWith(QStringLiteral("5 x 3, 256 colours")));
        clickOn(dialog, "cmdSave");
    });
    const auto bytes = forms::pictureBytes(doc(), services, model::kFirstDataRow, kPicture);
    ASSERT_TRUE(bytes.ok());
    const auto bitmap = forms::readPalmBitmap(bytes.value());
    ASSERT_TRUE(bitmap.ok());
    EXPECT_EQ(coloursOf(bitmap.value(), 0), "000000 FFFFFF 000000 FFFFFF 000000");
}

TEST_F(PictureDialog, readOnlyPictureIsLookedAt) {
    openSample();
    putPicture(doc(), m_chequers);
    doc().CurrDB20.ReadOnly = 1;
    edit([](QWidget& dialog) {
        EXPECT_FALSE(isEnabled(dialog, "cmdSave"));
        EXPECT_FALSE(isEnabled(dialog, "cmdImport"));
        EXPECT_TRUE(isEnabled(dialog, "cmdCopy"));
    });
}

// A desktop without a program for bitmaps has the small editor.
TEST_F(PictureDialog, pixelsAreDrawn) {
    qputenv("TALLYBOOK_PICTURE_EDITOR", "");
    if (!desktop::pictureProgram().isEmpty())
        GTEST_SKIP() << "this desktop has a program for bitmaps";
    openSample();
    putPicture(doc(), m_chequers);
    edit([this](QWidget& dialog) {
        script.expect([](QWidget& editor) {
            ASSERT_EQ(editor.objectName(), QStringLiteral("dlgPixelEditor"));
            auto* canvas = child<QWidget>(editor, "canvas");
            const int scale = canvas->width() / 5;
            QTest::mouseClick(canvas, Qt::LeftButton, {}, {scale + scale / 2, scale / 2});
            clickOn(editor, "cmdOK");
        });
        clickOn(dialog, "cmdEdit");
        clickOn(dialog, "cmdSave");
    });
    const auto bytes = forms::pictureBytes(doc(), services, model::kFirstDataRow, kPicture);
    ASSERT_TRUE(bytes.ok());
    EXPECT_EQ(indicesOf(forms::readPalmBitmap(bytes.value()).value(), 0), "11101");
}

TEST(PictureProgram, lineOfADescriptionBecomesArguments) {
    EXPECT_EQ(desktop::programOfExec(QStringLiteral("paint %U")),
              (QStringList{QStringLiteral("paint"), QStringLiteral("%f")}));
    EXPECT_EQ(desktop::programOfExec(QStringLiteral("\"/opt/my paint/run\" --new %f --icon %i")),
              (QStringList{QStringLiteral("/opt/my paint/run"), QStringLiteral("--new"), QStringLiteral("%f"),
                           QStringLiteral("--icon")}));
    EXPECT_EQ(desktop::programOfExec(QStringLiteral("paint")),
              (QStringList{QStringLiteral("paint"), QStringLiteral("%f")}));
    EXPECT_TRUE(desktop::programOfExec({}).isEmpty());
}

} // namespace
} // namespace tallybook::test
