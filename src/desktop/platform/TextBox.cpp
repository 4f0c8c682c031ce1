#include "desktop/platform/TextBox.h"

namespace tallybook::desktop {

bool TextBox::canInsertFromMimeData(const QMimeData* source) const {
    return source != nullptr && QPlainTextEdit::canInsertFromMimeData(source);
}

void TextBox::insertFromMimeData(const QMimeData* source) {
    if (source != nullptr)
        QPlainTextEdit::insertFromMimeData(source);
}

} // namespace tallybook::desktop
