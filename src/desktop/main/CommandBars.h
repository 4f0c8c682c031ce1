// The menus and tool bars of the main window, made from the table of commands.
#pragma once

#include "core/shell/Commands.h"
#include "core/shell/RecentFiles.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace tallybook::desktop {

// Each command is one action, shared by its menu item and its button. An action's object name is the command's name,
// or the button's key where there is no menu item.
class CommandBars : public QObject {
    Q_OBJECT

public:
    explicit CommandBars(QMainWindow& window);

    QAction* action(std::string_view name) const; // by object name
    QMenu* menu(std::string_view name) const;
    QToolBar* toolBar() const { return m_toolBar; }
    QToolBar* printToolBar() const { return m_printToolBar; }

    // UpdateToolbar: enables every command for the frame's state.
    void enable(shell::DocState state, int printers);

    // The items mnuMRUList of the File menu.
    void setRecentFiles(const shell::RecentList& list);

signals:
    void triggered(const QString& name); // the action's object name
    void recentFileChosen(int number);   // from 0

private:
    void makeMenus(QMainWindow& window);
    void makeActions(QMainWindow& window);
    void makeToolBar(QMainWindow& window);
    void makePrintToolBar(QMainWindow& window);

    QHash<QString, QAction*> m_actions;
    QHash<QString, QMenu*> m_menus;
    QToolBar* m_toolBar = nullptr;
    QToolBar* m_printToolBar = nullptr;
    QAction* m_recentPlace = nullptr; // the recent files stand in front of it
    QAction* m_recentLine = nullptr;
    QList<QAction*> m_recent;
};

} // namespace tallybook::desktop
