#include "desktop/WindowTest.h"

#include "core/pdb/Database.h"
#include "core/platform/AppFolders.h"
#include "desktop/document/frmDocument.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTest>

namespace tallybook::test {

WindowTest::WindowTest() {
    files.addFolder("/app");
    files.addFolder("/data");
    platform::makeFolders(services);
}

WindowTest::~WindowTest() = default;

void WindowTest::write(model::Document& doc, const std::filesystem::path& path) {
    auto built = pdb::buildDatabase(doc, services);
    ASSERT_TRUE(built) << built.error().description();
    files.put(path, built.value().bytes);
}

void WindowTest::putSample(const std::function<void(model::Document&)>& change) {
    model::Document sample;
    makeSample(sample, regional);
    if (change)
        change(sample);
    write(sample, kSamplePath);
    if (!files.has(kPublishersPath))
        putPublishers();
}

void WindowTest::putPublishers(const std::function<void(model::Document&)>& change) {
    model::Document publishers;
    makePublishers(publishers, regional);
    if (change)
        change(publishers);
    write(publishers, kPublishersPath);
}

desktop::frmMain& WindowTest::show() {
    m_window = std::make_unique<desktop::frmMain>(services, user, settings);
    m_window->resize(1000, 600);
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    EXPECT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    return *m_window;
}

void WindowTest::openSample(const std::function<void(model::Document&)>& change) {
    putSample(change);
    show().openFile(kSamplePath);
    ASSERT_NE(m_window->document(), nullptr);
}

desktop::GridView& WindowTest::grid() {
    return m_window->documentWindow().grid();
}

std::unique_ptr<model::Document> WindowTest::savedFile(const std::filesystem::path& path) {
    auto saved = std::make_unique<model::Document>();
    pdb::ReadSteps steps;
    steps.afterFieldTable = [this](model::Document& read) { document::gridLoadFieldNames20(read, regional); };
    const auto status = pdb::readDatabase(*saved, files.bytes(path), path.filename().string(), regional, steps);
    EXPECT_TRUE(status) << (status ? "" : status.error().description());
    return saved;
}

void WindowTest::trigger(const char* name) {
    QAction* one = action(name);
    ASSERT_TRUE(one != nullptr && one->isEnabled()) << name;
    one->trigger();
}

QPoint WindowTest::middleOf(int record, int slot) {
    const int row = record + model::kFirstDataRow;
    grid().showCell(row, model::columnOfSlot(slot));
    return grid().cellRect(row, model::columnOfSlot(slot)).center();
}

void WindowTest::clickAt(QPoint point, Qt::MouseButton button) {
    if (button == Qt::LeftButton) {
        QTest::mouseClick(grid().viewport(), button, {}, point);
        return;
    }
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, grid().viewport()->mapToGlobal(point));
    QApplication::sendEvent(grid().viewport(), &event);
}

void WindowTest::click(int record, int slot, Qt::MouseButton button) {
    clickAt(middleOf(record, slot), button);
}

void WindowTest::go(int record, int slot) {
    grid().setFocus();
    key(Qt::Key_Home, Qt::ControlModifier);
    for (int i = 0; i < record; ++i)
        key(Qt::Key_Down);
    for (int i = 0; i < slot; ++i)
        key(Qt::Key_Right);
    EXPECT_EQ(doc().grd.row(), record + model::kFirstDataRow);
    EXPECT_EQ(doc().grd.col(), model::columnOfSlot(slot));
}

std::string WindowTest::text(int record, int slot) {
    return doc().grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot));
}

void WindowTest::key(int code, Qt::KeyboardModifiers modifiers) {
    QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    QTest::keyClick(focus, static_cast<Qt::Key>(code), modifiers);
}

void WindowTest::type(const char* typed) {
    for (const char* c = typed; *c != 0; ++c) {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        QTest::keyClick(focus, *c);
    }
}

bool WindowTest::visible(const char* name) {
    return find<QWidget>(name)->isVisible();
}

} // namespace tallybook::test
