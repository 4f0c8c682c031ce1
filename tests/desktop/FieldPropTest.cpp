// Field Properties, driven with keys and mouse: its panels by type, its refusals, and what its OK makes of the field
// and of the column.
#include "desktop/FieldPropTest.h"

#include "core/pdb/Passwords.h"

#include <QAccessible>

namespace tallybook::test {
namespace {

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
        LoneFieldProp form(sample, services, kKind, design::FieldPropMode::Document);
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
         [](QWidget& form) { typeInto(form, "txtDefault", QStringLiteral("a\u4E2D")); },
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

TEST_F(FieldProp, tabGoesThroughTheControlsOfTheType) {
    model::Document sample;
    makeSample(sample, regional);
    const auto order = [&](FieldType type) {
        sample.CurrDB20.Fields[kKind].Type = type;
        LoneFieldProp form(sample, services, kKind, design::FieldPropMode::Document);
        showAndActivate(form);
        return tabOrder(form).join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(
        order(FieldType::Text),
        std::string("txtFieldName cmbFieldType txtDefault chkBarcodeScan checkDisableAutoShift "
                    "checkAutoWriter cmbSeparate TxtAW cmdAddToList ListAW cmdRemFrmList OKButton CancelButton"));
    EXPECT_EQ(order(FieldType::RadioButton),
              std::string("txtFieldName cmbFieldType CmbNobuton OptSel Optxt Optxt OKButton CancelButton"));
    EXPECT_EQ(order(FieldType::AdvExpression),
              std::string("txtFieldName cmbFieldType cmbDecDigs cmbAdvExpFormat txtAdvExpression cmbAdvField "
                          "cmbAdvPrev cmbAdvFunc cmbAdvOper cmbAdvColor cmbAdvConst ClearExpression OKButton "
                          "CancelButton"));
    EXPECT_EQ(order(FieldType::Expression),
              std::string("txtFieldName cmbFieldType cmbDecDigs cmbExpFormat cmbExpr cmbOper cmbExpr cmbOper "
                          "cmbExpr cmbOper cmbExpr cmbOper cmbExpr cmbOper cmbExpr cmbOper cmbExpr cmbOper cmbExpr "
                          "ClearExpression OKButton CancelButton"));
    EXPECT_EQ(order(FieldType::DBJoin), std::string("txtFieldName cmbFieldType cmbUser cmbSource CmbViewList "
                                                    "cmbDisplay cmbJoin OKButton CancelButton"));
    EXPECT_EQ(
        order(FieldType::OneToMany),
        std::string("txtFieldName cmbFieldType cmbMDUser cmbMDSource txtLabel1 txtLabel2 cmbMatch cmbSort spnOption "
                    "cmbMatch cmbSort spnOption cmbMatch cmbSort spnOption OKButton CancelButton"));
    EXPECT_EQ(order(FieldType::ConditionalExpression),
              std::string("txtFieldName cmbFieldType Command1 OptThen CmbThen TxtThen cmbThenColour OptElse "
                          "CmbElse TxtElse cmbElseColour OKButton CancelButton"));
}

TEST_F(FieldProp, everyControlThatIsShownHasAName) {
    model::Document sample;
    makeSample(sample, regional);
    for (int type = 0; type < model::kFieldTypes; ++type) {
        sample.CurrDB20.Fields[kKind].Type = static_cast<FieldType>(type);
        LoneFieldProp form(sample, services, kKind, design::FieldPropMode::Document);
        showAndActivate(form);
        for (QWidget* control : form.findChildren<QWidget*>())
            if (control->isVisible() && control->focusPolicy() != Qt::NoFocus && control->focusProxy() == nullptr &&
                !control->objectName().startsWith(QLatin1String("qt_")) && !control->objectName().isEmpty()) {
                QAccessibleInterface* named = QAccessible::queryAccessibleInterface(control);
                ASSERT_NE(named, nullptr);
                EXPECT_FALSE(named->text(QAccessible::Name).isEmpty())
                    << type << ' ' << control->objectName().toStdString();
            }
    }
}

// While the column is rewritten the pointer tells to wait, and the bar of the main window goes forward.
TEST_F(FieldProp, okShowsThatItWorks) {
    class Watch : public QObject {
    public:
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() == QEvent::Show && QApplication::overrideCursor() != nullptr)
                shown = QApplication::overrideCursor()->shape() == Qt::WaitCursor;
            return QObject::eventFilter(watched, event);
        }
        bool shown = false;
    };
    openSample();
    Watch watch;
    find<QWidget>("ProgressBar1")->installEventFilter(&watch);
    open(kPrice, [this](QWidget& form) {
        choose(form, "cmbDecDigs", "0");
        script.expectMessage(
            QStringLiteral("Digits that are not shown any more will be gone with the next save.\nDo you want to "
                           "show fewer digits?"),
            QStringLiteral("Yes"));
        ok(form);
    });
    EXPECT_TRUE(watch.shown);
    EXPECT_FALSE(visible("ProgressBar1"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// The mouse goes down on another control while the default is wrong: the message comes without its list above it.
TEST_F(FieldProp, aClickElsewhereIsHeldUpByAWrongDefault) {
    openSample();
    open(kPages, [this](QWidget& form) {
        auto* line = child<QLineEdit>(form, "txtDefault");
        enter(line, "many");
        auto* types = child<QComboBox>(form, "cmbFieldType");
        script.expectMessage(QStringLiteral("Integer value expected"));
        QTest::mousePress(types, Qt::LeftButton);
        QCoreApplication::processEvents();
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_EQ(form.focusWidget(), line);
        QApplication::setActiveWindow(&form);
        script.expectMessage(QStringLiteral("Integer value expected"));
        QTest::mousePress(child<QWidget>(form, "checkAutoWriter"), Qt::LeftButton, {}, QPoint(5, 5));
        QCoreApplication::processEvents();
        EXPECT_FALSE(child<QAbstractButton>(form, "checkAutoWriter")->isDown());
        EXPECT_EQ(form.focusWidget(), line);
        clickOn(form, "CancelButton");
    });
}

} // namespace
} // namespace tallybook::test
