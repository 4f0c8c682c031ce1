// Leaves a picture of each window in the build folder, in a light and a dark theme; run once more for screens of
// twice the resolution. They are there to be looked at.
#include "adapters/FolderDesktop.h"
#include "core/forms/FormItems.h"
#include "core/forms/ImageCell.h"
#include "core/forms/PalmBitmap.h"
#include "core/pdb/Passwords.h"
#include "desktop/FieldPropTest.h"
#include "desktop/dialogs/dlgAutoWriter.h"
#include "desktop/dialogs/dlgError.h"
#include "desktop/dialogs/dlgFilterDesg.h"
#include "desktop/dialogs/dlgMulFilter.h"
#include "desktop/dialogs/dlgRadio.h"
#include "desktop/dialogs/frmAbout.h"
#include "desktop/dialogs/frmFindForm.h"
#include "desktop/dialogs/frmListEditor.h"
#include "desktop/dialogs/frmLogin.h"
#include "desktop/dialogs/frmMemoAw.h"
#include "desktop/dialogs/frmOpen.h"
#include "desktop/dialogs/frmPDBProps.h"
#include "desktop/dialogs/frmPwd.h"
#include "desktop/dialogs/frmSplash.h"
#include "desktop/dialogs/frmUser.h"
#include "desktop/dialogs/frmViewDesigner.h"
#include "desktop/document/frmDocument.h"
#include "desktop/forms/FormScreen.h"
#include "desktop/forms/dlgColour.h"
#include "desktop/forms/dlgImportPicture.h"
#include "desktop/forms/dlgPixelEditor.h"
#include "desktop/forms/dlgPopHlp.h"
#include "desktop/forms/frmDesignForm.h"
#include "desktop/forms/frmEditImage.h"
#include "support/RawFile.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>
#include <QStyle>
#include <QTableWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

namespace tallybook::test {
namespace {

using model::FieldType;

QPalette darkPalette() {
    QPalette palette;
    const QColor window(45, 47, 52);
    const QColor base(30, 31, 34);
    const QColor text(226, 228, 232);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(58, 60, 66));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Light, window.lighter(150));
    palette.setColor(QPalette::Mid, window.darker(130));
    palette.setColor(QPalette::Dark, window.darker(160));
    palette.setColor(QPalette::Shadow, Qt::black);
    palette.setColor(QPalette::PlaceholderText, QColor(140, 142, 148));
    palette.setColor(QPalette::Highlight, QColor(47, 130, 208));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(110, 175, 240));
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(128, 130, 136));
    return palette;
}

class Pictures : public WindowTest, public testing::WithParamInterface<const char*> {
protected:
    Pictures() : m_before(QApplication::palette()) {
        if (isDark())
            QApplication::setPalette(darkPalette());
    }
    ~Pictures() override { QApplication::setPalette(m_before); }

    bool isDark() const { return std::string_view(GetParam()) == "dark"; }

    void keep(QWidget& window, const char* name) {
        const QString folder = qEnvironmentVariable("TALLYBOOK_PICTURES", QStringLiteral("pictures"));
        ASSERT_TRUE(QDir().mkpath(folder));
        window.ensurePolished();
        QCoreApplication::processEvents();
        const QPixmap picture = window.grab();
        const QString scale = picture.devicePixelRatio() > 1 ? QStringLiteral("-2x") : QString();
        EXPECT_TRUE(
            picture.save(QStringLiteral("%1/%2-%3%4.png")
                             .arg(folder, QString::fromLatin1(name), QString::fromLatin1(GetParam()), scale)));
    }
    void showAndKeep(QWidget& one, const char* name) {
        one.show();
        QApplication::setActiveWindow(&one);
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&one));
        keep(one, name);
    }

private:
    QPalette m_before;
};

// Colours, check boxes and a control character, which the sample has none of.
void colour(model::Document& sample) {
    const std::uint32_t colours[] = {255, 65280, 65535};
    for (int record = 0; record < 3; ++record) {
        const int row = record + model::kFirstDataRow;
        sample.grd.setText(row, model::columnOfSlot(kValue), std::to_string(record * 10));
        sample.grd.setColour(row, model::columnOfSlot(kValue), colours[record]);
    }
    sample.grd.setText(4, model::columnOfSlot(kTitle), "Odd \x81 byte");
}

TEST_P(Pictures, mainWindow) {
    openSample();
    colour(doc());
    grid().refresh();
    keep(window(), "main");
    click(0, kTitle);
    keep(window(), "main-text");
    click(0, kStock);
    keep(window(), "main-spin");
    click(0, kBought);
    keep(window(), "main-date");
    click(1, kShelf);
    keep(window(), "main-list");
    keep(*find<QComboBox>("cmb1")->view()->window(), "main-list-dropped");
    key(Qt::Key_Escape);
    go(0, kTitle);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Right, Qt::ShiftModifier);
    keep(window(), "main-block");
}

TEST_P(Pictures, views) {
    openSample([](model::Document& sample) {
        sample.CurrDB20.Filters[1].Name = "Not lent, not read, and cheap";
        sample.CurrDB20.Filters[1].CondFields[0] = kPages;
        sample.CurrDB20.Filters[1].CondOps[0] = '>';
        sample.CurrDB20.Views[3].Name = "Everything about the harbour";
        sample.CurrDB20.Filters[0].Name = "Thin";
        sample.CurrDB20.Filters[0].CondFields[0] = kPages;
        sample.CurrDB20.Filters[0].CondOps[0] = '<';
        sample.CurrDB20.Filters[0].CondValues[0] = "200";
        sample.CurrDB20.HdrWord1 = 1;
        model::ViewDef& view = sample.CurrDB20.Views[1];
        view.Name = "Prices and loans";
        view.NumCols = 3;
        view.Columns[0].Field = kTitle;
        view.Columns[1].Field = kLent;
        view.Columns[2].Field = kPrice;
        sample.CurrDB20.NumViews = 4;
        sample.CurrDB20.NumFilters = 2;
        sample.CurrDB20.HdrByte2 = 1;
    });
    keep(window(), "main-view");
    find<QPushButton>("cmdEdit")->click();
    keep(window(), "main-view-edit");
    auto* views = find<QComboBox>("CmbView");
    views->showPopup();
    keep(*views->view()->window(), "main-views-dropped");
    views->hidePopup();
    auto* filters = find<QComboBox>("CmbFilter");
    filters->showPopup();
    keep(*filters->view()->window(), "main-filters-dropped");
    filters->hidePopup();
    find<QPushButton>("cmdEdit")->click();
    auto& view = window().documentWindow().viewGrid();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.cellRect(0, 1).center());
    keep(window(), "main-view-column");
}

TEST_P(Pictures, emptyWindows) {
    show();
    keep(window(), "main-empty");
    trigger("mnuFileNew");
    keep(window(), "main-new");
    trigger("mnuRecordAdd");
    keep(window(), "main-first-record");
    desktop::frmMain first(services, user, settings);
    showAndKeep(first, "main-first-start");
}

TEST_P(Pictures, menus) {
    openSample();
    for (const char* name :
         {"mnuFile", "mnuEdit", "mnuSearch", "mnuRecord", "mnuView", "mnuTools", "mnuHelp", "mnuColumn", "mnuRow"}) {
        auto* menu = find<QMenu>(name);
        menu->resize(menu->sizeHint());
        keep(*menu, name);
    }
    find<QMenu>("mnuFile")->setActiveAction(action("mnuFileSave"));
    keep(*find<QMenu>("mnuFile"), "mnuFile-hovered");
    find<QMenu>("mnuEdit")->setActiveAction(action("mnuEditCopy"));
    keep(*find<QMenu>("mnuEdit"), "mnuEdit-hovered");
    auto* bar = find<QToolBar>("tbToolBar");
    bar->widgetForAction(action("mnuFileSave"))->setAttribute(Qt::WA_UnderMouse);
    keep(*bar, "tbToolBar-hovered");
}

TEST_P(Pictures, dialogs) {
    desktop::frmLogin login(QStringLiteral("Login"), QStringLiteral("MS2_Books.pdb"), nullptr);
    showAndKeep(login, "frmLogin");
    desktop::dlgError error({.tag = "Load_DBProps : readLists", .text = "200 views, at most 13", .record = 85},
                            QStringLiteral("https://support.example"), nullptr);
    showAndKeep(error, "dlgError");
    desktop::dlgRadio radio(QStringLiteral("Cover"), {QStringLiteral("Hard"), QStringLiteral("Soft")}, 0, nullptr);
    showAndKeep(radio, "dlgRadio");
    desktop::frmMemoAw memo({.fieldName = QStringLiteral("Notes"),
                             .text = QStringLiteral("Bought at the harbour\nSecond hand"),
                             .autoWriter = true},
                            nullptr);
    showAndKeep(memo, "frmMemoAw");
    desktop::frmMemoAw number({.fieldName = QStringLiteral("Pages"),
                               .text = QStringLiteral("120"),
                               .screen = desktop::frmMemoAw::Screen::Number,
                               .autoWriter = true},
                              nullptr);
    showAndKeep(number, "frmMemoAw-number");
    desktop::frmFindForm find({.settings = {.text = "harbour"}, .texts = {"harbour"}}, nullptr);
    showAndKeep(find, "frmFindForm");
    desktop::dlgMulFilter filters({{0, "01. Lent", true},
                                   {1, "02. Bought before the turn of the century and never read again", false},
                                   {11, "12. Cheap", true}},
                                  nullptr);
    showAndKeep(filters, "dlgMulFilter");
    desktop::frmAbout about(nullptr);
    showAndKeep(about, "frmAbout");
    desktop::frmSplash splash;
    showAndKeep(splash, "frmSplash");
}

TEST_P(Pictures, lists) {
    model::Document sample;
    makeSample(sample, regional);
    sample.CurrDB20.Lists[kShelf].Items[1] = "Middle, beside the window that looks out on the harbour and its boats";
    desktop::frmListEditor editor(sample, services, kShelf, nullptr);
    showAndKeep(editor, "frmListEditor");
    using desktop::dlgAutoWriter;
    dlgAutoWriter text({"Novel", "Essay", "Letters"}, dlgAutoWriter::Choice::Several, nullptr);
    text.findChild<QListWidget*>(QStringLiteral("List1"))->item(1)->setSelected(true);
    text.findChild<QListWidget*>(QStringLiteral("List1"))->item(2)->setSelected(true);
    showAndKeep(text, "dlgAutoWriter");
    dlgAutoWriter number({"100", "250"}, dlgAutoWriter::Choice::One, nullptr);
    showAndKeep(number, "dlgAutoWriter-number");
}

TEST_P(Pictures, picker) {
    openSample(joinPublishers);
    script.expect([this](QWidget& window) {
        keep(window, "frmExtView");
        QTest::keyClicks(window.focusWidget(), QStringLiteral("10"));
        keep(window, "frmExtView-found");
        window.close();
    });
    click(0, kJoin);
    files.addFolder("/palm/Ann/Backup");
    adapters::FolderDesktop desktop{files, "/palm"};
    window().setHandheld(desktop, {{"Ann"}, {"/palm/Ann/Backup"}, "Ann"});
    for (const int slot : {int{kJoin}, kTown}) {
        script.expect([this, slot](QWidget& window) {
            keep(window, slot == kTown ? "frmFieldProp-lookup" : "frmFieldProp-join");
            choose(window, "cmbUser", "Ann");
            keep(window, slot == kTown ? "frmFieldProp-lookup-elsewhere" : "frmFieldProp-join-elsewhere");
            window.close();
        });
        QApplication::setActiveWindow(&window());
        go(0, slot);
        trigger("mnuViewFieldProp");
    }
    ASSERT_TRUE(files.remove(kPublishersPath));
    script.expect([](QWidget& message) { message.close(); });
    script.expect([this](QWidget& window) {
        keep(window, "frmExtView-none");
        window.close();
    });
    click(1, kJoin);
}

// A field with something in every panel.
void fillPanels(model::DatabaseModel& db, int slot) {
    db.Fields[static_cast<std::size_t>(slot)].AutoWriter = 1;
    db.Fields[static_cast<std::size_t>(slot)].Default = "2";
    db.Lists[slot] = {{1, 2, 3}, {"Novel", "Essay", "Letters"}};
    db.Expressions[slot].Tokens[0] = 86;
    db.Expressions[slot].TokenTexts[0] = "12.5";
    db.Expressions[slot].Tokens[1] = 92;
    db.Expressions[slot].Tokens[2] = kPages;
    db.CondExprs[slot].CondFields[0] = kPages;
    db.CondExprs[slot].CondOps[0] = 'L';
    db.CondExprs[slot].CondValues[0] = "100";
    db.CondExprs[slot].TrueText = "Thin";
    db.CondExprs[slot].FalseField = kTitle;
    db.CondExprs[slot].FalseKind = 3;
    db.Externals[slot].Source = "MS2_Publishers";
    db.Externals[slot].MatchField = 2;
    db.Externals[slot].SourceField = kJoin;
    db.OneToManys[slot].Source = "MS2_Loans";
    db.OneToManys[slot].Label1 = "Lent to";
}

TEST_P(Pictures, fieldProperties) {
    model::Document sample;
    makeSample(sample, regional);
    fillPanels(sample.CurrDB20, kKind);
    for (int type = 0; type < model::kFieldTypes; ++type) {
        sample.CurrDB20.Fields[kKind].Type = static_cast<model::FieldType>(type);
        if (sample.CurrDB20.Fields[kKind].Type == model::FieldType::AdvExpression)
            sample.CurrDB20.Expressions[kKind] = {.ResultType = 0, .Tokens = {kPages, 90, kPrice}};
        LoneFieldProp form(sample, services, kKind, design::FieldPropMode::Document);
        const QString name = QStringLiteral("frmFieldProp-%1").arg(type, 2, 10, QLatin1Char('0'));
        showAndKeep(form, name.toLatin1().constData());
    }
}

// The panels at their fullest.
TEST_P(Pictures, fullFieldProperties) {
    model::Document sample;
    makeSample(sample, regional);
    model::DatabaseModel& db = sample.CurrDB20;
    fillPanels(db, kKind);
    const auto keepType = [&](FieldType type, const char* name) {
        db.Fields[kKind].Type = type;
        LoneFieldProp form(sample, services, kKind, design::FieldPropMode::Document);
        showAndKeep(form, name);
    };
    db.Fields[kTitle].Name = "Title as it stands on the cover of the book";
    db.Expressions[kKind] = {.ResultType = 1, .Tokens = {kBought, 90, kTitle}};
    keepType(FieldType::Expression, "frmFieldProp-dates");
    for (std::uint8_t id = 4; id <= 8; ++id) {
        db.Lists[kKind].ItemIds.push_back(id);
        db.Lists[kKind].Items.push_back("Option " + std::to_string(id));
    }
    keepType(FieldType::RadioButton, "frmFieldProp-options");
    model::CondExprDef& condition = db.CondExprs[kKind];
    condition.CondFields = {kTitle, kTitle, kTitle};
    condition.CondFields2 = {0, kBought, 0};
    condition.CondOps = {'h', 'h', '<'};
    condition.CondLinks = {'A', 'O', 0};
    keepType(FieldType::ConditionalExpression, "frmFieldProp-condition");
    db.Fields[kKind].Name.assign(254, 'W');
    keepType(FieldType::Text, "frmFieldProp-long");
}

TEST_P(Pictures, handheld) {
    putSample();
    const std::filesystem::path folder = "/palm/Ann/Backup";
    for (const char* name : {"Books", "Everything about the old harbour", "Loans"}) {
        RawFile raw;
        raw.name = std::string("MS2_") + name;
        raw.name.resize(std::min<std::size_t>(raw.name.size(), 31));
        raw.add("57 00 00000001 FF");
        files.put(folder / ("MS2_" + std::string(name) + ".pdb"), raw.bytes());
    }
    RawFile older;
    older.name = "MSA_Recipes";
    older.creator = "MOSA";
    older.records.resize(48);
    files.put(folder / "MSA_Recipes.pdb", older.bytes());
    handheld::UserList users{{"Ann Smith", "Bob"}, {folder, "/data"}, "Ann Smith"};
    desktop::frmOpen open(services, user, users, {}, "/data", nullptr);
    showAndKeep(open, "frmOpen");
    auto* list = open.findChild<QTreeWidget*>(QStringLiteral("ListView1"));
    list->setCurrentItem(list->topLevelItem(1));
    keep(open, "frmOpen-selected");
    list->setCurrentItem(list->topLevelItem(3));
    keep(open, "frmOpen-older");
    open.close();
    desktop::frmUser install(users, nullptr);
    showAndKeep(install, "frmUser");
}

// A filter of all conditions, as wide as names and operators get.
model::FilterDef wideFilter() {
    model::FilterDef filter;
    filter.Name = "Not lent and cheap";
    filter.CondFields = {kPages, 0, kBought};
    filter.CondFields2 = {0, kStock, kPages};
    filter.CondOps = {'>', '<', 'S'};
    filter.CondValues = {"1234567890123456789", "T", ""};
    filter.CondLinks = {'A', 'O'};
    return filter;
}

TEST_P(Pictures, filterDesigner) {
    model::Document sample;
    makeSample(sample, regional);
    sample.CurrDB20.Filters[1].Name = "Thin";
    desktop::dlgFilterDesg fresh(sample, services, nullptr);
    showAndKeep(fresh, "dlgFilterDesg-new");
    sample.CurrDB20.Filters[0] = wideFilter();
    sample.CurrDB20.Fields[kPages].Name = "Pages of the book";
    desktop::dlgFilterDesg filter(sample, services, nullptr);
    showAndKeep(filter, "dlgFilterDesg");
    auto* list = filter.findChild<QComboBox*>(QStringLiteral("CmbFilterList"));
    list->showPopup();
    keep(*list->view()->window(), "dlgFilterDesg-dropped");
    list->hidePopup();
    model::CondExprDef condition;
    condition.CondFields[0] = kLent;
    condition.CondOps[0] = '=';
    condition.CondValues[0] = "1";
    desktop::dlgFilterDesg expression(sample.CurrDB20, services, condition, nullptr);
    showAndKeep(expression, "dlgFilterDesg-condition");
}

TEST_P(Pictures, viewDesigner) {
    model::Document sample;
    makeSample(sample, regional);
    model::ViewDef& view = sample.CurrDB20.Views[0];
    view.Name = "Prices and loans";
    view.NumCols = 4;
    view.Columns[0].Field = kTitle;
    view.Columns[1].Field = kPrice;
    view.Columns[2].Field = kBought;
    view.Columns[3].Field = kNotes;
    view.SortFields = {kPrice, kTitle, 0};
    view.SortDirs = {1, 0, 0};
    desktop::frmViewDesigner dialog(sample, services, nullptr);
    showAndKeep(dialog, "frmViewDesigner");
    auto* grid = dialog.findChild<QTableWidget*>(QStringLiteral("Grid"));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(1, 1)).center());
    keep(dialog, "frmViewDesigner-sort");
    keep(*dialog.findChild<QComboBox*>(QStringLiteral("CmbSort"))->view()->window(), "frmViewDesigner-dropped");
}

// A base part with a static text, fonts and colours, and two tabs.
void layOut(model::Document& sample) {
    model::DatabaseModel& db = sample.CurrDB20;
    db.NumForms = 3;
    db.StartForm = 5;
    const auto add = [&db](std::size_t part, std::uint8_t field, const char* caption) -> model::FormItem& {
        model::FormDef& form = db.Forms[part];
        model::FormItem& item = form.Items[form.NumItems];
        item = forms::newRow(db, field);
        item.Caption = caption;
        item.Row = form.NumItems++;
        return item;
    };
    db.Forms[0].FormByte = 60;
    model::FormItem& heading = add(0, forms::kStaticText, "The harbour's books");
    heading.ItemKind = 3;
    heading.LabelFore = {255, 255, 255};
    heading.LabelBack = {0, 0, 153};
    heading.ItemByte2 = 1;
    add(0, kTitle, "Title").ItemByte1 = 1;
    add(0, kPrice, "Price").DataFore = {128, 0, 0};
    add(0, kLent, "Lent").ItemText = "Ticked while it is away.";
    db.Forms[1].Name = "Shelf";
    add(1, kShelf, "Shelf").ItemByte2 = forms::kAsCombo;
    add(1, kBought, "Bought");
    add(1, kNotes, "Notes").LabelBack = {255, 255, 204};
    add(2, kPicture, "Cover");
}

TEST_P(Pictures, formDesigner) {
    model::Document sample;
    makeSample(sample, regional);
    layOut(sample);
    desktop::frmDesignForm dialog(sample, services, nullptr);
    showAndKeep(dialog, "frmDesignForm");
    auto* screen = dialog.findChild<desktop::FormScreen*>(QStringLiteral("BoxControl"));
    screen->setFocus();
    for (int row = 0; row < 4; ++row)
        QTest::keyClick(screen, Qt::Key_Down);
    dialog.resize(1340, 720);
    QTest::mouseClick(dialog.findChild<QWidget*>(QStringLiteral("chkShowValues")), Qt::LeftButton, {}, {8, 10});
    keep(dialog, "frmDesignForm-values");
    desktop::dlgColour colours(QStringLiteral("Text Colour"), {255, 0, 0}, nullptr);
    showAndKeep(colours, "dlgColour");
    desktop::dlgPopHlp help(services, "Ticked while it is away.", nullptr);
    showAndKeep(help, "dlgPopHlp");
}

TEST_P(Pictures, pictureDialog) {
    openSample();
    QImage image(200, 150, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / 199, y * 255 / 149, (x + y) % 256));
    desktop::dlgImportPicture import(image, nullptr);
    showAndKeep(import, "dlgImportPicture");
    ASSERT_TRUE(forms::setPicture(doc(), services, model::kFirstDataRow, kPicture,
                                  forms::writePalmBitmap(import.bitmap()).value(), forms::systemRandom())
                    .ok());
    desktop::frmEditImage dialog(doc(), services, model::kFirstDataRow, kPicture, nullptr);
    showAndKeep(dialog, "frmEditImage");
    desktop::dlgPixelEditor pixels(import.bitmap(), nullptr);
    showAndKeep(pixels, "dlgPixelEditor");
}

TEST_P(Pictures, properties) {
    model::Document sample;
    makeSample(sample, regional);
    sample.CurrDB20.Fields[kPages].SearchField = 1;
    sample.CurrDB20.Fields[kNotes].SearchField = 1;
    sample.CurrDB20.NoBackup = 1;
    sample.CurrDB20.DBName = "MS2_Books about the harbour";
    sample.CurrDB20.StartupText = "Welcome back.\nBooks that are lent stand in red.";
    design::UserList users{{"Ann", "Bob"}, {"/data", "/app"}, "Ann", {}};
    desktop::frmPDBProps dialog(sample, services, users, {}, nullptr);
    showAndKeep(dialog, "frmPDBProps");
    dialog.findChild<QPushButton*>(QStringLiteral("CmdSearch"))->click();
    keep(dialog, "frmPDBProps-fields");
    dialog.findChild<QPushButton*>(QStringLiteral("CmdLstCancel"))->click();
    dialog.findChild<QPushButton*>(QStringLiteral("CmdStartup"))->click();
    keep(dialog, "frmPDBProps-startup");
}

TEST_P(Pictures, securitySetting) {
    model::Document sample;
    makeSample(sample, regional);
    sample.CurrDB20.Passwords[1] = pdb::ApplyPwd("edit");
    desktop::frmPwd dialog(sample, services, nullptr);
    showAndKeep(dialog, "frmPwd");
    auto* list = dialog.findChild<QTreeWidget*>(QStringLiteral("lstPwd"));
    list->setCurrentItem(list->topLevelItem(0));
    keep(dialog, "frmPwd-new");
    list->setCurrentItem(list->topLevelItem(1));
    keep(dialog, "frmPwd-change");
}

TEST_P(Pictures, message) {
    openSample();
    script.expect([this](QWidget& box) {
        keep(box, "message");
        box.close();
    });
    user.message({.text = "Do you want to save the changes you made to MS2_Books.pdb ?",
                  .icon = platform::Icon::Question,
                  .buttons = platform::Buttons::YesNoCancel,
                  .title = {}});
}

INSTANTIATE_TEST_SUITE_P(Themes, Pictures, testing::Values("light", "dark"),
                         [](const auto& instance) { return std::string(instance.param); });

} // namespace
} // namespace tallybook::test
