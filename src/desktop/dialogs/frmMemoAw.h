// A large box for long texts, and a small one for the values of number fields that have an auto-writer.
#pragma once

#include "desktop/platform/MemoBox.h"

#include <QDialog>

#include <memory>
#include <optional>

namespace Ui {
class frmMemoAw;
}

namespace tallybook::desktop {

class frmMemoAw : public QDialog {
    Q_OBJECT

public:
    enum class Screen { Text, Number };
    struct Contents {
        QString fieldName;
        QString text; // lines parted by line feeds
        Screen screen = Screen::Text;
        int longest = 4096; // characters that the field holds
        bool autoWriter = false;
        bool readOnly = false; // the text is shown, not changed
    };

    frmMemoAw(const Contents& contents, QWidget* parent);
    ~frmMemoAw() override;

    QString text() const; // lines parted by line feeds
    // As if the user had typed it over the old text.
    void replaceText(const QString& text);

signals:
    void autoWriterAsked(); // CmdAw

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showCount();

    std::unique_ptr<Ui::frmMemoAw> m_ui;
    Screen m_screen;
    std::optional<MemoBox> m_memo; // over txtMemo
    int m_longest;
};

} // namespace tallybook::desktop
