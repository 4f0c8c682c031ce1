// What the core asks of its user, with windows.
#pragma once

#include "core/platform/Screen.h"
#include "core/platform/UserInterface.h"
#include "desktop/grid/GridView.h"
#include "desktop/platform/CProgressBar.h"

#include <QPointer>
#include <QString>

#include <functional>

class QWidget;

namespace tallybook::desktop {

class QtUserInterface : public platform::UserInterface, public platform::Screen {
public:
    QtUserInterface() = default;
    ~QtUserInterface() override { QtUserInterface::setPointer(Pointer::Default); }

    // Where dialogs belong, progress is shown and the grid is frozen. Each may be absent.
    void setWindow(QWidget* window) { m_window = window; }
    void setProgressBar(CProgressBar* bar) { m_bar = bar; }
    void setGrid(GridView* grid) { m_grid = grid; }
    // Called before anything is asked: the splash must not stand above a question.
    void setBeforeAsking(std::function<void()> call) { m_beforeAsking = std::move(call); }
    void setSupportPage(const QString& address) { m_supportPage = address; }

    // The user has ended the program from the error dialog: nothing is asked or saved any more.
    bool aborted() const { return m_aborted; }

    platform::Answer message(const platform::Message& message) override;
    void beep() override;
    std::optional<std::string> askPassword(const std::string& actionWord, const std::string& fileName) override;
    std::optional<std::string> askText(const std::string& title, const std::string& prompt,
                                       const std::string& preset) override;
    platform::ErrorAnswer showError(const platform::Error& error) override;
    std::optional<std::filesystem::path> askSaveName(const std::string& title, const std::string& filter,
                                                     const std::filesystem::path& suggestion) override;
    void progress(const std::string& caption, int value, int maximum) override;
    Pointer pointer() const override { return m_pointer; }
    void setPointer(Pointer pointer) override;
    void setGridRepainting(bool repaints) override;

    // The file dialog for an existing file; nothing when cancelled.
    std::optional<std::filesystem::path> askOpenName(const std::string& title, const std::string& filter,
                                                     const std::filesystem::path& folder);

    QWidget* parentOfDialogs() const;

private:
    void beforeAsking();

    QPointer<QWidget> m_window;
    QPointer<CProgressBar> m_bar;
    QPointer<GridView> m_grid;
    std::function<void()> m_beforeAsking;
    QString m_supportPage;
    Pointer m_pointer = Pointer::Default;
    bool m_aborted = false;
};

} // namespace tallybook::desktop
