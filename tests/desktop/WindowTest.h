// The real main window over files in memory, a clock that stands still and settings in memory.
#pragma once

#include "core/platform/Clock.h"
#include "desktop/ModalScript.h"
#include "desktop/SampleDocument.h"
#include "desktop/main/frmMain.h"
#include "shell/MemorySettings.h"
#include "support/MemoryFiles.h"

#include <QAction>
#include <QString>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace tallybook::test {

inline const std::filesystem::path kSamplePath = "/data/MS2_Books.pdb";
inline const std::filesystem::path kPublishersPath = "/data/MS2_Publishers.pdb";

class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    // Writes the sample, changed by `change`, to kSamplePath, and the publishers beside it unless there are some.
    // The window is made by the first show().
    void putSample(const std::function<void(model::Document&)>& change = {});
    // Writes the publishers, changed by `change`, to kPublishersPath.
    void putPublishers(const std::function<void(model::Document&)>& change = {});
    desktop::frmMain& show();
    // The sample, open in the window.
    void openSample(const std::function<void(model::Document&)>& change = {});

    desktop::frmMain& window() { return *m_window; }
    model::Document& doc() { return *m_window->document(); }
    desktop::GridView& grid();
    // What the saved file holds.
    std::unique_ptr<model::Document> savedFile(const std::filesystem::path& path = kSamplePath);

    template <class T> T* find(const char* name) {
        T* found = m_window->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QAction* action(const char* name) { return find<QAction>(name); }
    void trigger(const char* name);

    // Cells by record (from 0) and field slot.
    QPoint middleOf(int record, int slot);
    void click(int record, int slot, Qt::MouseButton button = Qt::LeftButton);
    void clickAt(QPoint point, Qt::MouseButton button = Qt::LeftButton);
    void go(int record, int slot); // makes the cell current, with the keys of the grid
    std::string text(int record, int slot);
    // Keys go to whatever has the focus.
    void key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const char* text);
    bool visible(const char* name);

    MemoryFiles files;
    MemorySettings settings;
    platform::FixedClock clock{{2003, 3, 5, 13, 5, 9}};
    platform::Regional regional;
    desktop::QtUserInterface user;
    platform::Services services{user, user, files, clock, regional, "/app"};
    ModalScript script;

private:
    void write(model::Document& doc, const std::filesystem::path& path);

    std::unique_ptr<desktop::frmMain> m_window;
};

} // namespace tallybook::test
