// What each panel of Field Properties does with its clicks, and what its OK stores.
#include "adapters/FolderDesktop.h"
#include "desktop/FieldPropTest.h"

#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QWheelEvent>

namespace tallybook::test {
namespace {

using desktop::frmFieldProp;
using model::columnOfSlot;
using model::FieldType;

constexpr int kFree = 18; // the first slot without a field

class FieldPropPanels : public FieldPropTest {
protected:
    // The sample with a field of a type in the free slot.
    void openWith(FieldType type, const std::function<void(model::DatabaseModel&)>& change = {}) {
        openSample([&](model::Document& sample) {
            sample.CurrDB20.Fields[kFree].Type = type;
            sample.CurrDB20.Fields[kFree].Name = "New";
            if (change)
                change(sample.CurrDB20);
        });
    }
    void settle() { QCoreApplication::processEvents(); }
    const model::DatabaseModel& db() { return doc().CurrDB20; }
};

TEST_F(FieldPropPanels, aDefaultIsCheckedAsItIsLeft) {
    openSample();
    open(kPages, [this](QWidget& form) {
        enter(form, "txtDefault", "abc");
        script.expectMessage(QStringLiteral("Integer value expected"));
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        settle();
        auto* line = child<QLineEdit>(form, "txtDefault");
        EXPECT_EQ(form.focusWidget(), line);
        EXPECT_EQ(line->selectedText(), QStringLiteral("abc"));
        QTest::keyClicks(line, QStringLiteral("12"));
        QTest::keyClick(line, Qt::Key_Tab); // no message
        settle();
        EXPECT_NE(form.focusWidget(), line);
        enter(form, "txtDefault", "-"); // refused by OK alone
        QTest::keyClick(line, Qt::Key_Tab);
        settle();
        enter(form, "txtDefault", "70000");
        clickOn(form, "CancelButton"); // whoever cancels is not asked
        settle();
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(field(kPages).Default, "");
}

TEST_F(FieldPropPanels, theAutoWriterHasASeparatorAndTexts) {
    openSample();
    open(kTitle, [](QWidget& form) {
        EXPECT_FALSE(child<QWidget>(form, "FrmAWProp")->isVisible());
        tick(form, "checkAutoWriter");
        EXPECT_TRUE(child<QWidget>(form, "FrmAWProp")->isVisible());
        EXPECT_EQ(child<QComboBox>(form, "cmbSeparate")->currentText(), QStringLiteral("Comma"));
        choose(form, "cmbSeparate", "Semicolon");
        enter(form, "TxtAW", "Sea");
        QTest::keyClick(form.focusWidget(), Qt::Key_Return); // adds, and does not close
        QTest::keyClicks(form.focusWidget(), QStringLiteral("Land"));
        clickOn(form, "cmdAddToList");
        auto* list = child<QListWidget>(form, "ListAW");
        ASSERT_EQ(list->count(), 2);
        EXPECT_FALSE(child<QWidget>(form, "cmdRemFrmList")->isEnabled());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
        clickOn(form, "cmdRemFrmList");
        EXPECT_EQ(list->count(), 1);
        ok(form);
    });
    EXPECT_EQ(field(kTitle).AutoWriter, 3);
    EXPECT_EQ(db().Lists.at(kTitle).Items, std::vector<std::string>{"Land"});
    open(kTitle, [](QWidget& form) {
        EXPECT_TRUE(child<QWidget>(form, "FrmAWProp")->isVisible());
        tick(form, "checkAutoWriter");
        EXPECT_FALSE(child<QWidget>(form, "FrmAWProp")->isVisible());
        ok(form);
    });
    EXPECT_EQ(field(kTitle).AutoWriter, 0);
}

TEST_F(FieldPropPanels, theFlagsOfATypeAreStored) {
    openSample();
    open(kTitle, [](QWidget& form) {
        tick(form, "chkBarcodeScan");
        tick(form, "checkDisableAutoShift");
        ok(form);
    });
    EXPECT_EQ(field(kTitle).FieldFlags & 0x80, 0x80);
    EXPECT_EQ(field(kTitle).Decimals, 1);
    open(kStock, [](QWidget& form) {
        EXPECT_TRUE(child<QAbstractButton>(form, "checkIncrementDecrement")->isChecked());
        tick(form, "checkIncrementDecrement");
        ok(form);
    });
    EXPECT_EQ(field(kStock).IncDec, 0);
}

TEST_F(FieldPropPanels, theItemsOfAListAreEditedInTheListEditor) {
    openSample();
    open(kShelf, [this](QWidget& form) {
        script.expect([](QWidget& editor) {
            EXPECT_EQ(editor.objectName(), QStringLiteral("frmListEditor"));
            EXPECT_EQ(child<QComboBox>(editor, "cmbList")->currentText(), QStringLiteral("Shelf"));
            clickOn(editor, "cmdDown"); // Upper goes below Middle
            clickOn(editor, "OKButton");
        });
        clickOn(form, "cmdListItems");
        ok(form);
    });
    EXPECT_EQ(db().Lists.at(kShelf).Items, (std::vector<std::string>{"Middle", "Upper", "Lower"}));
    EXPECT_EQ(text(0, kShelf), "Middle");
}

TEST_F(FieldPropPanels, theListEditorHasTheNameThatIsBeingTyped) {
    openSample();
    open(kShelf, [this](QWidget& form) {
        enter(form, "txtFieldName", "Place");
        script.expect([](QWidget& editor) {
            EXPECT_EQ(child<QComboBox>(editor, "cmbList")->currentText(), QStringLiteral("Place"));
            clickOn(editor, "OKButton");
        });
        clickOn(form, "cmdListItems");
        clickOn(form, "CancelButton");
    });
    EXPECT_EQ(field(kShelf).Name, "Shelf");
}

TEST_F(FieldPropPanels, controlAndEnterInTheExpressionIsOk) {
    openSample([](model::Document& sample) {
        sample.CurrDB20.Fields[kValue].Type = model::FieldType::AdvExpression;
        sample.CurrDB20.Expressions[kValue] = {.ResultType = 0, .Tokens = {kPages, 90, kPrice}};
    });
    open(kValue, [](QWidget& form) {
        auto* box = child<QPlainTextEdit>(form, "txtAdvExpression");
        box->setFocus();
        QTest::keyClick(box, Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_Return); // a line of its own
        QTest::keyClicks(box, QStringLiteral("+ 1"));
        QTest::keyClick(box, Qt::Key_Return, Qt::ControlModifier);
        EXPECT_FALSE(form.isVisible());
        form.close();
    });
    EXPECT_TRUE(doc().DocModified);
}

TEST_F(FieldPropPanels, aConditionThatLooksLikeHtmlIsShownAsItStands) {
    openSample([](model::Document& sample) {
        sample.CurrDB20.Fields[kValue].Type = model::FieldType::ConditionalExpression;
        model::CondExprDef& condition = sample.CurrDB20.CondExprs[kValue];
        condition.CondFields[0] = kTitle;
        condition.CondOps[0] = '=';
        condition.CondValues[0] = "<b>x</b>";
    });
    open(kValue, [](QWidget& form) {
        auto* condition = child<QLabel>(form, "lblCondition");
        EXPECT_TRUE(condition->text().contains(QStringLiteral("<b>x</b>"))) << condition->text().toStdString();
        EXPECT_EQ(condition->textFormat(), Qt::PlainText);
        form.close();
    });
}

TEST_F(FieldPropPanels, cancelGivesBackTheOptionsThatWereToBecomeAList) {
    openSample();
    open(kCover, [this](QWidget& form) {
        choose(form, "cmbFieldType", "List");
        script.expect([this](QWidget& editor) {
            script.expectMessage(QStringLiteral("Are you sure you want to delete the item Hard ?"),
                                 QStringLiteral("Yes"));
            clickOn(editor, "cmdDelete");
            clickOn(editor, "OKButton");
        });
        clickOn(form, "cmdListItems");
        EXPECT_EQ(db().Lists.at(kCover).Count(), 1);
        clickOn(form, "CancelButton");
    });
    EXPECT_EQ(db().Lists.at(kCover), (model::ListDef{{1, 2}, {"Hard", "Soft"}}));
    EXPECT_EQ(text(0, kCover), "Hard");
}

TEST_F(FieldPropPanels, defaultsAreChosenFromTheListOfTheType) {
    openSample();
    const auto chosen = [this](int slot, const char* entry) {
        open(slot, [entry](QWidget& form) {
            choose(form, "cmbDefault", entry);
            ok(form);
        });
    };
    chosen(kBought, "Record Added");
    EXPECT_EQ(field(kBought).Default, "A");
    chosen(kAt, "Record Updated");
    EXPECT_EQ(field(kAt).Default, "U");
    chosen(kChanged, "none");
    EXPECT_EQ(field(kChanged).Default, "");
    chosen(kLent, "Checked");
    EXPECT_EQ(field(kLent).Decimals, 1);
    chosen(kPicture, "256 colors");
    EXPECT_EQ(field(kPicture).Decimals, 8);
}

TEST_F(FieldPropPanels, theNextValueIsTyped) {
    openSample();
    open(kNumber, [this](QWidget& form) {
        auto* box = child<QComboBox>(form, "cmbDefault");
        EXPECT_EQ(box->currentText(), QStringLiteral("4"));
        enter(box->lineEdit(), "many");
        script.expectMessage(QStringLiteral("The next value must be a whole number from -2147483648 to 2147483647."));
        ok(form);
        EXPECT_EQ(form.focusWidget(), box);
        enter(box->lineEdit(), "100");
        ok(form);
    });
    EXPECT_EQ(db().AutoIncNext.at(kNumber), 100);
}

TEST_F(FieldPropPanels, aFloatShowsItsNewDecimals) {
    openSample();
    open(kPrice, [this](QWidget& form) {
        choose(form, "cmbDecDigs", "1");
        script.expectMessage(
            QStringLiteral("Digits that are not shown any more will be gone with the next save.\nDo you want to "
                           "show fewer digits?"),
            QStringLiteral("Yes"));
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(field(kPrice).Decimals, 1);
    EXPECT_EQ(text(0, kPrice), "9.5");
    EXPECT_EQ(text(1, kPrice), "4.3"); // ties go away from zero
}

TEST_F(FieldPropPanels, aSimpleExpressionIsBuiltFromLists) {
    openSample();
    open(kValue, [this](QWidget& form) {
        choose(form, "cmbExpr", "Pages");
        choose(form, "cmbOper", "*");
        script.expectMessage(QStringLiteral("Complete the Expression"));
        ok(form);
        enter(child<QComboBox>(form, "cmbExpr", 1)->lineEdit(), "2.5");
        choose(form, "cmbDecDigs", "1");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    const model::ExprDef& expression = db().Expressions.at(kValue);
    EXPECT_EQ(expression.Tokens[0], static_cast<std::uint32_t>(kPages));
    EXPECT_EQ(expression.Tokens[1], 92U);
    EXPECT_EQ(expression.Tokens[2], 86U);
    EXPECT_EQ(expression.TokenTexts[2], "2.5");
    EXPECT_EQ(expression.Tokens[3], 0U);
    EXPECT_EQ(text(0, kValue), "300.0"); // calculated at once
    EXPECT_EQ(text(1, kValue), "240.0");
    open(kValue, [](QWidget& form) {
        EXPECT_EQ(child<QComboBox>(form, "cmbExpr")->currentText(), QStringLiteral("Pages"));
        EXPECT_EQ(child<QComboBox>(form, "cmbOper")->currentText(), QStringLiteral("*"));
        EXPECT_EQ(child<QComboBox>(form, "cmbExpr", 1)->currentText(), QStringLiteral("2.5"));
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, theFormatDecidesTheOperatorsAndTheHelp) {
    openSample();
    open(kValue, [](QWidget& form) {
        auto* help = child<QLabel>(form, "LblFormat");
        auto* signs = child<QComboBox>(form, "cmbOper");
        EXPECT_EQ(help->text(), QStringLiteral("Operation(s) with Checkbox, Integer, Long, Floating, Expression, "
                                               "External Lookup"));
        EXPECT_EQ(signs->count(), 5);
        choose(form, "cmbOper", "+");
        choose(form, "cmbExpFormat", "Date +/- Days ");
        EXPECT_TRUE(help->text().startsWith(QStringLiteral("Date +/- Days(Integer, Long,")));
        EXPECT_EQ(signs->count(), 3);
        EXPECT_EQ(signs->currentText(), QStringLiteral("+")); // the sign stays what it was
        EXPECT_FALSE(child<QWidget>(form, "cmbOper", 1)->isEnabled());
        EXPECT_FALSE(child<QWidget>(form, "cmbExpr", 2)->isEnabled());
        choose(form, "cmbExpFormat", "Days");
        EXPECT_EQ(help->text(), QStringLiteral("Date - Date"));
        EXPECT_EQ(signs->count(), 2);
        EXPECT_EQ(signs->currentIndex(), 0);
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, anExpressionIsClearedAfterAQuestion) {
    openSample();
    open(kValue, [this](QWidget& form) {
        choose(form, "cmbExpr", "Pages");
        const auto clear = [&](const char* answer) {
            script.expect([answer](QWidget& box) {
                EXPECT_EQ(box.windowTitle(), QStringLiteral("Are you sure"));
                EXPECT_EQ(qobject_cast<QMessageBox*>(&box)->text(), QStringLiteral("Clear the entire expression"));
                pressButton(box, QString::fromLatin1(answer));
            });
            clickOn(form, "ClearExpression");
        };
        clear("No");
        EXPECT_EQ(child<QComboBox>(form, "cmbExpr")->currentText(), QStringLiteral("Pages"));
        clear("Yes");
        EXPECT_EQ(child<QComboBox>(form, "cmbExpr")->currentIndex(), 0);
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, theAdvancedTextTakesWhatTheListsInsert) {
    openWith(FieldType::AdvExpression);
    open(kFree, [](QWidget& form) {
        auto* box = child<QPlainTextEdit>(form, "txtAdvExpression");
        choose(form, "cmbAdvField", "Pages");
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Pages"));
        EXPECT_EQ(form.focusWidget(), box);
        EXPECT_EQ(child<QComboBox>(form, "cmbAdvField")->currentIndex(), 0);
        choose(form, "cmbAdvOper", " ** (power)");
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Pages ** "));
        QTest::keyClicks(box, QStringLiteral("2"));
        choose(form, "cmbAdvConst", "(Constants)"); // the heading inserts nothing
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Pages ** 2"));
        QTest::keyClick(box, Qt::Key_Return); // the default button
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(text(1, kFree), "9216"); // 96 by 96
    open(kFree, [](QWidget& form) {
        auto* box = child<QPlainTextEdit>(form, "txtAdvExpression");
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Pages ** 2"));
        QTextCursor cursor = box->textCursor();
        cursor.setPosition(0);
        cursor.setPosition(5, QTextCursor::KeepAnchor);
        box->setTextCursor(cursor);
        choose(form, "cmbAdvPrev", "Prev(Stock)"); // in the place of what is selected
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Prev(Stock) ** 2"));
        clickOn(form, "CancelButton");
    });
}

// Its entries go into the text when they are chosen, so passing over them must choose none.
TEST_F(FieldPropPanels, aClosedInsertionListOpensInsteadOfInserting) {
    openWith(FieldType::AdvExpression);
    open(kFree, [](QWidget& form) {
        auto* box = child<QPlainTextEdit>(form, "txtAdvExpression");
        auto* fields = child<QComboBox>(form, "cmbAdvField");
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_P}) {
            fields->setFocus();
            QTest::keyClick(fields, key);
            EXPECT_TRUE(fields->view()->isVisible()) << key;
            EXPECT_EQ(box->toPlainText(), QString());
            QTest::keyClick(fields->view(), Qt::Key_Escape);
            EXPECT_EQ(box->toPlainText(), QString());
        }
        QWheelEvent wheel(QPointF(3, 3), fields->mapToGlobal(QPointF(3, 3)), {}, QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(fields, &wheel);
        EXPECT_EQ(box->toPlainText(), QString());
        fields->setFocus();
        QTest::keyClick(fields, Qt::Key_Down);
        fields->view()->setCurrentIndex(fields->model()->index(fields->findText(QStringLiteral("Pages")), 0));
        QTest::keyClick(fields->view(), Qt::Key_Return);
        EXPECT_EQ(box->toPlainText(), QStringLiteral("Pages"));
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, aFaultInTheAdvancedTextIsSelected) {
    openWith(FieldType::AdvExpression);
    open(kFree, [this](QWidget& form) {
        auto* box = child<QPlainTextEdit>(form, "txtAdvExpression");
        box->setFocus();
        QTest::keyClicks(box, QStringLiteral("Pages + Nothing * 2"));
        script.expect([](QWidget& message) {
            EXPECT_EQ(message.windowTitle(), QStringLiteral("Error in the expression"));
            pressButton(message, QStringLiteral("OK"));
        });
        ok(form);
        EXPECT_EQ(form.focusWidget(), box);
        EXPECT_EQ(box->textCursor().selectedText(), QStringLiteral("Nothing"));
        clickOn(form, "CancelButton");
    });
    EXPECT_EQ(db().Expressions.at(kFree).Tokens[0], 0U);
}

TEST_F(FieldPropPanels, theAdvancedTextIsClearedAfterAQuestion) {
    openWith(FieldType::AdvExpression);
    open(kFree, [this](QWidget& form) {
        auto* box = child<QPlainTextEdit>(form, "txtAdvExpression");
        box->setFocus();
        QTest::keyClicks(box, QStringLiteral("Pages"));
        script.expectMessage(QStringLiteral("Clear the entire expression"), QStringLiteral("Yes"));
        auto* panel = child<QWidget>(form, "frmExprAdv");
        clickOn(*panel, "ClearExpression");
        EXPECT_EQ(box->toPlainText(), QString());
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, theOptionsOfARadioButtonAreTyped) {
    openSample();
    open(kCover, [](QWidget& form) {
        EXPECT_EQ(child<QComboBox>(form, "CmbNobuton")->currentText(), QStringLiteral("2"));
        EXPECT_FALSE(child<QLineEdit>(form, "Optxt", 2)->isVisible());
        choose(form, "CmbNobuton", "3");
        EXPECT_TRUE(child<QLineEdit>(form, "Optxt", 2)->isVisible());
        EXPECT_EQ(child<QLineEdit>(form, "Optxt", 1)->text(), QStringLiteral("Soft"));
        enter(form, "Optxt", "Leather", 2);
        tick(form, "OptSel", 2);
        ok(form);
    });
    EXPECT_EQ(db().Lists.at(kCover), (model::ListDef{{1, 2, 3}, {"Hard", "Soft", "Leather"}}));
    EXPECT_EQ(field(kCover).Default, "3");
    EXPECT_EQ(text(0, kCover), "Hard");
}

TEST_F(FieldPropPanels, aListGivesARadioButtonItsFirstEightItems) {
    openWith(FieldType::List, [](model::DatabaseModel& db) {
        for (std::uint8_t id = 1; id <= 9; ++id) {
            db.Lists[kFree].ItemIds.push_back(id);
            db.Lists[kFree].Items.push_back("Item " + std::to_string(id));
        }
    });
    open(kFree, [this](QWidget& form) {
        script.expectMessage(QStringLiteral("Only the first Eight values of the list will be considered"));
        choose(form, "cmbFieldType", "Radio Button");
        EXPECT_EQ(child<QComboBox>(form, "CmbNobuton")->currentText(), QStringLiteral("8"));
        EXPECT_EQ(child<QLineEdit>(form, "Optxt", 7)->text(), QStringLiteral("Item 8"));
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, aConditionalExpressionNeedsItsCondition) {
    openWith(FieldType::ConditionalExpression);
    open(kFree, [this](QWidget& form) {
        EXPECT_EQ(child<QLabel>(form, "lblCondition")->text(), QStringLiteral("No condition yet"));
        script.expectMessage(QStringLiteral("Enter the condition for the expression"));
        ok(form);
        EXPECT_EQ(form.focusWidget(), child<QWidget>(form, "Command1"));
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, theConditionIsEnteredInTheFilterDesigner) {
    openWith(FieldType::ConditionalExpression);
    open(kFree, [this](QWidget& form) {
        script.expect([](QWidget& designer) {
            EXPECT_EQ(designer.objectName(), QStringLiteral("dlgFilterDesg"));
            EXPECT_FALSE(child<QWidget>(designer, "LblFilterName")->isVisible());
            choose(designer, "CmbFldListCmp1", "Pages");
            choose(designer, "CmbOpr1", "<=");
            enter(designer, "TxtConst1", "120");
            clickOn(designer, "OKButton");
        });
        clickOn(form, "Command1");
        EXPECT_EQ(child<QLabel>(form, "lblCondition")->text(), QStringLiteral("Pages <= \"120\""));
        script.expect([](QWidget& designer) {
            enter(designer, "TxtConst1", "100");
            QTest::keyClick(&designer, Qt::Key_Escape);
        });
        QTest::keyClick(child<QWidget>(form, "Command1"), Qt::Key_Space);
        EXPECT_EQ(child<QLabel>(form, "lblCondition")->text(), QStringLiteral("Pages <= \"120\""));
        enter(form, "TxtThen", "Thin");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(db().CondExprs.at(kFree).CondFields[0], kPages);
    EXPECT_EQ(text(0, kFree), "Thin");
    EXPECT_EQ(text(2, kFree), "");
}

TEST_F(FieldPropPanels, aConditionalExpressionGivesATextOrAField) {
    openWith(FieldType::ConditionalExpression, [](model::DatabaseModel& db) {
        db.CondExprs[kFree].CondFields[0] = kPages;
        db.CondExprs[kFree].CondOps[0] = '>';
        db.CondExprs[kFree].CondValues[0] = "100";
    });
    open(kFree, [](QWidget& form) {
        EXPECT_EQ(child<QLabel>(form, "lblCondition")->text(), QStringLiteral("Pages > \"100\""));
        enter(form, "TxtThen", "Thick");
        choose(form, "cmbThenColour", "Red");
        EXPECT_EQ(child<QComboBox>(form, "CmbElse")->currentText(), QStringLiteral("Constant"));
        choose(form, "CmbElse", "Title");
        EXPECT_TRUE(child<QAbstractButton>(form, "OptElse")->isChecked());
        EXPECT_FALSE(child<QLineEdit>(form, "TxtElse")->isEnabled());
        tick(form, "OptElse", 1); // the text
        EXPECT_EQ(child<QComboBox>(form, "CmbElse")->currentText(), QStringLiteral("Constant"));
        EXPECT_EQ(form.focusWidget(), child<QLineEdit>(form, "TxtElse"));
        tick(form, "OptElse"); // the first field
        EXPECT_EQ(child<QComboBox>(form, "CmbElse")->currentText(), QStringLiteral("Title"));
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(text(0, kFree), "Thick");
    EXPECT_EQ(doc().grd.colour(2, columnOfSlot(kFree)), 255U);
    EXPECT_EQ(text(1, kFree), "Garden Year");
    EXPECT_EQ(db().CondExprs.at(kFree).FalseField, kTitle);
}

TEST_F(FieldPropPanels, aJoinRefersToViewAndFieldsOfAnotherTallybook) {
    openSample();
    open(kFree, [](QWidget& form) {
        enter(form, "txtFieldName", "Printer");
        choose(form, "cmbFieldType", "DB Join");
        EXPECT_EQ(child<QComboBox>(form, "CmbViewList")->currentIndex(), -1);
        choose(form, "cmbSource", "MS2_Publishers");
        choose(form, "CmbViewList", "By city");
        choose(form, "cmbDisplay", "City");
        choose(form, "cmbJoin", "Number");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    const model::ExternalDef& external = db().Externals.at(kFree);
    EXPECT_EQ(external.Source, "MS2_Publishers");
    EXPECT_EQ(external.SortField(), 4);
    EXPECT_EQ(external.MatchField, 2);
    EXPECT_EQ(external.SourceField, 3);
    EXPECT_EQ(external.KeyType, 2); // an Integer
    open(kFree, [this](QWidget& form) {
        choose(form, "cmbDisplay", "House");
        choose(form, "cmbJoin", "City");
        script.expect([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Attention"));
            pressButton(box, QStringLiteral("OK"));
        });
        ok(form);
    });
    EXPECT_EQ(db().Externals.at(kFree).KeyType, 1);
}

TEST_F(FieldPropPanels, aTallybookThatIsMissingShowsNumbersAndKeepsThem) {
    putSample();
    ASSERT_TRUE(files.remove(kPublishersPath));
    show();
    script.expectMessage(QStringLiteral("Cannot find external database MS2_Publishers.pdb. External references for "
                                        "field \"Publisher\" will not be displayed"));
    window().openFile(kSamplePath);
    const model::ExternalDef before = db().Externals.at(kJoin);
    open(kJoin, [](QWidget& form) {
        EXPECT_EQ(child<QComboBox>(form, "cmbDisplay")->currentText(), QStringLiteral("Field 01"));
        EXPECT_TRUE(child<QLabel>(form, "lblExternal")->isVisible());
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(db().Externals.at(kJoin), before);
}

TEST_F(FieldPropPanels, theTallybooksOfAUserAreListedAndTheUserIsKept) {
    openSample();
    files.addFolder("/palm/Ann/Backup");
    files.put("/palm/Ann/Backup/MS2_Printers.pdb", files.bytes(kPublishersPath));
    adapters::FolderDesktop desktop{files, "/palm"};
    window().setHandheld(desktop, {{"Ann"}, {"/palm/Ann/Backup"}, {}});
    open(kFree, [](QWidget& form) {
        choose(form, "cmbFieldType", "DB Join");
        EXPECT_EQ(chosenIn(form, "cmbUser"), "(this Tallybook's folder)");
        EXPECT_FALSE(child<QLabel>(form, "lblExternal")->isVisible());
        enter(child<QComboBox>(form, "cmbSource")->lineEdit(), "MS2_Printers");
        choose(form, "cmbUser", "Ann");
        auto* tallybooks = child<QComboBox>(form, "cmbSource");
        EXPECT_EQ(tallybooks->count(), 1);
        EXPECT_EQ(tallybooks->itemText(0), QStringLiteral("MS2_Printers"));
        EXPECT_EQ(tallybooks->currentText(), QStringLiteral("MS2_Printers")); // what was typed stays
        EXPECT_GE(child<QComboBox>(form, "cmbDisplay")->findText(QStringLiteral("House")), 0);
        EXPECT_EQ(
            child<QLabel>(form, "lblExternal")->text(),
            QStringLiteral("Joins read the other Tallybook from the folder of this one: it has to be there, too."));
        clickOn(form, "CancelButton");
    });
    EXPECT_EQ(window().users().CurrentUser, "Ann"); // whatever became of the dialog
    EXPECT_EQ(settings.value("Settings", "UserID"), "Ann");
    open(kFree, [](QWidget& form) {
        choose(form, "cmbFieldType", "One to Many");
        choose(form, "cmbMDUser", "Ann");
        EXPECT_EQ(child<QComboBox>(form, "cmbMDSource")->itemText(0), QStringLiteral("MS2_Printers"));
        choose(form, "cmbFieldType", "DB Join"); // whose panel follows
        EXPECT_EQ(chosenIn(form, "cmbUser"), "Ann");
        EXPECT_EQ(child<QComboBox>(form, "cmbSource")->itemText(0), QStringLiteral("MS2_Printers"));
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, aTypedNameIsReadWhenItIsLeft) {
    openWith(FieldType::DBJoin);
    open(kFree, [](QWidget& form) {
        enter(child<QComboBox>(form, "cmbSource")->lineEdit(), "publishers");
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        EXPECT_GE(child<QComboBox>(form, "cmbDisplay")->findText(QStringLiteral("House")), 0);
        EXPECT_FALSE(child<QLabel>(form, "lblExternal")->isVisible());
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldPropPanels, aLookupFollowsAJoin) {
    openWith(FieldType::DBLookup);
    open(kFree, [](QWidget& form) {
        EXPECT_FALSE(child<QWidget>(form, "CmbViewList")->isVisible());
        choose(form, "cmbFollows", "Publisher");
        EXPECT_EQ(child<QComboBox>(form, "cmbSource")->currentText(), QStringLiteral("MS2_Publishers"));
        choose(form, "cmbDisplay", "City");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    const model::ExternalDef& external = db().Externals.at(kFree);
    EXPECT_EQ(external.Source, "MS2_Publishers");
    EXPECT_EQ(external.SourceField, kJoin);
    EXPECT_EQ(external.MatchField, 2);
}

TEST_F(FieldPropPanels, anAddressBookFieldNamesTwoOfItsFields) {
    openWith(FieldType::AddressBookJoin);
    open(kFree, [](QWidget& form) {
        choose(form, "cmbABField1", "Last, First");
        choose(form, "cmbABField2", "E-mail");
        ok(form);
    });
    EXPECT_EQ(db().Externals.at(kFree).ABField1, 3);
    EXPECT_EQ(db().Externals.at(kFree).ABField2(), 13);
}

TEST_F(FieldPropPanels, aOneToManyFieldKeepsWhatItIsGiven) {
    openWith(FieldType::OneToMany);
    open(kFree, [this](QWidget& form) {
        choose(form, "cmbMDSource", "MS2_Publishers");
        enter(form, "txtLabel1", "Printed by");
        enter(form, "txtLabel2", "This label has more than twenty characters");
        choose(form, "cmbMatch", "Number", 1);
        choose(form, "cmbSort", "City", 2);
        auto* option = child<QSpinBox>(form, "spnOption", 0);
        option->setFocus();
        option->selectAll();
        QTest::keyClick(option, Qt::Key_7);
        script.expectMessage(QStringLiteral("A label may have at most 20 characters."));
        ok(form);
        enter(form, "txtLabel2", "in");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    model::OneToManyDef expected;
    expected.Source = "MS2_Publishers";
    expected.Label1 = "Printed by";
    expected.Label2 = "in";
    expected.MatchFields = {0, 3, 0};
    expected.SortFields = {0, 0, 2};
    expected.Options = {7, 0, 0};
    EXPECT_EQ(db().OneToManys.at(kFree), expected);
}

// Whatever the file holds, looking at a field and pressing OK changes nothing of its definition.
TEST_F(FieldPropPanels, okWithoutAChangeKeepsEveryDefinition) {
    openSample([](model::Document& sample) {
        sample.CurrDB20.Fields[kPages].Decimals = 9;
        sample.CurrDB20.Fields[kTitle].Reserved = {1, 2, 3, 4};
        sample.CurrDB20.Fields[kTitle].FieldFlags = 0x41;
        sample.CurrDB20.Externals[kJoin].ABField1 = 77;
        sample.CurrDB20.Externals[kJoin].SourceField = 80;
        sample.CurrDB20.Externals[kJoin].KeyType = 20;
        sample.CurrDB20.Expressions[kValue].Tokens = {kPages, 92, 86};
        sample.CurrDB20.Expressions[kValue].TokenTexts[2] = "2";
    });
    const model::DatabaseModel before = db();
    for (int slot = 0; slot < kFree; ++slot) {
        if (slot == kCover || slot == kPicture) // they store a default that the sample does not have
            continue;
        open(slot, [slot](QWidget& form) {
            ok(form);
            EXPECT_FALSE(form.isVisible()) << slot;
            if (form.isVisible())
                clickOn(form, "CancelButton");
        });
        EXPECT_EQ(db().Fields[static_cast<std::size_t>(slot)], before.Fields[static_cast<std::size_t>(slot)]) << slot;
        EXPECT_EQ(db().Lists.at(slot), before.Lists.at(slot)) << slot;
        EXPECT_EQ(db().Externals.at(slot), before.Externals.at(slot)) << slot;
        EXPECT_EQ(db().Expressions.at(slot), before.Expressions.at(slot)) << slot;
    }
}

} // namespace
} // namespace tallybook::test
