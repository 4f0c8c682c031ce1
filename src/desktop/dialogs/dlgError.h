// The one dialog for unexpected errors.
#pragma once

#include "core/platform/UserInterface.h"

#include <QDialog>

#include <memory>

namespace Ui {
class dlgError;
}

namespace tallybook::desktop {

class dlgError : public QDialog {
    Q_OBJECT

public:
    // `supportPage` is the address behind the label lblMail; without one the label is not there.
    dlgError(const platform::Error& error, const QString& supportPage, QWidget* parent);
    ~dlgError() override;

    // Closing the dialog leaves the operation, as cmdCancel does.
    platform::ErrorAnswer answer() const { return m_answer; }

private:
    void answerWith(platform::ErrorAnswer answer);

    std::unique_ptr<Ui::dlgError> m_ui;
    platform::ErrorAnswer m_answer = platform::ErrorAnswer::Leave;
};

} // namespace tallybook::desktop
