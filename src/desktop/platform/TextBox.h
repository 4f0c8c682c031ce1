// A box for a text of many lines, safe against a clipboard that holds nothing.
#pragma once

#include <QPlainTextEdit>

namespace tallybook::desktop {

// Qt hands a null pointer over when text is pasted while no program owns the clipboard, and reads through it.
class TextBox : public QPlainTextEdit {
    Q_OBJECT

public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
};

} // namespace tallybook::desktop
