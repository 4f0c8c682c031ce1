#include "desktop/forms/FormScreen.h"

#include "desktop/platform/Text.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTabBar>
#include <QToolButton>

namespace tallybook::desktop {

namespace {

using forms::Hit;
using forms::RowPlace;
using forms::Side;

const QColor kPaper(0xFF, 0xFF, 0xFF);
const QColor kInk(0, 0, 0);
const QColor kTitle(0x20, 0x40, 0x80);
const QColor kHidden(0xE4, 0xE6, 0xEA);

QColor colourOf(const model::Colour& colour) {
    return {colour.red, colour.green, colour.blue};
}

QString textOf(const forms::ShownValue& value) {
    using Mark = forms::ShownValue::Mark;
    const QString text = toQt(value.text).replace(u'\n', u' '); // a row has one line
    switch (value.mark) {
    case Mark::Combo:
        return QStringLiteral("\u25BE ") + text;
    case Mark::CheckOff:
        return QStringLiteral("\u2610");
    case Mark::CheckOn:
        return QStringLiteral("\u2611");
    case Mark::Picture:
        return QStringLiteral("\u25A3 ") + text;
    case Mark::None:
        break;
    }
    return text;
}

Qt::Alignment alignmentOf(forms::Alignment alignment) {
    switch (alignment) {
    case forms::Alignment::Centre:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case forms::Alignment::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case forms::Alignment::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace

QFont handheldFont(int number, int zoom) {
    constexpr int kSmall = 8; // pixels of the handheld
    constexpr int kLarge = 10;
    QFont font(QStringLiteral("Terminal"));
    font.setStyleHint(QFont::SansSerif);
    font.setFamilies(
        {QStringLiteral("Terminal"), QStringLiteral("DejaVu Sans Condensed"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize((number >= 2 ? kLarge : kSmall) * zoom);
    font.setBold(number % 2 == 1);
    return font;
}

FormScreen::FormScreen(forms::FormDesign& design, QWidget* parent) : QFrame(parent), m_design(design) {
    setObjectName(QStringLiteral("BoxControl"));
    setAccessibleName(tr("Screen of the handheld"));
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setMouseTracking(true);
    m_tabArea = new QFrame(this);
    m_tabArea->setObjectName(QStringLiteral("FrmTab"));
    m_tabArea->setAttribute(Qt::WA_TransparentForMouseEvents);
    for (int row = 0; row < forms::kRows; ++row) {
        const auto at = static_cast<std::size_t>(row);
        const QString number = QString::number(row);
        m_base[at] = {makeCell(QStringLiteral("LblFldLabel") + number),
                      makeCell(QStringLiteral("LblFldValue") + number)};
        m_tab[at] = {makeCell(QStringLiteral("LbltabFldLabel") + number),
                     makeCell(QStringLiteral("LbltabFldValue") + number)};
    }
    m_strip = new QTabBar(this);
    m_strip->setObjectName(QStringLiteral("TabStrip1"));
    m_strip->setDrawBase(false);
    m_strip->setExpanding(true);
    m_strip->setUsesScrollButtons(false);
    m_strip->setElideMode(Qt::ElideRight);
    m_strip->setStyleSheet(
        QStringLiteral("QTabBar::tab { background: #d8dce4; color: black; border: 1px solid black; "
                       "padding: 0px 1px; margin: 0px; min-width: 8px; } "
                       "QTabBar::tab:selected { background: white; border-bottom-color: white; }"));
    connect(m_strip, &QTabBar::tabBarClicked, this, [this](int index) { emit tabChosen(index + 1); });
    connect(m_strip, &QTabBar::currentChanged, this, [this](int index) {
        if (index >= 0)
            emit tabChosen(index + 1);
    });
    m_splitter = new QFrame(this);
    m_splitter->setObjectName(QStringLiteral("Frame1"));
    m_splitter->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_splitter->setStyleSheet(QStringLiteral("background: #2f82d0;"));
    m_selected = makeFrame(QStringLiteral("border: 2px solid #2f82d0; background: transparent;"));
    m_side = makeFrame(QStringLiteral("background: #2f82d0;"));
    m_landing = makeFrame(QStringLiteral("border: 3px solid #2f82d0; background: rgba(47, 130, 208, 60);"));
    m_helpBase = makeHelp(QStringLiteral("HelpIcoBase"));
    m_helpTab = makeHelp(QStringLiteral("HelpIcoTab"));
}

QLabel* FormScreen::makeCell(const QString& name) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    label->setAutoFillBackground(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

// Lies above the rows, and lets the mouse through.
QFrame* FormScreen::makeFrame(const QString& style) {
    auto* frame = new QFrame(this);
    frame->setAttribute(Qt::WA_TransparentForMouseEvents);
    frame->setStyleSheet(style);
    frame->hide();
    return frame;
}

QToolButton* FormScreen::makeHelp(const QString& name) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(QStringLiteral("?"));
    button->setToolTip(tr("Popup help"));
    button->setStyleSheet(QStringLiteral("background: #fff4b0; color: black; border: 1px solid black;"));
    button->setFocusPolicy(Qt::NoFocus);
    button->hide();
    connect(button, &QToolButton::clicked, this, &FormScreen::helpWanted);
    return button;
}

void FormScreen::setZoom(int zoom) {
    m_zoom = zoom;
    showDesign();
}

QRect FormScreen::rectOf(const forms::Box& box) const {
    return {box.x * m_zoom, box.y * m_zoom, box.width * m_zoom, box.height * m_zoom};
}

void FormScreen::showDesign() {
    const forms::FormGeometry geometry = m_design.geometry();
    setFixedSize(forms::kScreenWidth * m_zoom, geometry.height() * m_zoom);
    for (int row = 0; row < forms::kRows; ++row) {
        PutValue({false, row});
        PutValue({true, row});
    }
    showTabs();
    showSelection();
    showHelp();
    const bool onTab = m_design.tabInView() > 0;
    const forms::Box strip = geometry.strip();
    const int top = onTab ? strip.y + strip.height : forms::kTitleHeight;
    m_splitter->setGeometry(forms::splitterPosition(m_design.formByte(onTab), width()) - 1, top * m_zoom, 2,
                            height() - top * m_zoom);
    m_splitter->raise();
    update();
}

void FormScreen::PutValue(const RowPlace& place) {
    const forms::FormGeometry geometry = m_design.geometry();
    const Cell& shown = cell(place);
    const bool isThere = geometry.isShown(place) && !forms::isFree(m_design.item(place));
    const bool isText = isThere && forms::isStaticText(m_design.item(place));
    shown.label->setVisible(isThere);
    shown.value->setVisible(isThere && !isText);
    if (!isThere)
        return;
    const model::FormItem& item = m_design.item(place);
    const auto put = [this](QLabel& label, const forms::ItemSettings& look, const QString& text,
                            const forms::Box& box) {
        QPalette palette;
        palette.setColor(QPalette::Window, colourOf(look.back));
        palette.setColor(QPalette::WindowText, colourOf(look.fore));
        label.setPalette(palette);
        label.setFont(handheldFont(look.font, m_zoom));
        label.setText(text);
        label.setAlignment(alignmentOf(look.alignment));
        label.setGeometry(rectOf({box.x, box.y, box.width, box.height - 1}));
    };
    put(*shown.label, forms::settingsOf(item, Side::Label), toQt(forms::shownLabel(item)),
        geometry.label(place, isText));
    put(*shown.value, forms::settingsOf(item, Side::Value), textOf(m_design.shownValue(place)),
        geometry.value(place));
}

void FormScreen::showTabs() {
    const QSignalBlocker quiet(m_strip);
    const forms::FormBuilder& builder = m_design.builder();
    while (m_strip->count() > builder.tabs)
        m_strip->removeTab(m_strip->count() - 1);
    while (m_strip->count() < builder.tabs)
        m_strip->addTab({});
    for (int tab = 1; tab <= builder.tabs; ++tab)
        m_strip->setTabText(tab - 1, toQt(forms::tabCaption(builder, tab)));
    m_strip->setVisible(builder.tabs > 0);
    m_tabArea->setVisible(builder.tabs > 0);
    if (builder.tabs == 0)
        return;
    m_strip->setCurrentIndex(m_design.tabInView() - 1);
    m_strip->setFont(handheldFont(0, m_zoom));
    const forms::Box strip = m_design.geometry().strip();
    m_strip->setGeometry(rectOf(strip));
    m_tabArea->setGeometry(0, (strip.y + strip.height) * m_zoom, width(),
                           height() - (strip.y + strip.height) * m_zoom);
}

// A frame round the selected row, and a line under the side of it that is selected.
void FormScreen::showSelection() {
    const auto& selection = m_design.selection();
    m_selected->setVisible(selection.has_value());
    m_side->setVisible(selection.has_value());
    if (!selection)
        return;
    const forms::FormGeometry geometry = m_design.geometry();
    const bool isText = forms::isStaticText(m_design.item(selection->place));
    const forms::Box side =
        selection->side == Side::Label ? geometry.label(selection->place, isText) : geometry.value(selection->place);
    m_selected->setGeometry(rectOf(geometry.row(selection->place)));
    m_side->setGeometry(rectOf({side.x, side.y + side.height - 2, side.width, 2}));
    m_selected->raise();
    m_side->raise();
}

void FormScreen::showHelp() {
    m_helpBase->hide();
    m_helpTab->hide();
    const auto& selection = m_design.selection();
    if (!selection || m_design.help().empty())
        return;
    QToolButton* button = selection->place.onTab ? m_helpTab : m_helpBase;
    const QRect row = rectOf(m_design.geometry().row(selection->place));
    button->setGeometry(row.right() - row.height(), row.top(), row.height(), row.height() - m_zoom);
    button->show();
    button->raise();
}

void FormScreen::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.fillRect(rect(), kPaper);
    painter.fillRect(rectOf({0, 0, forms::kScreenWidth, forms::kTitleHeight - 1}), kTitle);
    painter.setPen(kPaper);
    painter.setFont(handheldFont(1, m_zoom));
    painter.drawText(rectOf({3, 0, forms::kScreenWidth - 6, forms::kTitleHeight - 1}),
                     Qt::AlignVCenter | Qt::AlignLeft, tr("Record"));
    const int screen = forms::kScreenHeight * m_zoom;
    if (height() > screen)
        painter.fillRect(0, screen, width(), height() - screen, kHidden); // not on the handheld's screen at once
    const forms::FormGeometry geometry = m_design.geometry();
    painter.setPen(QPen(QColor(0xC0, 0xC4, 0xCC), 1, Qt::DotLine));
    for (const bool onTab : {false, true})
        for (int row = 0; row < forms::kRows; ++row)
            if (geometry.isShown({onTab, row})) {
                const QRect line = rectOf(geometry.row({onTab, row}));
                painter.drawLine(line.bottomLeft(), line.bottomRight());
            }
    painter.setPen(kInk);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

QPoint FormScreen::screenPixel(const QPoint& point) const {
    return {point.x() / m_zoom, point.y() / m_zoom};
}

void FormScreen::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    const QPoint pixel = screenPixel(event->position().toPoint());
    const Hit hit = m_design.geometry().hit(pixel.x(), pixel.y());
    if (hit.what == Hit::What::Splitter && event->button() == Qt::LeftButton) {
        m_splits = true;
        m_splitsTab = hit.place.onTab;
        return;
    }
    if (hit.what != Hit::What::Label && hit.what != Hit::What::Value && hit.what != Hit::What::Splitter)
        return;
    if (event->button() == Qt::LeftButton)
        m_pressed = event->position().toPoint();
    else
        m_design.EditValue(hit.place, hit.what == Hit::What::Value ? Side::Value : Side::Label);
}

void FormScreen::mouseMoveEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    if (m_splits) {
        emit splitterMoved(m_splitsTab, point.x(), width());
        return;
    }
    const QPoint pixel = screenPixel(point);
    const Hit hit = m_design.geometry().hit(pixel.x(), pixel.y());
    setCursor(hit.what == Hit::What::Splitter ? Qt::SplitHCursor : Qt::ArrowCursor);
    if (m_pressed && (point - *m_pressed).manhattanLength() >= QApplication::startDragDistance())
        startDrag();
}

void FormScreen::mouseReleaseEvent(QMouseEvent* event) {
    const bool pressed = m_pressed.has_value();
    m_pressed.reset();
    if (std::exchange(m_splits, false) || !pressed)
        return;
    const QPoint pixel = screenPixel(event->position().toPoint());
    const Hit hit = m_design.geometry().hit(pixel.x(), pixel.y());
    if (hit.what == Hit::What::Label || hit.what == Hit::What::Value)
        emit clicked(hit.place, hit.what == Hit::What::Value ? Side::Value : Side::Label);
}

void FormScreen::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void FormScreen::startDrag() {
    const QPoint pixel = screenPixel(*m_pressed);
    const auto place = m_design.geometry().rowAt(pixel.x(), pixel.y());
    m_pressed.reset();
    if (!place || forms::isFree(m_design.item(*place)))
        return;
    auto* carried = new QMimeData;
    carried->setData(QString::fromLatin1(kRowMime),
                     QByteArray::number(place->row + (place->onTab ? forms::kRows : 0)));
    auto* drag = new QDrag(this);
    drag->setMimeData(carried);
    drag->setPixmap(grab(rectOf(m_design.geometry().row(*place))));
    drag->exec(Qt::MoveAction);
}

void FormScreen::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_design.selection())
        return;
    QMenu menu(this);
    menu.setObjectName(m_design.selection()->place.onTab ? QStringLiteral("mnuTabField")
                                                         : QStringLiteral("mnuBaseField"));
    QAction* clear = menu.addAction(tr("&Clear Field"));
    clear->setEnabled(m_design.hasItem());
    QAction* help = menu.addAction(tr("Popup &Help..."));
    help->setEnabled(m_design.limits().help);
    const QPoint place = event->reason() == QContextMenuEvent::Mouse
                             ? event->globalPos()
                             : mapToGlobal(rectOf(m_design.geometry().row(m_design.selection()->place)).center());
    const QAction* chosen = menu.exec(place);
    if (chosen == clear)
        emit clearWanted();
    else if (chosen == help)
        emit helpWanted();
}

std::optional<RowPlace> FormScreen::placeFor(const QDropEvent& event) const {
    const QMimeData* carried = event.mimeData();
    if (!carried->hasFormat(QString::fromLatin1(kFieldMime)) && !carried->hasFormat(QString::fromLatin1(kRowMime)))
        return std::nullopt;
    const QPoint pixel = screenPixel(event.position().toPoint());
    return m_design.geometry().rowAt(pixel.x(), pixel.y());
}

void FormScreen::markDrop(std::optional<RowPlace> place) {
    m_drop = place;
    m_landing->setVisible(place.has_value());
    if (!place)
        return;
    m_landing->setGeometry(rectOf(m_design.geometry().row(*place)));
    m_landing->raise();
}

void FormScreen::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
    event->accept(); // the next row may take it
}

void FormScreen::dragMoveEvent(QDragMoveEvent* event) {
    markDrop(placeFor(*event));
    event->setAccepted(m_drop.has_value());
}

void FormScreen::dragLeaveEvent(QDragLeaveEvent*) {
    markDrop(std::nullopt);
}

void FormScreen::dropEvent(QDropEvent* event) {
    const auto place = placeFor(*event);
    markDrop(std::nullopt);
    if (!place)
        return;
    event->acceptProposedAction();
    const QMimeData* carried = event->mimeData();
    if (carried->hasFormat(QString::fromLatin1(kFieldMime))) {
        emit fieldDropped(*place, carried->data(QString::fromLatin1(kFieldMime)).toInt());
        return;
    }
    const int row = carried->data(QString::fromLatin1(kRowMime)).toInt();
    const RowPlace from{row >= forms::kRows, row % forms::kRows};
    if (m_design.geometry().isShown(from))
        emit rowDropped(from, *place);
}

void FormScreen::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    emit designKey(event);
    if (!event->isAccepted())
        QFrame::keyPressEvent(event);
}

// A dialog takes Return for its default button otherwise.
bool FormScreen::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Delete || key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)
            event->accept();
    }
    return QFrame::event(event);
}

} // namespace tallybook::desktop
