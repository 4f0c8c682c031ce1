// The designer of the filters, opened from the choice of filters, and the condition of a Conditional Expression.
#include "desktop/DialogChecks.h"
#include "desktop/DialogDriver.h"
#include "desktop/WindowTest.h"
#include "desktop/dialogs/dlgFilterDesg.h"
#include "desktop/document/frmDocument.h"

#include <QStandardItemModel>

namespace tallybook::test {
namespace {

using desktop::dlgFilterDesg;
using model::columnOfSlot;

constexpr const char* kClearQuestion =
    "Once a filter condition is cleared it cannot be retrieved\nDo you want to clear the filter definition?";
constexpr const char* kKeepQuestion = "The filter was changed. Do you want to store its changes?";

// The filter "Thin" in slot 0.
void addThin(model::Document& sample) {
    model::FilterDef& filter = sample.CurrDB20.Filters[0];
    filter.Name = "Thin";
    filter.CondFields[0] = kPages;
    filter.CondOps[0] = '<';
    filter.CondValues[0] = "200";
    sample.CurrDB20.NumFilters = 1;
}

class FilterDesigner : public WindowTest {
protected:
    // Chooses "Edit Filters..." and works in the dialog that comes.
    void edit(const ModalScript::Step& step) {
        script.expect([step](QWidget& dialog) {
            ASSERT_EQ(dialog.objectName(), QStringLiteral("dlgFilterDesg"));
            step(dialog);
            EXPECT_FALSE(dialog.isVisible());
            dialog.close();
        });
        pick(window(), "CmbFilter", "Edit Filters...");
    }
    void expectCritical(const char* text) { script.expectMessage(QString::fromLatin1(text)); }
    std::string visibleTitles() {
        std::string titles;
        for (int i = 0; i < doc().grd.visibleRows(); ++i)
            titles += doc().grd.text(doc().grd.visibleRow(i), columnOfSlot(kTitle)) + "; ";
        return titles;
    }
    const model::FilterDef& stored(std::size_t slot) { return doc().CurrDB20.Filters[slot]; }
};

TEST_F(FilterDesigner, aFilterIsDefinedAndChosen) {
    openSample();
    edit([](QWidget& dialog) {
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-01");
        EXPECT_TRUE(child<QLineEdit>(dialog, "LblFilterName")->hasFocus());
        typeInto(dialog, "LblFilterName", QStringLiteral("Caf\u00E9"));
        pick(dialog, "CmbFldListCmp1", "Pages");
        pick(dialog, "CmbOpr1", ">=");
        typeInto(dialog, "TxtConst1", QStringLiteral("100"));
        press(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(stored(0).Name, "Caf\xE9");
    EXPECT_EQ(stored(0).CondFields[0], kPages);
    EXPECT_EQ(stored(0).CondOps[0], 'J');
    EXPECT_EQ(stored(0).CondValues[0], "100");
    EXPECT_TRUE(doc().DocModified);
    EXPECT_EQ(visibleTitles(), "Sea Charts; Garden Year; Old Clocks; "); // made, not yet chosen
    pick(window(), "CmbFilter", "Caf\xE9");
    EXPECT_EQ(visibleTitles(), "Sea Charts; Old Clocks; ");
    trigger("mnuFileSave");
    EXPECT_EQ(savedFile()->CurrDB20.Filters[0].Name, "Caf\xE9");
}

TEST_F(FilterDesigner, conditionsAreLinked) {
    openSample(addThin);
    edit([](QWidget& dialog) {
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-01 Thin");
        EXPECT_EQ(textOf(dialog, "LblFilterName"), "Thin");
        EXPECT_EQ(chosenIn(dialog, "CmbFldListCmp1"), "Pages");
        EXPECT_EQ(chosenIn(dialog, "CmbOpr1"), "<");
        EXPECT_EQ(chosenIn(dialog, "CmbFldOpnd1"), "Constant");
        EXPECT_EQ(textOf(dialog, "TxtConst1"), "200");
        for (const char* name : {"CmbFldListCmp2", "CmbOpr2", "CmbFldOpnd2", "TxtConst2", "CmbRelOpr2",
                                 "CmbFldListCmp3", "CmbOpr3", "CmbFldOpnd3", "TxtConst3"})
            EXPECT_FALSE(isEnabled(dialog, name)) << name;
        pick(dialog, "CmbRelOpr1", "AND");
        for (const char* name : {"CmbFldListCmp2", "CmbOpr2", "CmbFldOpnd2", "TxtConst2", "CmbRelOpr2"})
            EXPECT_TRUE(isEnabled(dialog, name)) << name;
        EXPECT_FALSE(isEnabled(dialog, "CmbFldListCmp3"));
        pick(dialog, "CmbFldListCmp2", "Title");
        pick(dialog, "CmbOpr2", "contains");
        typeInto(dialog, "TxtConst2", QStringLiteral("sea"));
        pick(dialog, "CmbRelOpr2", "OR");
        pick(dialog, "CmbFldListCmp3", "Stock");
        pick(dialog, "CmbOpr3", "<");
        pick(dialog, "CmbFldOpnd3", "Pages");
        EXPECT_FALSE(isEnabled(dialog, "TxtConst3"));
        clickOn(dialog, "OKButton");
    });
    EXPECT_EQ(stored(0).CondFields, (std::array<std::uint8_t, 3>{kPages, 0, kTitle}));
    EXPECT_EQ(stored(0).CondFields2, (std::array<std::uint8_t, 3>{0, kStock, kPages}));
    EXPECT_EQ(stored(0).CondValues, (std::array<std::string, 3>{"200", "sea", ""}));
    EXPECT_EQ(stored(0).CondOps, (std::array<std::uint8_t, 3>{'<', 'h', '<'}));
    EXPECT_EQ(stored(0).CondLinks, (std::array<std::uint8_t, 2>{'A', 'O'}));
}

TEST_F(FilterDesigner, aBlankLinkEndsTheChain) {
    openSample(addThin);
    edit([](QWidget& dialog) {
        pick(dialog, "CmbRelOpr1", "OR");
        pick(dialog, "CmbFldListCmp2", "Title");
        pick(dialog, "CmbRelOpr1", " ");
        EXPECT_FALSE(isEnabled(dialog, "CmbFldListCmp2"));
        clickOn(dialog, "OKButton");
    });
    EXPECT_EQ(stored(0).CondFields[2], 0);
    EXPECT_EQ(stored(0).CondLinks[0], 0);
}

TEST_F(FilterDesigner, anEntryOtherThanConstantEmptiesTheConstant) {
    openSample(addThin);
    edit([](QWidget& dialog) {
        pick(dialog, "CmbFldOpnd1", "Stock");
        EXPECT_EQ(textOf(dialog, "TxtConst1"), "");
        EXPECT_FALSE(isEnabled(dialog, "TxtConst1"));
        pick(dialog, "CmbFldOpnd1", "Constant");
        EXPECT_TRUE(isEnabled(dialog, "TxtConst1"));
        clickOn(dialog, "CancelButton");
    });
    EXPECT_EQ(stored(0).CondValues[0], "200");
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(FilterDesigner, todayStandsBesideADateAlone) {
    openSample(addThin);
    edit([](QWidget& dialog) {
        auto* operands = child<QComboBox>(dialog, "CmbFldOpnd1");
        const auto* items = qobject_cast<QStandardItemModel*>(operands->model());
        const auto* today = items->item(operands->count() - 1);
        EXPECT_EQ(today->text(), QStringLiteral("Today"));
        EXPECT_FALSE(today->isEnabled());
        pick(dialog, "CmbFldListCmp1", "Bought");
        EXPECT_TRUE(today->isEnabled());
        pick(dialog, "CmbFldOpnd1", "Today");
        pick(dialog, "CmbFldListCmp1", "Pages");
        EXPECT_EQ(chosenIn(dialog, "CmbFldOpnd1"), "Constant");
        pick(dialog, "CmbFldListCmp1", "Bought");
        pick(dialog, "CmbFldOpnd1", "Today");
        clickOn(dialog, "OKButton");
    });
    EXPECT_EQ(stored(0).CondValues[0], "T");
}

TEST_F(FilterDesigner, wantsANameThenAFirstCondition) {
    openSample();
    edit([this](QWidget& dialog) {
        expectCritical("Filter name has not been entered");
        child<QPushButton>(dialog, "CancelButton")->setFocus();
        clickOn(dialog, "OKButton");
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("LblFilterName"));
        typeInto(dialog, "LblFilterName", QStringLiteral("Half"));
        pick(dialog, "CmbRelOpr1", "AND");
        pick(dialog, "CmbFldListCmp2", "Pages"); // the second does not help
        expectCritical("The filter condition has not been completed");
        clickOn(dialog, "OKButton");
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("CmbFldListCmp1"));
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(stored(0), model::FilterDef{});
    EXPECT_FALSE(doc().DocModified);
}

TEST_F(FilterDesigner, refusesWhatAFileCannotHold) {
    openSample(addThin);
    edit([this](QWidget& dialog) {
        typeInto(dialog, "LblFilterName", QString(300, QLatin1Char('n')));
        script.expectMessage(QStringLiteral("A filter's name may have at most 20 characters."));
        clickOn(dialog, "OKButton");
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("LblFilterName"));
        typeInto(dialog, "LblFilterName", QStringLiteral("Thin"));
        typeInto(dialog, "TxtConst1", QString(20, QLatin1Char('1')));
        script.expectMessage(QStringLiteral("A constant may have at most 19 characters."));
        clickOn(dialog, "OKButton");
        EXPECT_EQ(child<QLineEdit>(dialog, "TxtConst1")->selectedText().size(), 20);
        typeInto(dialog, "TxtConst1", QStringLiteral("\u4E2D"));
        script.expectMessage(QStringLiteral("The character U+4E2D cannot be stored in a Tallybook."));
        clickOn(dialog, "OKButton");
        EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("TxtConst1"));
        clickOn(dialog, "CancelButton");
    });
    EXPECT_EQ(stored(0).CondValues[0], "200");
}

TEST_F(FilterDesigner, clearsAfterAQuestion) {
    openSample(addThin);
    pick(window(), "CmbFilter", "Thin");
    EXPECT_EQ(visibleTitles(), "Sea Charts; Garden Year; ");
    edit([this](QWidget& dialog) {
        script.expect([](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Clear Filter"));
            pressButton(box, QStringLiteral("No"));
        });
        clickOn(dialog, "ClearButton");
        EXPECT_EQ(textOf(dialog, "LblFilterName"), "Thin");
        script.expectMessage(QString::fromLatin1(kClearQuestion), QStringLiteral("Yes"));
        clickOn(dialog, "ClearButton");
        EXPECT_EQ(textOf(dialog, "LblFilterName"), "");
        EXPECT_EQ(chosenIn(dialog, "CmbFldListCmp1"), " ");
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-01");
        clickOn(dialog, "CancelButton");
    });
    EXPECT_EQ(stored(0), model::FilterDef{});
    EXPECT_EQ(visibleTitles(), "Sea Charts; Garden Year; Old Clocks; "); // the filter in force is there no more
    EXPECT_EQ(chosenIn(window(), "CmbFilter"), "No Filter");
}

TEST_F(FilterDesigner, theFilterInForceIsShownAndAppliedAnew) {
    openSample([](model::Document& sample) {
        addThin(sample);
        sample.CurrDB20.Filters[3] = sample.CurrDB20.Filters[0];
        sample.CurrDB20.Filters[3].Name = "Cheap";
        sample.CurrDB20.NumFilters = 4;
    });
    pick(window(), "CmbFilter", "Cheap");
    edit([](QWidget& dialog) {
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-04 Cheap");
        typeInto(dialog, "TxtConst1", QStringLiteral("100"));
        clickOn(dialog, "OKButton");
    });
    EXPECT_EQ(visibleTitles(), "Garden Year; ");
    EXPECT_EQ(chosenIn(window(), "CmbFilter"), "Cheap");
    EXPECT_NE(doc().grd.rowHeight(doc().grd.row()), 0);
}

TEST_F(FilterDesigner, asksBeforeAnotherFilterIsShown) {
    openSample(addThin);
    edit([this](QWidget& dialog) {
        pick(dialog, "CmbFilterList", "Filter-02"); // nothing was changed: no question
        EXPECT_EQ(textOf(dialog, "LblFilterName"), "");
        pick(dialog, "CmbFilterList", "Filter-01 Thin");
        typeInto(dialog, "TxtConst1", QStringLiteral("300"));
        script.expectMessage(QString::fromLatin1(kKeepQuestion), QStringLiteral("Cancel"));
        pick(dialog, "CmbFilterList", "Filter-02");
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-01 Thin");
        EXPECT_EQ(textOf(dialog, "TxtConst1"), "300");
        script.expectMessage(QString::fromLatin1(kKeepQuestion), QStringLiteral("Yes"));
        pick(dialog, "CmbFilterList", "Filter-02");
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-02");
        typeInto(dialog, "LblFilterName", QStringLiteral("Half"));
        script.expectMessage(QString::fromLatin1(kKeepQuestion), QStringLiteral("Yes"));
        expectCritical("The filter condition has not been completed");
        pick(dialog, "CmbFilterList", "Filter-03");
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-02");
        script.expectMessage(QString::fromLatin1(kKeepQuestion), QStringLiteral("No"));
        pick(dialog, "CmbFilterList", "Filter-03");
        EXPECT_EQ(chosenIn(dialog, "CmbFilterList"), "Filter-03");
        clickOn(dialog, "CancelButton");
    });
    EXPECT_EQ(stored(0).CondValues[0], "300");
    EXPECT_EQ(stored(1), model::FilterDef{});
}

TEST_F(FilterDesigner, aReadOnlyDatabaseIsRefused) {
    openSample([](model::Document& sample) { sample.CurrDB20.ReadOnly = 1; });
    expectCritical("Tallybook is readonly.");
    pick(window(), "CmbFilter", "Edit Filters...");
    EXPECT_EQ(chosenIn(window(), "CmbFilter"), "No Filter");
}

TEST_F(FilterDesigner, itsControlsAreInOrder) {
    model::Document sample;
    makeSample(sample, regional);
    dlgFilterDesg dialog(sample, services, nullptr);
    showAndActivate(dialog);
    pick(dialog, "CmbRelOpr1", "AND");
    pick(dialog, "CmbRelOpr2", "OR");
    child<QComboBox>(dialog, "CmbFilterList")->setFocus();
    QStringList expected;
    for (const char* name :
         {"CmbFilterList", "LblFilterName", "CmbFldListCmp1", "CmbOpr1", "CmbFldOpnd1", "TxtConst1", "CmbRelOpr1",
          "CmbFldListCmp2", "CmbOpr2", "CmbFldOpnd2", "TxtConst2", "CmbRelOpr2", "CmbFldListCmp3", "CmbOpr3",
          "CmbFldOpnd3", "TxtConst3", "ClearButton", "OKButton", "CancelButton"})
        expected += QString::fromLatin1(name);
    EXPECT_EQ(tabOrder(dialog), expected);
    EXPECT_EQ(defaultButton(dialog), QStringLiteral("OKButton"));
    expectNoAccessKeyTwice(dialog);
}

class ConditionDesigner : public WindowTest {
protected:
    ConditionDesigner() { makeSample(sample, regional); }

    model::Document sample;
    model::CondExprDef condition;
};

TEST_F(ConditionDesigner, hasNeitherNameNorList) {
    dlgFilterDesg dialog(sample.CurrDB20, services, condition, nullptr);
    showAndActivate(dialog);
    EXPECT_FALSE(child<QComboBox>(dialog, "CmbFilterList")->isVisible());
    EXPECT_FALSE(child<QLineEdit>(dialog, "LblFilterName")->isVisible());
    EXPECT_EQ(dialog.focusWidget()->objectName(), QStringLiteral("CmbFldListCmp1"));
    expectNoAccessKeyTwice(dialog);
    script.expectMessage(QStringLiteral("The filter condition has not been completed"));
    clickOn(dialog, "OKButton");
    EXPECT_TRUE(dialog.isVisible());
    pick(dialog, "CmbFldListCmp1", "Lent");
    typeInto(dialog, "TxtConst1", QStringLiteral("1"));
    clickOn(dialog, "OKButton");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(condition.CondFields[0], kLent);
    EXPECT_EQ(condition.CondOps[0], '=');
    EXPECT_EQ(condition.CondValues[0], "1");
    EXPECT_FALSE(sample.DocModified);
}

TEST_F(ConditionDesigner, cancelKeepsTheConditionEvenAfterClearing) {
    condition.CondFields[0] = kPages;
    condition.CondOps[0] = '>';
    condition.CondValues[0] = "9";
    const model::CondExprDef before = condition;
    dlgFilterDesg dialog(sample.CurrDB20, services, condition, nullptr);
    showAndActivate(dialog);
    EXPECT_EQ(textOf(dialog, "TxtConst1"), "9");
    script.expectMessage(QString::fromLatin1(kClearQuestion), QStringLiteral("Yes"));
    clickOn(dialog, "ClearButton");
    EXPECT_EQ(textOf(dialog, "TxtConst1"), "");
    clickOn(dialog, "CancelButton");
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(condition, before);
}

} // namespace
} // namespace tallybook::test
