#include "desktop/dialogs/QtUserInterface.h"

#include "core/platform/Guards.h"
#include "core/platform/OwnTexts.h"
#include "core/shell/Version.h"
#include "desktop/dialogs/dlgError.h"
#include "desktop/dialogs/frmLogin.h"
#include "desktop/grid/GridView.h"
#include "desktop/platform/CProgressBar.h"
#include "desktop/platform/Text.h"
#include "desktop/platform/TypedText.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>

#include <algorithm>

namespace tallybook::desktop {

namespace {

using platform::Answer;
using platform::Buttons;

constexpr std::string_view kNobodysPassword = "longer than any password";

QMessageBox::Icon iconOf(platform::Icon icon) {
    switch (icon) {
    case platform::Icon::Information:
        return QMessageBox::Information;
    case platform::Icon::Question:
        return QMessageBox::Question;
    case platform::Icon::Warning:
        return QMessageBox::Warning;
    case platform::Icon::Critical:
        return QMessageBox::Critical;
    case platform::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsOf(Buttons buttons) {
    switch (buttons) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton buttonOf(Answer answer) {
    switch (answer) {
    case Answer::Cancel:
        return QMessageBox::Cancel;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    case Answer::Ok:
        break;
    }
    return QMessageBox::Ok;
}

Answer firstOf(Buttons buttons) {
    return buttons == Buttons::Ok || buttons == Buttons::OkCancel ? Answer::Ok : Answer::Yes;
}

Answer answerOf(int button, Buttons buttons) {
    for (const Answer answer : {Answer::Ok, Answer::Cancel, Answer::Yes, Answer::No})
        if (button == buttonOf(answer) && buttonsOf(buttons).testFlag(buttonOf(answer)))
            return answer;
    return closingOf(buttons);
}

// "label|pattern" as the file dialog wants it. A pattern that the label does not show stays hidden.
void setFilter(QFileDialog& dialog, const std::string& filter) {
    const QStringList parts = toQt(filter).split(QLatin1Char('|'));
    const QString& label = parts.first();
    const QString pattern = QStringLiteral("(%1)").arg(parts.last());
    const bool shown = parts.size() < 2 || label.endsWith(pattern);
    dialog.setNameFilter(shown ? label : label + QLatin1Char(' ') + pattern);
    dialog.setOption(QFileDialog::HideNameFilterDetails, !shown);
}

// The folder, or the nearest one above it that is there; the user's own when only the root is left.
QString existingFolder(const std::filesystem::path& folder) {
    std::error_code ignored;
    std::filesystem::path there = folder;
    while (there.has_relative_path() && !std::filesystem::is_directory(there, ignored))
        there = there.parent_path();
    const bool rootAlone = there.empty() || (!there.has_relative_path() && folder.has_relative_path());
    return rootAlone ? QDir::homePath() : pathToQt(there);
}

std::optional<std::filesystem::path> chosen(QFileDialog& dialog) {
    dialog.resize(760, 480);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return pathFromQt(dialog.selectedFiles().first());
}

} // namespace

QWidget* QtUserInterface::parentOfDialogs() const {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : m_window.data();
}

void QtUserInterface::beforeAsking() {
    if (m_beforeAsking)
        m_beforeAsking();
}

Answer QtUserInterface::message(const platform::Message& message) {
    beforeAsking();
    const platform::DefaultCursor pointer(*this);
    const std::string title = message.title.empty() ? std::string(shell::kProgramName) : message.title;
    QMessageBox box(iconOf(message.icon), toQt(title), toQt(message.text), buttonsOf(message.buttons),
                    parentOfDialogs());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(buttonOf(message.preferred.value_or(firstOf(message.buttons))));
    box.setEscapeButton(buttonOf(closingOf(message.buttons)));
    return answerOf(box.exec(), message.buttons);
}

void QtUserInterface::beep() {
    QApplication::beep();
}

std::optional<std::string> QtUserInterface::askPassword(const std::string& actionWord, const std::string& fileName) {
    beforeAsking();
    frmLogin prompt(toQt(actionWord), toQt(fileName), parentOfDialogs());
    if (prompt.exec() != QDialog::Accepted)
        return std::nullopt;
    // With a character that no byte stands for it is nobody's password: its nearest bytes must not open anything.
    return foreignIn(prompt.typed()).empty() ? fromQt(prompt.typed()) : std::string(kNobodysPassword);
}

std::optional<std::string> QtUserInterface::askText(const std::string& title, const std::string& prompt,
                                                    const std::string& preset) {
    beforeAsking();
    const platform::DefaultCursor pointer(*this);
    QString typed = toQt(preset);
    while (true) {
        bool accepted = false;
        typed =
            QInputDialog::getText(parentOfDialogs(), toQt(title), toQt(prompt), QLineEdit::Normal, typed, &accepted);
        if (!accepted)
            return std::nullopt;
        const std::string foreign = foreignIn(typed);
        if (foreign.empty())
            return fromQt(typed);
        // The box comes again with the text, so that one character can be corrected.
        message({.text = platform::texts::foreignCharacter(foreign), .title = title});
    }
}

platform::ErrorAnswer QtUserInterface::showError(const platform::Error& error) {
    beforeAsking();
    const platform::DefaultCursor pointer(*this);
    dlgError dialog(error, m_supportPage, parentOfDialogs());
    dialog.exec();
    if (dialog.answer() == platform::ErrorAnswer::Abort) {
        m_aborted = true;
        QCoreApplication::exit(1);
    }
    return dialog.answer();
}

std::optional<std::filesystem::path> QtUserInterface::askSaveName(const std::string& title, const std::string& filter,
                                                                  const std::filesystem::path& suggestion) {
    beforeAsking();
    const platform::DefaultCursor pointer(*this);
    QFileDialog dialog(parentOfDialogs(), toQt(title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // whoever asks for a name asks about the file, too
    setFilter(dialog, filter);
    dialog.setDefaultSuffix(QStringLiteral("pdb"));
    std::error_code ignored;
    if (std::filesystem::is_directory(suggestion, ignored)) {
        dialog.setDirectory(pathToQt(suggestion));
    } else if (!suggestion.empty()) {
        dialog.setDirectory(existingFolder(suggestion.parent_path()));
        dialog.selectFile(pathToQt(suggestion.filename()));
    }
    return chosen(dialog);
}

std::optional<std::filesystem::path> QtUserInterface::askOpenName(const std::string& title, const std::string& filter,
                                                                  const std::filesystem::path& folder) {
    beforeAsking();
    QFileDialog dialog(parentOfDialogs(), toQt(title), existingFolder(folder));
    dialog.setFileMode(QFileDialog::ExistingFile);
    setFilter(dialog, filter);
    return chosen(dialog);
}

void QtUserInterface::progress(const std::string& caption, int value, int maximum) {
    if (m_bar)
        m_bar->show(toQt(caption), value, maximum);
}

void QtUserInterface::setPointer(Pointer pointer) {
    if (pointer == m_pointer)
        return;
    m_pointer = pointer;
    if (pointer == Pointer::Wait)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtUserInterface::setGridRepainting(bool repaints) {
    if (m_grid)
        m_grid->setRepainting(repaints);
}

} // namespace tallybook::desktop
