#include "desktop/platform/CProgressBar.h"

namespace tallybook::desktop {

namespace {

constexpr qint64 kPause = 40; // milliseconds between two repaints

} // namespace

CProgressBar::CProgressBar(QWidget* parent) : QProgressBar(parent) {
    setObjectName(QStringLiteral("ProgressBar1"));
    setAccessibleName(tr("Progress"));
    setAlignment(Qt::AlignCenter);
    hide();
}

void CProgressBar::show(const QString& caption, int value, int maximum) {
    if (maximum <= 0) {
        hide();
        m_sincePaint.invalidate();
        return;
    }
    if (isVisible() && m_sincePaint.isValid() && m_sincePaint.elapsed() < kPause)
        return;
    setRange(0, maximum);
    setFormat(caption);
    setValue(value);
    setVisible(true);
    repaint();
    m_sincePaint.start();
}

} // namespace tallybook::desktop
