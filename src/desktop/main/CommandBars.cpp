#include "desktop/main/CommandBars.h"

#include "desktop/platform/Resources.h"
#include "desktop/platform/Text.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <map>

namespace tallybook::desktop {

namespace {

constexpr std::string_view kRecentFilesItem = "mnuMRUList";

constexpr std::array<std::string_view, 4> kCheckable = {"mnuViewToolbar", "mnuViewStatusBar", "mnuViewNotUsedFields",
                                                        "mnuViewFieldTypes"};

struct PrintButton {
    std::string_view key;
    std::string_view toolTip;
};
constexpr std::array kPrintButtons = {
    PrintButton{"printfirst", "First Page"}, PrintButton{"printprevious", "Previous Page"},
    PrintButton{"printnext", "Next Page"},   PrintButton{"printlast", "Last Page"},
    PrintButton{"printzoomin", "Zoom In"},   PrintButton{"printzoomout", "Zoom Out"},
    PrintButton{"printclose", "Close"},      PrintButton{"pgsetup", "Page Setup"},
    PrintButton{"print", "Print"},
};

QString objectNameOf(const shell::Command& command) {
    return toQt(command.name.empty() ? command.key : command.name);
}

// In a caption "&&" stands for "&"; a tool tip shows what it holds.
QString toolTipOf(std::string_view caption) {
    return toQt(caption).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

} // namespace

CommandBars::CommandBars(QMainWindow& window) : QObject(&window) {
    makeMenus(window);
    makeActions(window);
    makeToolBar(window);
    makePrintToolBar(window);
}

void CommandBars::makeMenus(QMainWindow& window) {
    for (const shell::Menu& entry : shell::menus()) {
        auto* menu = new QMenu(toQt(entry.text), &window);
        menu->setObjectName(toQt(entry.name));
        menu->setToolTipsVisible(true);
        m_menus.insert(menu->objectName(), menu);
        if (!entry.text.empty())
            window.menuBar()->addMenu(menu);
    }
}

void CommandBars::makeActions(QMainWindow& window) {
    for (const shell::Command& command : shell::commands()) {
        QMenu* menu = m_menus.value(toQt(command.menu));
        if (command.name == kRecentFilesItem) {
            m_recentLine = menu->addSeparator();
            m_recentLine->setVisible(false);
            continue;
        }
        auto* action = new QAction(toQt(command.text), this);
        const QString name = objectNameOf(command);
        action->setObjectName(name);
        action->setShortcut(QKeySequence::fromString(toQt(command.shortcut), QKeySequence::PortableText));
        action->setStatusTip(toQt(command.statusTip));
        action->setCheckable(std::find(kCheckable.begin(), kCheckable.end(), command.name) != kCheckable.end());
        if (!command.key.empty())
            action->setIcon(icon(toQt(command.key)));
        if (!command.toolTip.empty())
            action->setToolTip(toolTipOf(command.toolTip));
        connect(action, &QAction::triggered, this, [this, name] { emit triggered(name); });
        m_actions.insert(name, action);
        if (menu == nullptr) {
            window.addAction(action); // its keys are heard while the tool bar is hidden, too
            continue;
        }
        if (command.separatorBefore) {
            QAction* line = menu->addSeparator();
            if (m_recentLine != nullptr && m_recentPlace == nullptr)
                m_recentPlace = line;
        }
        menu->addAction(action);
    }
}

void CommandBars::makeToolBar(QMainWindow& window) {
    m_toolBar = window.addToolBar(tr("Tool Bar"));
    m_toolBar->setObjectName(QStringLiteral("tbToolBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setIconSize(QSize(20, 20));
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    std::map<int, QAction*> byPosition;
    for (const shell::Command& command : shell::commands())
        if (command.position > 0)
            byPosition[command.position] = m_actions.value(objectNameOf(command));
    int before = 0;
    for (const auto& [position, action] : byPosition) {
        if (position > before + 1)
            m_toolBar->addSeparator();
        m_toolBar->addAction(action);
        m_toolBar->widgetForAction(action)->setAccessibleName(action->toolTip());
        before = position;
    }
}

// Stands in for the tool bar during a print preview.
void CommandBars::makePrintToolBar(QMainWindow& window) {
    m_printToolBar = window.addToolBar(tr("Print Tool Bar"));
    m_printToolBar->setObjectName(QStringLiteral("PrintToolBar"));
    m_printToolBar->setMovable(false);
    m_printToolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const PrintButton& button : kPrintButtons) {
        QAction* action = m_printToolBar->addAction(icon(toQt(button.key)), toQt(button.toolTip));
        action->setObjectName(toQt(button.key));
        action->setEnabled(false);
    }
    m_printToolBar->hide();
}

QAction* CommandBars::action(std::string_view name) const {
    return m_actions.value(toQt(name));
}

QMenu* CommandBars::menu(std::string_view name) const {
    return m_menus.value(toQt(name));
}

void CommandBars::enable(shell::DocState state, int printers) {
    for (const shell::Command& command : shell::commands())
        if (QAction* one = m_actions.value(objectNameOf(command)))
            one->setEnabled(shell::isEnabled(command, state, printers));
}

void CommandBars::setRecentFiles(const shell::RecentList& list) {
    qDeleteAll(m_recent);
    m_recent.clear();
    QMenu* file = menu("mnuFile");
    for (const std::string& caption : shell::UpdateMenuList(list)) {
        const int number = static_cast<int>(m_recent.size());
        QString text = QString::fromStdString(caption).replace(QLatin1Char('&'), QStringLiteral("&&"));
        auto* item = new QAction(QLatin1Char('&') + text, this);
        item->setObjectName(toQt(kRecentFilesItem));
        item->setStatusTip(tr("Open this Tallybook again"));
        connect(item, &QAction::triggered, this, [this, number] { emit recentFileChosen(number); });
        file->insertAction(m_recentPlace, item);
        m_recent.append(item);
    }
    m_recentLine->setVisible(!m_recent.isEmpty());
}

} // namespace tallybook::desktop
