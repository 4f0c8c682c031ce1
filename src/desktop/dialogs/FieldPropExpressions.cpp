// The panels that build expressions.
#include "core/design/Tags.h"
#include "desktop/dialogs/FieldPropPanels.h"
#include "desktop/platform/OpensByKey.h"
#include "desktop/platform/TypedText.h"
#include "ui_frmFieldProp.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextCursor>

namespace tallybook::desktop {

namespace tags = design::tags;

namespace {

constexpr int kOperandsInARow = 2;
constexpr int kOperandWidth = 12; // characters
constexpr int kOperatorWidth = 2;

void narrow(QComboBox& box, int characters) {
    box.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box.setMinimumContentsLength(characters);
}

// A long name is whole in the list that drops down.
void widenList(QComboBox& box) {
    box.view()->setMinimumWidth(box.view()->sizeHintForColumn(0) +
                                box.view()->verticalScrollBar()->sizeHint().width());
}

// An entry stands for its place in the list, since two may have one text. What was typed before is no entry, even if
// a field is called so.
design::OperandChoice choiceOf(const QComboBox& box, const design::OperandChoice& shown) {
    const QString text = box.currentText();
    if (shown.position == design::kTypedNumber && text == toQt(shown.text))
        return shown;
    if (box.currentIndex() >= 0 && text == box.itemText(box.currentIndex()))
        return {box.currentIndex(), {}};
    if (text.trimmed().isEmpty())
        return {};
    const int position = box.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    return position >= 0 ? design::OperandChoice{position, {}}
                         : design::OperandChoice{design::kTypedNumber, fromQt(text)};
}

void showChoice(QComboBox& box, const design::OperandChoice& choice) {
    box.setCurrentIndex(choice.position);
    if (choice.position == design::kTypedNumber)
        box.setEditText(toQt(choice.text));
    box.lineEdit()->setCursorPosition(0); // a long name shows its beginning
}

} // namespace

SimpleExpressionPanel::SimpleExpressionPanel(const FieldPropContext& context) : FieldPropPanel(context) {
    ui().cmbExpFormat->addItems(qtEntries(design::expressionFormats()));
    makeLists();
    connect(ui().cmbExpFormat, &QComboBox::activated, this, [this](int format) {
        const int before = draft().frmExpr.format;
        change(tags::kFieldFormat, [this, format, before] {
            draft().frmExpr.format = before;
            draft().frmExpr = design::selectFormat(draft().frmExpr, format);
        });
    });
    connect(ui().ClearExpression, &QPushButton::clicked, this, [this] {
        change(tags::kFieldClearExpression, [this] {
            if (design::ClearExpression(services()))
                draft().frmExpr = design::ResetExpression(draft().frmExpr);
        });
    });
}

void SimpleExpressionPanel::makeLists() {
    auto* entries = new QStringListModel(qtEntries(design::operandEntries(db())), this);
    QWidget* before = ui().cmbExpFormat;
    const auto place = [&](QComboBox* box, int list, int column) {
        ui().operands->addWidget(box, list / kOperandsInARow, column);
        QWidget::setTabOrder(before, box);
        before = box;
    };
    for (int list = 0; list < design::kOperands; ++list) {
        auto* operand = new QComboBox(ui().frmExpr);
        operand->setObjectName(QStringLiteral("cmbExpr"));
        operand->setAccessibleName(tr("Operand %1").arg(list + 1));
        operand->setToolTip(tr("A field, a day, a time, or a number that you type"));
        operand->setEditable(true);
        operand->setInsertPolicy(QComboBox::NoInsert);
        operand->setCompleter(nullptr); // it would complete the numbers that are typed
        operand->setModel(entries);
        narrow(*operand, kOperandWidth);
        widenList(*operand);
        operand->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_operands[static_cast<std::size_t>(list)] = operand;
        place(operand, list, list % kOperandsInARow * 2);
        if (list == design::kOperators)
            break;
        auto* sign = new QComboBox(ui().frmExpr);
        sign->setObjectName(QStringLiteral("cmbOper"));
        sign->setAccessibleName(tr("Operator %1").arg(list + 1));
        narrow(*sign, kOperatorWidth);
        m_operators[static_cast<std::size_t>(list)] = sign;
        place(sign, list, list % kOperandsInARow * 2 + 1);
    }
    QWidget::setTabOrder(before, ui().ClearExpression);
}

// A format other than the first calculates with two operands; what was chosen for the others stays in reach, so that
// it can be taken out.
void SimpleExpressionPanel::showOperators() {
    const design::SimpleChoices& choices = draft().frmExpr;
    for (int list = 0; list < design::kOperators; ++list) {
        const auto place = static_cast<std::size_t>(list);
        const auto entries = design::operatorEntries(choices.format, list);
        m_operators[place]->clear();
        m_operators[place]->addItems(qtEntries(entries));
        m_operators[place]->setCurrentIndex(choices.operators[place]);
        m_operators[place]->setEnabled(entries.size() > 1);
        const design::OperandChoice& behind = choices.operands[place + 1];
        m_operands[place + 1]->setEnabled(entries.size() > 1 || behind != design::OperandChoice{});
    }
}

void SimpleExpressionPanel::show() {
    const design::SimpleChoices& choices = draft().frmExpr;
    ui().cmbExpFormat->setCurrentIndex(choices.format);
    ui().LblFormat->setText(toQt(design::ShowFormat(choices.format)).trimmed());
    for (std::size_t list = 0; list < m_operands.size(); ++list)
        showChoice(*m_operands[list], choices.operands[list]);
    showOperators();
}

void SimpleExpressionPanel::take() {
    design::SimpleChoices& choices = draft().frmExpr;
    choices.format = ui().cmbExpFormat->currentIndex();
    for (std::size_t list = 0; list < m_operands.size(); ++list)
        choices.operands[list] = choiceOf(*m_operands[list], choices.operands[list]);
    for (std::size_t list = 0; list < m_operators.size(); ++list)
        choices.operators[list] = std::max(m_operators[list]->currentIndex(), 0);
}

AdvancedExpressionPanel::AdvancedExpressionPanel(const FieldPropContext& context) : FieldPropPanel(context) {
    using design::InsertionList;
    ui().cmbAdvExpFormat->addItems(qtEntries(design::advancedFormats()));
    ui().ClearExpressionAdv->setObjectName(QStringLiteral("ClearExpression"));
    ui().txtAdvExpression->installEventFilter(this);
    const std::pair<InsertionList, QComboBox*> lists[] = {
        {InsertionList::cmbAdvField, ui().cmbAdvField}, {InsertionList::cmbAdvPrev, ui().cmbAdvPrev},
        {InsertionList::cmbAdvFunc, ui().cmbAdvFunc},   {InsertionList::cmbAdvOper, ui().cmbAdvOper},
        {InsertionList::cmbAdvColor, ui().cmbAdvColor}, {InsertionList::cmbAdvConst, ui().cmbAdvConst},
    };
    for (const auto& [list, box] : lists) {
        box->addItems(qtEntries(design::insertionEntries(list, db())));
        widenList(*box);
        new OpensByKey(*box);
        connect(box, &QComboBox::activated, this,
                [this, list = list, box = box](int position) { insert(list, *box, position); });
    }
    connect(ui().ClearExpressionAdv, &QPushButton::clicked, this, [this] {
        change(tags::kFieldClearExpression, [this] {
            if (design::ClearExpression(services()))
                draft().frmExprAdv.text.clear();
        });
    });
}

void AdvancedExpressionPanel::show() {
    const QString text = toQt(draft().frmExprAdv.text);
    if (text != typedText(*ui().txtAdvExpression))
        ui().txtAdvExpression->setPlainText(text);
    ui().cmbAdvExpFormat->setCurrentIndex(draft().frmExprAdv.format);
}

void AdvancedExpressionPanel::take() {
    if (ui().txtAdvExpression->document()->isModified())
        draft().frmExprAdv.text = fromQt(typedText(*ui().txtAdvExpression));
    draft().frmExprAdv.format = ui().cmbAdvExpFormat->currentIndex();
}

// Only what is inserted goes into the box: the rest of the text may hold characters that are refused later on.
void AdvancedExpressionPanel::insert(design::InsertionList list, QComboBox& box, int position) {
    QTextCursor cursor = ui().txtAdvExpression->textCursor();
    design::TextBox selected;
    if (design::insertEntry(list, position, fromQt(box.itemText(position)), selected)) {
        cursor.insertText(toQt(selected.text));
        ui().txtAdvExpression->setTextCursor(cursor);
    }
    ui().txtAdvExpression->setFocus();
    box.setCurrentIndex(0);
}

void AdvancedExpressionPanel::select(int place) {
    QTextCursor cursor = ui().txtAdvExpression->textCursor();
    const auto end = static_cast<int>(ui().txtAdvExpression->toPlainText().size());
    cursor.setPosition(std::min(place, end));
    cursor.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
    if (!cursor.hasSelection())
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    ui().txtAdvExpression->setTextCursor(cursor);
}

// The text is one line however it is broken: Enter is for the default button.
bool AdvancedExpressionPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            ui().OKButton->click();
            return true;
        }
    }
    return FieldPropPanel::eventFilter(watched, event);
}

} // namespace tallybook::desktop
