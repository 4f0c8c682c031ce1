// No dialog opens larger than a small screen, and all of it can be reached there.
#include "desktop/platform/ScreenFit.h"

#include "core/document/find/Find.h"
#include "desktop/FieldPropTest.h"
#include "desktop/dialogs/dlgFilterDesg.h"
#include "desktop/dialogs/frmFindForm.h"
#include "desktop/dialogs/frmListEditor.h"
#include "desktop/dialogs/frmMemoAw.h"
#include "desktop/dialogs/frmOpen.h"
#include "desktop/dialogs/frmPDBProps.h"
#include "desktop/dialogs/frmPwd.h"
#include "desktop/dialogs/frmViewDesigner.h"

#include <QScrollArea>

namespace tallybook::test {
namespace {

// A screen of 1366 x 768 at twice the size, less a panel and the frame of the window.
constexpr QSize kRoom(679, 320);

class SmallScreen : public WindowTest {
protected:
    SmallScreen() { makeSample(sample, regional); }

    void expectFits(QDialog& dialog, const char* lastButton) {
        showAndActivate(dialog);
        EXPECT_LE(dialog.width(), kRoom.width()) << dialog.objectName().toStdString();
        EXPECT_LE(dialog.height(), kRoom.height()) << dialog.objectName().toStdString();
        auto* button = child<QAbstractButton>(dialog, lastButton);
        auto* area = dialog.findChild<QScrollArea*>(QStringLiteral("scrollArea"));
        ASSERT_NE(area, nullptr) << dialog.objectName().toStdString();
        area->ensureWidgetVisible(button);
        EXPECT_FALSE(button->visibleRegion().isEmpty()) << dialog.objectName().toStdString();
        dialog.close();
    }

    model::Document sample;
    desktop::ScreenFit fit{nullptr, kRoom};
};

TEST_F(SmallScreen, dialogsFit) {
    handheld::UserList users{{"Ann"}, {"/data"}, "Ann", {}};
    desktop::frmOpen open(services, user, users, {}, "/data", nullptr);
    expectFits(open, "CancelButton");
    desktop::dlgFilterDesg filters(sample, services, nullptr);
    expectFits(filters, "CancelButton");
    desktop::frmViewDesigner views(sample, services, nullptr);
    expectFits(views, "cmdCancel");
    desktop::frmPDBProps properties(sample, services, users, {}, nullptr);
    expectFits(properties, "cmdCancel");
    desktop::frmPwd security(sample, services, nullptr);
    expectFits(security, "cmdClose");
    desktop::frmListEditor list(sample, services, kShelf, nullptr);
    expectFits(list, "OKButton");
    desktop::frmMemoAw memo({.fieldName = QStringLiteral("Notes"), .text = {}, .autoWriter = true}, nullptr);
    expectFits(memo, "CancelButton");
}

TEST_F(SmallScreen, fieldPropertiesFitWhateverTheType) {
    for (int type = 0; type < model::kFieldTypes; ++type) {
        sample.CurrDB20.Fields[kKind].Type = static_cast<model::FieldType>(type);
        LoneFieldProp form(sample, services, kKind, design::FieldPropMode::Document);
        expectFits(form, "CancelButton");
    }
}

// A panel that comes later finds its room by scrolling.
TEST_F(SmallScreen, aDialogThatGrowsStaysOnTheScreen) {
    LoneFieldProp form(sample, services, kTitle, design::FieldPropMode::Document);
    showAndActivate(form);
    EXPECT_TRUE(child<QLineEdit>(form, "txtFieldName")->hasFocus());
    choose(form, "cmbFieldType", "Adv Expression");
    QApplication::processEvents();
    EXPECT_LE(form.height(), kRoom.height());
    EXPECT_TRUE(child<QWidget>(form, "txtAdvExpression")->isVisible());
}

TEST_F(SmallScreen, theMainWindowFitsAScreenThatHasShrunk) {
    settings.set("Settings", "MainWidth", "90000");
    settings.set("Settings", "MainHeight", "90000");
    const desktop::frmMain frame(services, user, settings);
    EXPECT_LE(frame.width(), desktop::ScreenFit::roomOn(frame).width());
    EXPECT_LE(frame.height(), desktop::ScreenFit::roomOn(frame).height());
}

// Where there is room enough nothing changes.
TEST(LargeScreen, dialogsStayAsTheyAre) {
    const desktop::ScreenFit fit(nullptr, QSize(1900, 1000));
    desktop::frmFindForm find({}, nullptr);
    const QSize before = find.sizeHint();
    showAndActivate(find);
    EXPECT_EQ(find.findChild<QScrollArea*>(QStringLiteral("scrollArea")), nullptr);
    EXPECT_EQ(find.sizeHint(), before);
}

} // namespace
} // namespace tallybook::test
