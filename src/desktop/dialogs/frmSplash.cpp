#include "desktop/dialogs/frmSplash.h"

#include "core/shell/Version.h"
#include "desktop/platform/Resources.h"
#include "desktop/platform/Text.h"
#include "ui_frmSplash.h"

#include <QScreen>
#include <QTimer>

namespace tallybook::desktop {

void MakeWindowAlwaysTop(QWidget& window) {
    window.setWindowFlag(Qt::WindowStaysOnTopHint);
}

frmSplash::frmSplash(QWidget* parent)
    : QFrame(parent, Qt::SplashScreen | Qt::FramelessWindowHint), m_ui(std::make_unique<Ui::frmSplash>()) {
    m_ui->setupUi(this);
    MakeWindowAlwaysTop(*this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_ui->lblIcon->setPixmap(icon(QStringLiteral("tallybook")).pixmap(QSize(64, 64), devicePixelRatioF()));
    m_ui->lblName->setText(toQt(shell::kProgramName));
    m_ui->lblVersion->setText(toQt(shell::versionText(shell::programVersion())));
    move(screen()->availableGeometry().center() - rect().center());
}

frmSplash::~frmSplash() = default;

void frmSplash::showFor(int milliseconds) {
    show();
    QTimer::singleShot(milliseconds, this, &QWidget::close);
}

void frmSplash::mousePressEvent(QMouseEvent*) {
    close();
}

} // namespace tallybook::desktop
