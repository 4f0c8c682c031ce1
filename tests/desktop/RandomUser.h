// A user without a plan: presses keys, types, clicks, drags and scrolls over the main window and whatever windows
// come up. The same number does the same things.
#pragma once

#include "core/platform/Files.h"
#include "desktop/main/frmMain.h"
#include "support/MemoryFiles.h"

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <filesystem>
#include <map>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace tallybook::test {

class RandomUser : public QObject {
    Q_OBJECT

public:
    // Works on copies: a database is put back to its first bytes before it is opened. The window is shown; all
    // outlive this object.
    RandomUser(desktop::frmMain& window, MemoryFiles& files, platform::Services& services, std::uint32_t seed);
    ~RandomUser() override;

    // A database that the user may open.
    void addDatabase(const std::filesystem::path& path, platform::Bytes bytes);
    // Each action goes there, a line each, before it is done: the last line is what broke.
    void setLog(std::ostream* log) { m_log = log; }

    // That many actions, from a fresh start with a database or without; all windows but the main one are closed
    // afterwards.
    void act(int actions);

    int actions() const { return m_done; }
    // What should not be, each with the action that brought it about.
    const std::vector<std::string>& problems() const { return m_problems; }
    // Windows and menus that came up, by their names.
    const std::set<std::string>& seen() const { return m_seen; }

private:
    void step();
    void schedule();
    void note(const std::string& action);
    void problem(const std::string& what);

    std::uint32_t below(std::uint32_t limit);
    bool chance(std::uint32_t in) { return below(in) == 0; }
    template <class List> const auto& oneOf(const List& list) {
        return list[below(static_cast<std::uint32_t>(std::size(list)))];
    }

    QWidget* top() const;
    bool stayedLong(QWidget& target);
    void leave(QWidget& target);
    void answerBox(QWidget& box);
    void nameFile(QWidget& dialog);
    void actIn(QWidget& target);
    void actInMain();
    void openOne();
    void dropDown(const char* list);
    void trigger();
    void fillClipboard();
    void resizeMain();

    void key(int code, Qt::KeyboardModifiers modifiers, const QString& text = {});
    void randomKey();
    void type();
    void click(QWidget& target);
    void clickAt(QWidget& target, QPoint point);
    void drag(QWidget& target);
    void scroll(QWidget& target);
    QPoint somewhereIn(QWidget& target);
    QPoint somewhereInGrid(const desktop::GridView& grid);

    void check();
    void checkPlace(const model::GridModel& grid, const char* name);
    void checkDocument(model::Document& doc);
    void checkSaves(model::Document& doc);

    desktop::frmMain& m_window;
    MemoryFiles& m_files;
    platform::Services& m_services;
    std::mt19937 m_random;
    std::vector<std::pair<std::filesystem::path, platform::Bytes>> m_databases;
    std::ostream* m_log = nullptr;
    QEventLoop* m_loop = nullptr;
    int m_left = 0;
    int m_done = 0;
    int m_depth = 0; // actions that are being done: a window above the main one is part of what opened it
    QPointer<QWidget> m_stayingIn; // a window above the main one, and how much was done there
    int m_stayed = 0;
    int m_leaving = 0;
    int m_time = 1000; // of the mouse events, milliseconds
    std::string m_action;
    std::vector<std::string> m_problems;
    std::set<std::string> m_seen;
};

} // namespace tallybook::test
