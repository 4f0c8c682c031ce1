// Field Properties, driven with keys and mouse: its panels by type, its refusals, and what its OK makes of the field
// and of the column.
#include "desktop/FieldPropTest.h"

#include "core/pdb/Passwords.h"

namespace tallybook::test {
namespace {

using desktop::frmFieldProp;
using model::FieldType;

// The controls whose being there depends on the type, as far as they can be seen, by name.
std::vector<std::string> shownControls(const QWidget& form) {
    static constexpr std::array kNames = {
        "txtDefault",      "cmbDefault",   "cmbDecDigs", "chkBarcodeScan",    "checkDisableAutoShift",
        "checkAutoWriter", "cmdListItems", "frmExpr",    "frmExprAdv",        "checkIncrementDecrement",
        "frmExternal",     "FrmAddress",   "FrmRadio",   "FrmCondExpression", "frmMasterDetail",
        "lblNoPanel"};
    std::vector<std::string> shown;
    for (const char* name : kNames)
        if (child<QWidget>(form, name)->isVisible())
            shown.emplace_back(name);
    return shown;
}

using FieldProp = FieldPropTest;

TEST_F(FieldProp, eachTypeShowsItsPanels) {
    using Names = std::vector<std::string>;
    const std::vector<Names> panels = {
        {"lblNoPanel"},
        {"txtDefault", "chkBarcodeScan", "checkDisableAutoShift", "checkAutoWriter"},
        {"txtDefault", "checkAutoWriter", "checkIncrementDecrement"},
        {"txtDefault", "checkAutoWriter", "checkIncrementDecrement"},
        {"txtDefault", "cmbDecDigs", "checkAutoWriter"},
        {"cmdListItems"},
        {"cmbDefault"},
        {"cmbDefault"},
        {"cmbDefault"},
        {"cmbDecDigs", "frmExpr"},
        {"checkAutoWriter"},
        {"lblNoPanel"},
        {"frmExternal"},
        {"frmExternal"},
        {"frmMasterDetail"},
        {"FrmAddress"},
        {"FrmAddress"},
        {"FrmRadio"},
        {"cmbDefault"},
        {"FrmCondExpression"},
        {"cmbDefault"},
        {"lblNoPanel"},
        {"cmbDecDigs", "frmExprAdv"},
    };
    ASSERT_EQ(panels.size(), 23U);
    model::Document sample;
    makeSample(sample, regional);
    for (int type = 0; type < model::kFieldTypes; ++type) {
        sample.CurrDB20.Fields[kKind].Type = static_cast<FieldType>(type);
        frmFieldProp form(sample, services, kKind, design::FieldPropMode::Document, nullptr);
        showAndActivate(form);
        EXPECT_EQ(child<QComboBox>(form, "cmbFieldType")->currentIndex(), type);
        EXPECT_EQ(shownControls(form), panels[static_cast<std::size_t>(type)]) << type;
        EXPECT_EQ(defaultButton(form), QStringLiteral("OKButton"));
        expectNoAccessKeyTwice(form);
        EXPECT_LE(form.height(), 700) << type; // of a screen of 768
        EXPECT_LE(form.width(), 1300) << type;
    }
}

TEST_F(FieldProp, theCommandOpensTheFieldOfTheCurrentColumn) {
    openSample();
    open(kPrice, [](QWidget& form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Field Properties - Field 4"));
        EXPECT_EQ(child<QLineEdit>(form, "txtFieldName")->text(), QStringLiteral("Price"));
        EXPECT_TRUE(child<QLineEdit>(form, "txtFieldName")->hasFocus());
        EXPECT_EQ(child<QComboBox>(form, "cmbFieldType")->currentText(), QStringLiteral("Float"));
        EXPECT_EQ(child<QComboBox>(form, "cmbDecDigs")->currentText(), QStringLiteral("2"));
        clickOn(form, "CancelButton");
    });
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(FieldProp, theMenuOfAColumnOpensIt) {
    openSample();
    script.expectMenu(QStringLiteral("mnuColumn"), QStringLiteral("mnuFieldProps"));
    script.expect([](QWidget& form) {
        EXPECT_EQ(child<QLineEdit>(form, "txtFieldName")->text(), QStringLiteral("Pages"));
        enter(form, "txtFieldName", "Leaves");
        QTest::keyClick(form.focusWidget(), Qt::Key_Return); // the default button
        EXPECT_FALSE(form.isVisible());
    });
    const QPoint cell = middleOf(0, kPages);
    clickAt({cell.x(), 5}, Qt::RightButton);
    EXPECT_EQ(field(kPages).Name, "Leaves");
    EXPECT_EQ(doc().grd.text(0, model::columnOfSlot(kPages)), "Leaves");
    EXPECT_TRUE(doc().DocModified);
    EXPECT_TRUE(window().isWindowModified());
}

TEST_F(FieldProp, cancelLeavesTheFieldAsItWas) {
    openSample();
    const model::DatabaseModel before = doc().CurrDB20;
    open(kTitle, [](QWidget& form) {
        enter(form, "txtFieldName", "Other");
        choose(form, "cmbFieldType", "Radio Button");
        enter(form, "Optxt", "Yes");
        QTest::keyClick(form.focusWidget(), Qt::Key_Escape);
    });
    EXPECT_EQ(doc().CurrDB20, before);
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(FieldProp, aReadOnlyTallybookKeepsItsFields) {
    openSample([](model::Document& sample) { sample.CurrDB20.ReadOnly = 1; });
    go(0, kTitle);
    script.expectMessage(QStringLiteral("Tallybook is readonly."));
    trigger("mnuViewFieldProp");
}

TEST_F(FieldProp, theDesignPasswordIsAskedFor) {
    openSample([](model::Document& sample) { sample.CurrDB20.Passwords[2] = pdb::ApplyPwd("plan"); });
    go(0, kTitle);
    script.expect([](QWidget& login) {
        EXPECT_EQ(login.objectName(), QStringLiteral("frmLogin"));
        login.close();
    });
    trigger("mnuViewFieldProp"); // no dialog comes
}

TEST_F(FieldProp, theCategoriesStayAList) {
    openSample();
    open(kCategory, [](QWidget& form) {
        EXPECT_FALSE(child<QComboBox>(form, "cmbFieldType")->isEnabled());
        EXPECT_TRUE(child<QWidget>(form, "cmdListItems")->isVisible());
        enter(form, "txtFieldName", "Kinds");
        ok(form);
    });
    EXPECT_EQ(field(kCategory).Name, "Kinds");
    EXPECT_EQ(field(kCategory).Type, FieldType::List);
}

TEST_F(FieldProp, anotherTypeShowsItsPanelsAtOnce) {
    openSample();
    open(kTitle, [](QWidget& form) {
        choose(form, "cmbFieldType", "Float");
        EXPECT_EQ(shownControls(form), (std::vector<std::string>{"txtDefault", "cmbDecDigs", "checkAutoWriter"}));
        choose(form, "cmbFieldType", "Date");
        EXPECT_EQ(shownControls(form), (std::vector<std::string>{"cmbDefault"}));
        auto* list = child<QComboBox>(form, "cmbDefault");
        EXPECT_EQ(list->itemText(2), QStringLiteral("Record Updated"));
        clickOn(form, "CancelButton");
    });
}

TEST_F(FieldProp, aChangeOfTheTypeAsksAndConvertsTheColumn) {
    openSample();
    const QString question = QStringLiteral("Are you sure you want to convert this field from Float to Integer?\n"
                                            "Warning: conversion not possible will result in blanks or zeros");
    open(kPrice, [this, question](QWidget& form) {
        choose(form, "cmbFieldType", "Integer");
        script.expectMessage(question, QStringLiteral("No"));
        ok(form);
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(form.focusWidget(), child<QWidget>(form, "cmbFieldType"));
        EXPECT_EQ(text(0, kPrice), "9.50");
        script.expectMessage(question, QStringLiteral("Yes"));
        ok(form);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(field(kPrice).Type, FieldType::Integer);
    EXPECT_EQ(text(0, kPrice), "10"); // ties go to the even number
    EXPECT_EQ(text(1, kPrice), "4");
    EXPECT_EQ(text(2, kPrice), "27");
    EXPECT_EQ(doc().grd.text(1, model::columnOfSlot(kPrice)), "Integer");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// A control and what is typed or chosen in it, then the message and where the focus is afterwards.
TEST_F(FieldProp, aRefusalHasTheFocusWhereItBelongs) {
    struct Case {
        const char* name;
        int slot;
        std::function<void(QWidget&)> change;
        const char* message;
        const char* focus;
        int place = 0;
    };
    const Case cases[] = {
        {"no name", kTitle, [](QWidget& form) { enter(form, "txtFieldName", "  "); }, "Field Name cannot be blank",
         "txtFieldName"},
        {"a name twice", kTitle, [](QWidget& form) { enter(form, "txtFieldName", "Pages"); },
         "Another Field exists with this name.\nEnter another name and save the field information ", "txtFieldName"},
        {"a lone minus", kPages, [](QWidget& form) { enter(form, "txtDefault", "-"); }, "Integer value expected!",
         "txtDefault"},
        {"a text for a default", kPages, [](QWidget& form) { enter(form, "txtDefault", "many"); },
         "Integer value expected", "txtDefault"},
        {"too large a default", kPages, [](QWidget& form) { enter(form, "txtDefault", "40000"); },
         "Value cannot exceed 32767 or -32768", "txtDefault"},
        {"too large a long", kStock, [](QWidget& form) { enter(form, "txtDefault", "2147483648"); },
         "Value cannot exceed 2147483647 or -2147483648!", "txtDefault"},
        {"too many digits", kPrice, [](QWidget& form) { enter(form, "txtDefault", "1.125"); },
         "Decimal Digits exceed!", "txtDefault"},
        {"an empty option", kCover,
         [](QWidget& form) {
             choose(form, "CmbNobuton", "3");
             enter(form, "Optxt", "Leather", 1);
         },
         "Enter the values for the options of the Radio-button ", "Optxt", 2},
        {"no operand", kValue, [](QWidget&) {}, "Complete the Expression", "cmbExpr"},
        {"no view", kJoin, [](QWidget& form) { child<QComboBox>(form, "CmbViewList")->setCurrentIndex(-1); },
         "External view was not selected", "CmbViewList"},
        {"no display field", kJoin, [](QWidget& form) { child<QComboBox>(form, "cmbDisplay")->setCurrentIndex(-1); },
         "External display field was not selected", "cmbDisplay"},
        {"no join field", kJoin, [](QWidget& form) { child<QComboBox>(form, "cmbJoin")->setCurrentIndex(-1); },
         "External join field was not selected", "cmbJoin"},
        {"a foreign character", kTitle,
         [](QWidget& form) { child<QLineEdit>(form, "txtDefault")->setText(QStringLiteral("a\u4E2D")); },
         "The character U+4E2D cannot be stored in a Tallybook.", "txtDefault"},
    };
    openSample();
    for (const Case& one : cases)
        open(one.slot, [this, &one](QWidget& form) {
            one.change(form);
            script.expectMessage(QString::fromLatin1(one.message));
            ok(form);
            EXPECT_TRUE(form.isVisible()) << one.name;
            EXPECT_EQ(form.focusWidget(), child<QWidget>(form, one.focus, one.place)) << one.name;
            clickOn(form, "CancelButton");
        });
    EXPECT_FALSE(doc().DocModified);
}

} // namespace
} // namespace tallybook::test
