// A large box for a text of many lines.
#pragma once

#include "desktop/platform/MemoBox.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <string>

namespace Ui {
class frmMemo;
}

namespace tallybook::desktop {

class frmMemo : public QDialog {
    Q_OBJECT

public:
    struct Contents {
        QString title;    // above the box, without its colon
        std::string text; // of the core, lines parted by line feeds
        int longest = 0;  // characters that can be stored
        bool readOnly = false;
    };

    frmMemo(const Contents& contents, QWidget* parent);
    ~frmMemo() override;

    std::string text() const; // lines parted by line feeds

private:
    void showCount();

    std::unique_ptr<Ui::frmMemo> m_ui;
    std::optional<MemoBox> m_memo; // over txtMemo
    int m_longest;
};

} // namespace tallybook::desktop
