// The popup help of a field on the handheld's screen: a text of several lines.
#pragma once

#include "core/platform/Services.h"

#include <QDialog>

class QPlainTextEdit;

namespace tallybook::desktop {

class dlgPopHlp : public QDialog {
    Q_OBJECT

public:
    dlgPopHlp(platform::Services& services, const std::string& text, QWidget* parent);

    std::string text() const; // with line feeds alone
    void accept() override;   // a character that cannot be stored is refused

private:
    platform::Services& m_services;
    QPlainTextEdit* m_text;
};

} // namespace tallybook::desktop
