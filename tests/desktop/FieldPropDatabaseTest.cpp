// Field Properties over the data of a database: columns that are converted, views, and a database made from nothing.
#include "desktop/FieldPropTest.h"

#include <QFileDialog>
#include <QPlainTextEdit>

namespace tallybook::test {
namespace {

using model::columnOfSlot;
using model::FieldType;

// Each type with what a user would give a field of it; the slot is the type's code.
struct Design {
    FieldType type;
    std::function<void(QWidget&)> attributes;
};

class FieldPropData : public FieldPropTest {
protected:
    void expectConversion(const char* from, const char* to, const char* answer = "Yes") {
        script.expectMessage(QStringLiteral("Are you sure you want to convert this field from %1 to %2?\nWarning: "
                                            "conversion not possible will result in blanks or zeros")
                                 .arg(QString::fromLatin1(from), QString::fromLatin1(to)),
                             QString::fromLatin1(answer));
    }

    std::vector<Design> designs() {
        const auto nothing = [](QWidget&) {};
        return {
            {FieldType::Text, [](QWidget& form) { enter(form, "txtDefault", "Cafe"); }},
            {FieldType::Integer, [](QWidget& form) { enter(form, "txtDefault", "-7"); }},
            {FieldType::Long, [](QWidget& form) { tick(form, "checkIncrementDecrement"); }},
            {FieldType::Float,
             [](QWidget& form) {
                 choose(form, "cmbDecDigs", "2");
                 enter(form, "txtDefault", "2.25");
             }},
            {FieldType::List, nothing},
            {FieldType::Checkbox, [](QWidget& form) { choose(form, "cmbDefault", "Checked"); }},
            {FieldType::Date, [](QWidget& form) { choose(form, "cmbDefault", "Record Added"); }},
            {FieldType::Time, [](QWidget& form) { choose(form, "cmbDefault", "Record Added"); }},
            {FieldType::Expression,
             [](QWidget& form) {
                 choose(form, "cmbExpr", "Field 2");
                 choose(form, "cmbOper", "*");
                 enter(child<QComboBox>(form, "cmbExpr", 1)->lineEdit(), "3");
             }},
            {FieldType::Memo,
             [](QWidget& form) {
                 tick(form, "checkAutoWriter");
                 choose(form, "cmbSeparate", "Dash");
                 enter(form, "TxtAW", "Lent");
                 clickOn(form, "cmdAddToList");
             }},
            {FieldType::Key, nothing},
            {FieldType::DBJoin,
             [](QWidget& form) {
                 enter(child<QComboBox>(form, "cmbSource")->lineEdit(), "MS2_Other");
                 QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
                 choose(form, "CmbViewList", "View 02");
                 choose(form, "cmbDisplay", "Field 03");
                 choose(form, "cmbJoin", "Field 01");
             }},
            {FieldType::DBLookup,
             [](QWidget& form) {
                 choose(form, "cmbFollows", "Field 12");
                 choose(form, "cmbDisplay", "Field 04");
             }},
            {FieldType::OneToMany, [](QWidget& form) { enter(form, "txtLabel1", "Parts"); }},
            {FieldType::AddressBookJoin, [](QWidget& form) { choose(form, "cmbABField1", "Company"); }},
            {FieldType::AddressBookLookup, [](QWidget& form) { choose(form, "cmbABField1", "City"); }},
            {FieldType::RadioButton,
             [](QWidget& form) {
                 enter(form, "Optxt", "Good");
                 enter(form, "Optxt", "Bad", 1);
                 tick(form, "OptSel", 1);
             }},
            {FieldType::Image, [](QWidget& form) { choose(form, "cmbDefault", "16 grayscale"); }},
            {FieldType::ConditionalExpression,
             [this](QWidget& form) {
                 script.expect([](QWidget& designer) {
                     choose(designer, "CmbFldListCmp1", "Field 2");
                     choose(designer, "CmbOpr1", ">");
                     enter(designer, "TxtConst1", "40");
                     clickOn(designer, "OKButton");
                 });
                 clickOn(form, "Command1");
                 enter(form, "TxtThen", "Many");
                 enter(form, "TxtElse", "Few");
             }},
            {FieldType::AutoIncremental,
             [](QWidget& form) { enter(child<QComboBox>(form, "cmbDefault")->lineEdit(), "50"); }},
            {FieldType::Plugin, nothing},
            {FieldType::AdvExpression,
             [](QWidget& form) {
                 choose(form, "cmbAdvField", "[Field 2]");
                 QTest::keyClicks(form.focusWidget(), QStringLiteral(" + 1"));
             }},
        };
    }
};

TEST_F(FieldPropData, aListIsMadeOfTheColumnWhileTheDialogIsHidden) {
    openSample();
    open(kTitle, [this](QWidget& form) {
        choose(form, "cmbFieldType", "List");
        expectConversion("Text", "List");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(doc().CurrDB20.Lists.at(kTitle).Items,
              (std::vector<std::string>{"Sea Charts", "Garden Year", "Old Clocks"}));
    EXPECT_EQ(doc().CellLongs.get(2, kTitle), 3);
    EXPECT_EQ(text(2, kTitle), "Old Clocks");
}

TEST_F(FieldPropData, theDialogComesBackWhenTheListIsRefused) {
    openSample([this](model::Document& sample) {
        for (int i = 0; i < 60; ++i) {
            const int row = model::appendRecord(sample);
            sample.grd.setText(row, columnOfSlot(kTitle), "Title " + std::to_string(i));
        }
    });
    open(kTitle, [this](QWidget& form) {
        choose(form, "cmbFieldType", "List");
        expectConversion("Text", "List");
        script.expectMessage(
            QStringLiteral("More than 60 unique items found.  Some items could not be included.\nConvert this field "
                           "back to text, reduce the number of unique items and try again."));
        script.expect([](QWidget& again) {
            EXPECT_EQ(again.objectName(), QStringLiteral("frmFieldProp"));
            EXPECT_EQ(again.focusWidget(), child<QWidget>(again, "cmbFieldType"));
            EXPECT_EQ(child<QComboBox>(again, "cmbFieldType")->currentText(), QStringLiteral("List"));
            clickOn(again, "CancelButton");
        });
        ok(form);
    });
    EXPECT_EQ(field(kTitle).Type, FieldType::Text);
    EXPECT_EQ(text(62, kTitle), "Title 59");
}

TEST_F(FieldPropData, keysAreMadeOrKept) {
    openSample();
    const QString question = QStringLiteral(
        "WARNING:  This action will change the field into 'key'.   Would you like to convert the values into key "
        "values?   Note: Choosing 'YES' will delete all existing keys, cannot be undone.   If you choose 'NO' the "
        "existing keys will be preserved.");
    open(kPages, [this, question](QWidget& form) {
        choose(form, "cmbFieldType", "Key");
        expectConversion("Integer", "Key");
        script.expectMessage(question, QStringLiteral("Yes"));
        ok(form);
    });
    EXPECT_EQ(doc().RecKeys[2], 310);
    EXPECT_EQ(text(2, kPages), "310");
    open(kTitle, [this, question](QWidget& form) {
        choose(form, "cmbFieldType", "Key");
        expectConversion("Text", "Key");
        script.expectMessage(question, QStringLiteral("No"));
        ok(form);
    });
    EXPECT_EQ(text(2, kTitle), "310");
}

TEST_F(FieldPropData, aFieldThatWasNotUsedIsTakenWithoutAQuestion) {
    openSample();
    open(20, [](QWidget& form) {
        enter(form, "txtFieldName", "Rating");
        choose(form, "cmbFieldType", "Integer");
        enter(form, "txtDefault", "3");
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(field(20).Type, FieldType::Integer);
    EXPECT_EQ(doc().grd.text(0, columnOfSlot(20)), "Rating");
    EXPECT_EQ(doc().grd.text(1, columnOfSlot(20)), "Integer");
    trigger("mnuRecordAdd");
    EXPECT_EQ(text(3, 20), "3");
}

TEST_F(FieldPropData, aViewShowsTheFieldAnew) {
    openSample([](model::Document& sample) {
        model::ViewDef& view = sample.CurrDB20.Views[0];
        view.Name = "Prices";
        view.NumCols = 2;
        view.Columns[0].Field = kPrice;
        view.Columns[1].Field = kTitle;
        sample.CurrDB20.NumViews = 1;
    });
    ASSERT_TRUE(doc().ViewShown);
    script.expect([this](QWidget& form) {
        EXPECT_EQ(child<QLineEdit>(form, "txtFieldName")->text(), QStringLiteral("Price"));
        enter(form, "txtFieldName", "Paid");
        choose(form, "cmbDecDigs", "0");
        script.expectMessage(
            QStringLiteral("Digits that are not shown any more will be gone with the next save.\nDo you want to "
                           "show fewer digits?"),
            QStringLiteral("Yes"));
        ok(form);
    });
    trigger("mnuViewFieldProp");
    EXPECT_TRUE(doc().ViewShown);
    EXPECT_EQ(doc().ViewGrd.text(0, 1), "Paid");
}

TEST_F(FieldPropData, whileADatabaseIsMadeThereIsNoGridToTouch) {
    model::Document made;
    makeSample(made, regional);
    LoneFieldProp form(made, services, kTitle, design::FieldPropMode::Ma);
    showAndActivate(form);
    choose(form, "cmbFieldType", "Integer");
    enter(form, "txtFieldName", "Count");
    ok(form); // no question
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(made.CurrDB20.Fields[kTitle].Type, FieldType::Integer);
    EXPECT_EQ(made.CurrDB20.Fields[kTitle].Name, "Count");
    EXPECT_EQ(made.grd.text(0, columnOfSlot(kTitle)), "Title");
    EXPECT_EQ(made.grd.text(2, columnOfSlot(kTitle)), "Sea Charts");
}

TEST_F(FieldPropData, aDatabaseOfEveryTypeIsMadeFilledSavedAndReadAgain) {
    show();
    files.addFolder("/tmp");
    trigger("mnuFileNew");
    int slot = 0;
    for (const Design& one : designs()) {
        ++slot;
        script.expectMenu(QStringLiteral("mnuColumn"), QStringLiteral("mnuFieldProps"));
        script.expect([&one, slot](QWidget& form) {
            enter(form, "txtFieldName", ("Field " + std::to_string(slot)).c_str());
            choose(form, "cmbFieldType", std::string(model::fieldTypeName(one.type)).c_str());
            one.attributes(form);
            ok(form);
            EXPECT_FALSE(form.isVisible()) << slot;
            if (form.isVisible())
                clickOn(form, "CancelButton");
        });
        QApplication::setActiveWindow(&window());
        clickAt({middleOf(0, slot).x(), 5}, Qt::RightButton);
        EXPECT_EQ(field(slot).Type, one.type) << slot;
    }
    trigger("mnuRecordAdd");
    trigger("mnuRecordAdd");
    QApplication::setActiveWindow(&window());
    go(1, 1);
    type("Second");
    key(Qt::Key_Return);
    go(1, 2);
    type("41");
    key(Qt::Key_Return);
    trigger("mnuRecalculateExpressions");
    EXPECT_EQ(text(0, 1), "Cafe");
    EXPECT_EQ(text(0, 4), "2.25");
    EXPECT_EQ(text(0, 7), "3/5/2003");
    EXPECT_EQ(text(1, 9), "123"); // 41 by 3
    EXPECT_EQ(text(0, 17), "Bad");
    EXPECT_EQ(text(0, 19), "Few");
    EXPECT_EQ(text(1, 19), "Many");
    EXPECT_EQ(text(1, 20), "51");
    EXPECT_EQ(text(1, 22), "42");
    script.expect([](QWidget& asked) {
        auto* line = asked.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(line, nullptr);
        pasteOver(line, QStringLiteral("/tmp/MS2_Every.pdb"));
        QTest::keyClick(line, Qt::Key_Return);
    });
    script.expectMessage(QStringLiteral("A backup copy of the Tallybook has been created successfully."));
    script.expectMessage(QStringLiteral("Note: If you want to install this Tallybook on the device please select the "
                                        "button 'Save & Install' on the toolbar."));
    trigger("mnuFileSaveAs");
    const model::DatabaseModel before = doc().CurrDB20;
    const auto saved = savedFile("/tmp/MS2_Every.pdb");
    for (std::size_t made = 1; made <= 22; ++made)
        EXPECT_EQ(saved->CurrDB20.Fields[made], before.Fields[made]) << made;
    EXPECT_EQ(saved->CurrDB20.Lists.at(10), before.Lists.at(10));
    EXPECT_EQ(saved->CurrDB20.Lists.at(17), before.Lists.at(17));
    EXPECT_EQ(saved->CurrDB20.Expressions.at(9), before.Expressions.at(9));
    EXPECT_EQ(saved->CurrDB20.Expressions.at(22), before.Expressions.at(22));
    for (const int external : {12, 13, 15, 16})
        EXPECT_EQ(saved->CurrDB20.Externals.at(external), before.Externals.at(external)) << external;
    EXPECT_EQ(saved->CurrDB20.OneToManys.at(14), before.OneToManys.at(14));
    EXPECT_EQ(saved->CurrDB20.CondExprs.at(19), before.CondExprs.at(19));
    EXPECT_EQ(saved->CurrDB20.AutoIncNext.at(20), 52);
    ASSERT_EQ(saved->NumDataRecs, 2);
    for (int record = 0; record < 2; ++record)
        for (int column = 1; column <= 22; ++column)
            EXPECT_EQ(saved->grd.text(record + 2, columnOfSlot(column)), text(record, column)) << record << column;
}

} // namespace
} // namespace tallybook::test
