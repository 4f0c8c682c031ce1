#include "desktop/RandomUser.h"

#include "core/document/views/Views.h"
#include "core/pdb/Database.h"
#include "core/shell/Commands.h"
#include "desktop/document/frmDocument.h"
#include "desktop/platform/Text.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <array>

namespace tallybook::test {

namespace {

constexpr std::size_t kMostProblems = 20;
constexpr std::size_t kSmallDatabase = 100'000; // bytes; larger ones are saved for a look less often

struct Press {
    int code;
    Qt::KeyboardModifiers modifiers;
};
const std::array kPresses = {
    Press{Qt::Key_Left, {}},
    Press{Qt::Key_Right, {}},
    Press{Qt::Key_Up, {}},
    Press{Qt::Key_Down, {}},
    Press{Qt::Key_Home, {}},
    Press{Qt::Key_End, {}},
    Press{Qt::Key_PageUp, {}},
    Press{Qt::Key_PageDown, {}},
    Press{Qt::Key_Tab, {}},
    Press{Qt::Key_Tab, {}},
    Press{Qt::Key_Backtab, Qt::ShiftModifier},
    Press{Qt::Key_Return, {}},
    Press{Qt::Key_Return, {}},
    Press{Qt::Key_Enter, Qt::KeypadModifier},
    Press{Qt::Key_Escape, {}},
    Press{Qt::Key_F2, {}},
    Press{Qt::Key_F3, {}},
    Press{Qt::Key_F3, Qt::ShiftModifier},
    Press{Qt::Key_F4, {}},
    Press{Qt::Key_F7, {}},
    Press{Qt::Key_F7, Qt::ShiftModifier},
    Press{Qt::Key_F8, {}},
    Press{Qt::Key_F9, {}},
    Press{Qt::Key_F10, {}},
    Press{Qt::Key_Menu, {}},
    Press{Qt::Key_F10, Qt::ShiftModifier},
    Press{Qt::Key_Insert, {}},
    Press{Qt::Key_Delete, {}},
    Press{Qt::Key_Delete, Qt::ControlModifier},
    Press{Qt::Key_Backspace, {}},
    Press{Qt::Key_Space, {}},
    Press{Qt::Key_Space, Qt::ShiftModifier},
    Press{Qt::Key_Space, Qt::ControlModifier},
    Press{Qt::Key_Left, Qt::ShiftModifier},
    Press{Qt::Key_Right, Qt::ShiftModifier},
    Press{Qt::Key_Up, Qt::ShiftModifier},
    Press{Qt::Key_Down, Qt::ShiftModifier},
    Press{Qt::Key_Home, Qt::ControlModifier},
    Press{Qt::Key_End, Qt::ControlModifier},
    Press{Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier},
    Press{Qt::Key_Tab, Qt::ControlModifier},
    Press{Qt::Key_Up, Qt::ControlModifier},
    Press{Qt::Key_Down, Qt::ControlModifier},
    Press{Qt::Key_Down, Qt::AltModifier},
    Press{Qt::Key_Return, Qt::AltModifier},
    Press{Qt::Key_Return, Qt::ControlModifier},
    Press{Qt::Key_A, Qt::ControlModifier},
    Press{Qt::Key_C, Qt::ControlModifier},
    Press{Qt::Key_X, Qt::ControlModifier},
    Press{Qt::Key_V, Qt::ControlModifier},
    Press{Qt::Key_Insert, Qt::ShiftModifier},
    Press{Qt::Key_Z, Qt::ControlModifier},
    Press{Qt::Key_F, Qt::ControlModifier},
    Press{Qt::Key_S, Qt::ControlModifier},
    Press{Qt::Key_N, Qt::ControlModifier},
    Press{Qt::Key_W, Qt::ControlModifier},
    Press{Qt::Key_E, Qt::AltModifier},
    Press{Qt::Key_F, Qt::AltModifier},
    Press{Qt::Key_V, Qt::AltModifier},
    Press{Qt::Key_T, Qt::AltModifier},
};

const std::array kTexts = {
    "a",           "Z",
    " ",           "0",
    "7",           "-",
    "-1",          "12.5",
    "1,5",         "32768",
    "2147483648",  "1e9",
    "930",         "7pm",
    "10:10:10",    "12/24/2020",
    "1/2/20",      "5.6.2024",
    "29.2.2023",   "\"quoted\"",
    "[Title]",     "x + 1",
    "If(1;2;3)",   "Prev(",
    "\xC3\xA4",    "\xE2\x82\xAC",
    "\xD0\xBF",    "\xE6\x97\xA5",
    "<b>bold</b>", "a+b*?#[",
    "%1",          "\t",
};

std::string describe(int code, Qt::KeyboardModifiers modifiers) {
    return QKeySequence(static_cast<int>(modifiers) | code).toString().toStdString();
}

std::string nameOf(const QObject& object) {
    const std::string name = object.objectName().toStdString();
    return name.empty() ? object.metaObject()->className() : name;
}

// The end is the user's own, and what is behind these leads out of the program.
bool mayBeTriggered(const QAction& action) {
    return action.isEnabled() && !action.objectName().isEmpty() &&
           action.objectName() != QStringLiteral("mnuFileExit");
}

} // namespace

RandomUser::RandomUser(desktop::frmMain& window, MemoryFiles& files, platform::Services& services, std::uint32_t seed)
    : m_window(window), m_files(files), m_services(services), m_random(seed) {}

RandomUser::~RandomUser() = default;

void RandomUser::addDatabase(const std::filesystem::path& path, platform::Bytes bytes) {
    m_files.put(path, bytes);
    m_databases.emplace_back(path, std::move(bytes));
}

void RandomUser::act(int actions) {
    m_left = actions;
    QEventLoop loop;
    m_loop = &loop;
    schedule();
    loop.exec();
    m_loop = nullptr;
}

// The next action waits while this one is done: when that opens a window with a loop of its own, it is done there.
void RandomUser::schedule() {
    QMetaObject::invokeMethod(this, &RandomUser::step, Qt::QueuedConnection);
}

void RandomUser::step() {
    QWidget* target = top();
    if (m_left <= 0 && target == &m_window) {
        m_loop->quit();
        return;
    }
    schedule();
    if (target != &m_window)
        m_seen.insert(nameOf(*target));
    if (QApplication::activePopupWidget() == nullptr && QApplication::activeWindow() != target)
        QApplication::setActiveWindow(target); // nobody else does where there is no window manager
    if (m_left <= 0)
        return leave(*target);
    --m_left;
    ++m_done;
    ++m_depth;
    actIn(*target);
    if (--m_depth == 0) // a window that an action opened is closed, and the action over
        check();
}

std::uint32_t RandomUser::below(std::uint32_t limit) {
    return static_cast<std::uint32_t>(m_random() % limit);
}

void RandomUser::note(const std::string& action) {
    m_action = action;
    if (m_log != nullptr)
        *m_log << m_done << ' ' << action << std::endl; // at once: the next thing may be a crash
}

void RandomUser::problem(const std::string& what) {
    const std::string file =
        m_window.document() == nullptr ? "no document" : m_window.document()->CurrFilePath.filename().string();
    if (m_problems.size() < kMostProblems)
        m_problems.push_back("action " + std::to_string(m_done) + ", " + m_action + " (" + file + "): " + what);
    if (m_log != nullptr)
        *m_log << "PROBLEM " << what << std::endl;
}

QWidget* RandomUser::top() const {
    if (QWidget* popUp = QApplication::activePopupWidget())
        return popUp;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return &m_window;
}

bool RandomUser::stayedLong(QWidget& target) {
    if (m_stayingIn != &target) {
        m_stayingIn = &target;
        m_stayed = 0;
        m_leaving = 0;
    }
    const bool popUp = QApplication::activePopupWidget() == &target;
    return ++m_stayed > (popUp ? 6 : 40) + static_cast<int>(below(20));
}

// By Escape, or as hard as it takes.
void RandomUser::leave(QWidget& target) {
    note("leave " + nameOf(target));
    if (qobject_cast<QMessageBox*>(&target) != nullptr)
        return answerBox(target);
    auto* dialog = qobject_cast<QDialog*>(&target);
    if (++m_leaving < 4 || dialog == nullptr)
        key(Qt::Key_Escape, {});
    else
        dialog->reject();
    if (dialog == nullptr && m_leaving > 8)
        target.close();
}

void RandomUser::answerBox(QWidget& box) {
    if (nameOf(box) == "dlgError")
        problem("the error dialog came up");
    switch (below(4)) {
    case 0:
        note("Escape in a box");
        return key(Qt::Key_Escape, {});
    case 1:
        note("Return in a box");
        return key(Qt::Key_Return, {});
    default:
        break;
    }
    const auto buttons = box.findChildren<QAbstractButton*>();
    QAbstractButton* button = oneOf(buttons);
    note("press " + button->text().toStdString() +
         " in a box: " + qobject_cast<QMessageBox*>(&box)->text().left(60).toStdString());
    button->click();
}

// The dialog shows the computer's own folders, where nobody clicks at random.
void RandomUser::nameFile(QWidget& window) {
    auto* dialog = qobject_cast<QFileDialog*>(&window);
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (dialog->acceptMode() != QFileDialog::AcceptSave || m_left <= 0 || chance(3)) {
        note("close the file dialog");
        return dialog->reject();
    }
    m_files.addFolder("/tmp");
    name->setText(QStringLiteral("/tmp/MS2_Random%1.pdb").arg(below(1'000'000)));
    note("name a file " + name->text().toStdString());
    key(Qt::Key_Return, {});
    if (dialog->isVisible())
        dialog->reject();
}

void RandomUser::actIn(QWidget& target) {
    if (qobject_cast<QFileDialog*>(&target) != nullptr)
        return nameFile(target);
    if (target.objectName() == QStringLiteral("dlgError")) {
        const auto* text = target.findChild<QPlainTextEdit*>(QStringLiteral("Text1"));
        problem("the error dialog came up: " + (text != nullptr ? text->toPlainText().toStdString() : ""));
        return leave(target);
    }
    if (&target != &m_window && stayedLong(target))
        return leave(target);
    if (qobject_cast<QMessageBox*>(&target) != nullptr)
        return answerBox(target);
    const std::uint32_t what = below(100);
    if (what < 32)
        randomKey();
    else if (what < 48)
        type();
    else if (what < 76)
        click(target);
    else if (what < 80)
        scroll(target);
    else if (what < 83)
        drag(target);
    else if (what < 85)
        fillClipboard();
    else if (&target == &m_window)
        actInMain();
    else
        click(target);
}

void RandomUser::actInMain() {
    if (m_window.document() == nullptr || chance(12))
        return openOne();
    switch (below(6)) {
    case 0:
        return resizeMain();
    case 1:
        return dropDown("CmbView");
    case 2:
        return dropDown("CmbFilter");
    default:
        return trigger();
    }
}

void RandomUser::dropDown(const char* list) {
    note(std::string("drop down ") + list);
    m_window.findChild<QComboBox*>(QString::fromLatin1(list))->showPopup();
}

void RandomUser::openOne() {
    const std::uint32_t which = below(static_cast<std::uint32_t>(m_databases.size()) + 1);
    if (which == m_databases.size()) {
        note("new database");
        return m_window.findChild<QAction*>(QStringLiteral("mnuFileNew"))->trigger();
    }
    const auto& [path, bytes] = m_databases[which];
    note("open " + path.string());
    m_files.put(path, bytes);
    m_window.openFile(path);
}

void RandomUser::trigger() {
    std::vector<QAction*> actions;
    for (const shell::Command& command : shell::commands()) {
        const QString name = desktop::toQt(command.name.empty() ? command.key : command.name);
        if (auto* action = m_window.findChild<QAction*>(name); action != nullptr && mayBeTriggered(*action))
            actions.push_back(action);
    }
    QAction* action = oneOf(actions);
    note("command " + nameOf(*action));
    action->trigger();
}

void RandomUser::fillClipboard() {
    QClipboard& clipboard = *QGuiApplication::clipboard();
    note("clipboard");
    switch (below(4)) {
    case 0:
        return clipboard.clear();
    case 1:
        return clipboard.setImage(QImage(2, 2, QImage::Format_RGB32));
    case 2:
        return clipboard.setText(QStringLiteral("One\nTwo\tThree\r\n") + QChar(0x65E5));
    default:
        return clipboard.setText(QString(static_cast<int>(below(5000)), QLatin1Char('x')));
    }
}

void RandomUser::resizeMain() {
    const QSize size(300 + static_cast<int>(below(900)), 200 + static_cast<int>(below(600)));
    note("resize to " + std::to_string(size.width()) + " x " + std::to_string(size.height()));
    m_window.resize(size);
}

// Goes the way that a key of the keyboard goes: to the window that is active, by its shortcuts or its focus.
void RandomUser::key(int code, Qt::KeyboardModifiers modifiers, const QString& text) {
    QWidget* popUp = QApplication::activePopupWidget();
    QPointer<QWindow> window = popUp != nullptr ? popUp->windowHandle() : QGuiApplication::focusWindow();
    if (window == nullptr)
        window = top()->windowHandle();
    if (window == nullptr)
        return;
    qt_handleKeyEvent(window, QEvent::KeyPress, code, modifiers, text);
    if (window != nullptr)
        qt_handleKeyEvent(window, QEvent::KeyRelease, code, modifiers, text);
}

void RandomUser::randomKey() {
    const Press& press = oneOf(kPresses);
    note("key " + describe(press.code, press.modifiers) + " in " + nameOf(*top()));
    const QString text = press.code == Qt::Key_Space ? QStringLiteral(" ") : QString();
    key(press.code, press.modifiers, text);
}

void RandomUser::type() {
    const QString text = QString::fromUtf8(oneOf(kTexts));
    note("type " + text.toStdString() + " in " + nameOf(*top()));
    const QPointer<QWidget> target = top();
    for (const QChar one : text) {
        const int code = one.unicode() < 0x80 ? one.toUpper().unicode() : 0;
        key(code, {}, QString(one));
        if (target != top())
            return; // a window came up; the rest would be typed there
    }
}

QPoint RandomUser::somewhereInGrid(const desktop::GridView& grid) {
    const int x = static_cast<int>(below(static_cast<std::uint32_t>(std::max(1, grid.viewport()->width()))));
    const int y = static_cast<int>(below(static_cast<std::uint32_t>(std::max(1, grid.viewport()->height()))));
    // Few records leave most of the grid empty: half of the clicks go where they are.
    const int rows = grid.geometry().headerHeight() + 6 * grid.geometry().rowHeight();
    return grid.viewport()->mapTo(&m_window, QPoint(x, chance(2) ? y : y % std::max(1, rows)));
}

QPoint RandomUser::somewhereIn(QWidget& target) {
    if (&target == &m_window && m_window.document() != nullptr && !chance(3))
        return somewhereInGrid(m_window.documentWindow().shownGrid());
    std::vector<QWidget*> widgets;
    const auto children = target.findChildren<QWidget*>();
    for (QWidget* child : children)
        if (child->isVisible() && child->window() == target.window() && !child->size().isEmpty())
            widgets.push_back(child);
    QWidget* widget = widgets.empty() ? &target : oneOf(widgets);
    const QPoint point(static_cast<int>(below(static_cast<std::uint32_t>(widget->width()))),
                       static_cast<int>(below(static_cast<std::uint32_t>(widget->height()))));
    return widget == &target ? point : widget->mapTo(&target, point);
}

void RandomUser::click(QWidget& target) {
    clickAt(target, somewhereIn(target));
}

void RandomUser::clickAt(QWidget& target, QPoint point) {
    const QPointer<QWindow> window = target.windowHandle();
    if (window == nullptr || target.size().isEmpty())
        return;
    const bool twice = chance(6);
    const Qt::MouseButton button = chance(8) ? Qt::RightButton : Qt::LeftButton;
    const Qt::KeyboardModifiers modifiers = chance(10) ? Qt::ShiftModifier : Qt::NoModifier;
    const QWidget* hit = target.childAt(point);
    note(std::string(twice ? "double click" : "click") + (button == Qt::RightButton ? " right" : "") + " at " +
         std::to_string(point.x()) + ',' + std::to_string(point.y()) + " in " + nameOf(target) + " on " +
         (hit == nullptr ? "itself" : nameOf(*hit)));
    const QPointF global = target.mapToGlobal(QPointF(point));
    m_time += 1000;
    for (int press = 0; press < (twice ? 2 : 1) && window != nullptr; ++press, m_time += 60) {
        qt_handleMouseEvent(window, point, global, button, button, QEvent::MouseButtonPress, modifiers, m_time);
        if (window != nullptr)
            qt_handleMouseEvent(window, point, global, Qt::NoButton, button, QEvent::MouseButtonRelease, modifiers,
                                m_time + 20);
    }
}

void RandomUser::drag(QWidget& target) {
    const QPointer<QWindow> window = target.windowHandle();
    if (window == nullptr || target.size().isEmpty())
        return;
    const QPoint from = somewhereIn(target);
    const QPoint to = somewhereIn(target);
    note("drag in " + nameOf(target));
    m_time += 1000;
    const auto send = [&](QPoint point, Qt::MouseButtons state, Qt::MouseButton button, QEvent::Type type) {
        if (window != nullptr)
            qt_handleMouseEvent(window, point, target.mapToGlobal(QPointF(point)), state, button, type, {}, m_time);
    };
    const QPointer<QWidget> alive = &target;
    send(from, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress);
    if (alive != nullptr)
        send(to, Qt::LeftButton, Qt::NoButton, QEvent::MouseMove);
    if (alive != nullptr)
        send(to, Qt::NoButton, Qt::LeftButton, QEvent::MouseButtonRelease);
}

void RandomUser::scroll(QWidget& target) {
    if (target.size().isEmpty())
        return;
    const QPoint point = somewhereIn(target);
    QWidget* hit = target.childAt(point);
    if (hit == nullptr)
        hit = &target;
    const int steps = static_cast<int>(below(21)) - 10;
    note("wheel " + std::to_string(steps) + " over " + nameOf(*hit));
    const bool sideways = chance(4);
    QWheelEvent event(hit->mapFrom(&target, point), target.mapToGlobal(QPointF(point)), {},
                      sideways ? QPoint(steps * 120, 0) : QPoint(0, steps * 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(hit, &event);
}

void RandomUser::checkPlace(const model::GridModel& grid, const char* name) {
    const model::GridPlace& place = grid.place();
    const auto inside = [](int value, int limit) { return value >= 0 && value < limit; };
    const int columns = std::min(grid.cols(), model::kScratchColumn);
    if (!inside(place.Row, grid.rows()) || !inside(place.RowSel, grid.rows()) || !inside(place.Col, columns) ||
        !inside(place.ColSel, columns))
        problem(std::string(name) + " has its current cell at " + std::to_string(place.Row) + ',' +
                std::to_string(place.Col) + " to " + std::to_string(place.RowSel) + ',' +
                std::to_string(place.ColSel) + " of " + std::to_string(grid.rows()) + " x " +
                std::to_string(columns));
}

// What was made of the database can be written, and read again.
void RandomUser::checkSaves(model::Document& doc) {
    const auto built = pdb::buildDatabase(doc, m_services);
    if (!built)
        return problem("it cannot be saved: " + built.error().description());
    model::Document read;
    pdb::ReadSteps steps;
    steps.afterFieldTable = [this](model::Document& fresh) {
        document::gridLoadFieldNames20(fresh, m_services.regional);
    };
    const auto status = pdb::readDatabase(read, built.value().bytes, "MS2_A.pdb", m_services.regional, steps);
    if (!status)
        return problem("what is saved cannot be read: " + status.error().description());
    if (read.NumDataRecs != doc.NumDataRecs)
        problem("of " + std::to_string(doc.NumDataRecs) + " records " + std::to_string(read.NumDataRecs) +
                " were saved");
}

void RandomUser::checkDocument(model::Document& doc) {
    checkPlace(doc.grd, "the grid");
    if (doc.ViewShown)
        checkPlace(doc.ViewGrd, "the view");
    if (!doc.GridReady)
        problem("a bulk change has not ended");
    if (model::hasNoRecords(doc) ? doc.NumDataRecs != 0 : doc.NumDataRecs != doc.grd.dataRows())
        problem("there are " + std::to_string(doc.grd.dataRows()) + " rows for " + std::to_string(doc.NumDataRecs) +
                " records");
    if (doc.editor.open() &&
        (doc.ViewShown || doc.editor.row >= doc.grd.rows() || doc.grd.rowHeight(doc.editor.row) == 0))
        problem("an editor is open over a cell that is not there to be seen");
    const bool large = doc.NumDataRecs > 2000;
    if (chance(large ? 400 : 25))
        checkSaves(doc);
}

void RandomUser::check() {
    if (QGuiApplication::overrideCursor() != nullptr)
        problem("the wait cursor stays");
    if (!m_window.documentWindow().grid().viewport()->updatesEnabled())
        problem("the grid is not repainted any more");
    if (m_window.document() != nullptr)
        checkDocument(*m_window.document());
    if (chance(10))
        top()->grab();
    if (top() != &m_window || m_window.document() == nullptr)
        return;
    QApplication::setActiveWindow(&m_window);
    if (QApplication::focusWidget() == nullptr)
        problem("nothing has the focus");
}

} // namespace tallybook::test
