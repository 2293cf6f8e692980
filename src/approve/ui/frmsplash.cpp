#include "approve/ui/frmsplash.h"

#include "approve/messages.h"
#include "frame/messages.h"
#include "frame/programinfo.h"
#include "frame/translation.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/statuslabelsink.h"
#include "frame/ui/translateform.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace fx {

FrmSplash::FrmSplash(bool batchMode, QWidget *parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint), m_batchMode(batchMode), m_timer(new QTimer(this)),
      m_status(new QLabel(this))
{
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(ProgramTitle());
    setProperty(NoTranslateProperty, true);

    auto *frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    frame->setFrameShape(QFrame::Box);
    auto *product = new QLabel(QString::fromLatin1(msg::CaptionBase), frame);
    product->setObjectName(QStringLiteral("lblProductName"));
    product->setProperty(NoTranslateProperty, true);
    QFont big = product->font();
    big.setPointSize(big.pointSize() * 2);
    big.setBold(true);
    product->setFont(big);
    auto *version = new QLabel(TranslateText(ArgForm(msg::VersionText, {ProgramVersion()})), frame);
    version->setObjectName(QStringLiteral("lblVersion"));
    version->setProperty(NoTranslateProperty, true);
    auto *copyright = new QLabel(QString::fromLatin1(msg::AboutCopyright), frame);
    copyright->setObjectName(QStringLiteral("lblCopyright"));
    m_status->setParent(frame);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_status->setText(QString::fromLatin1(msg::SplashStarting));
    m_status->setProperty(NoTranslateProperty, true);

    auto *inner = new QVBoxLayout(frame);
    inner->setContentsMargins(24, 24, 24, 16);
    inner->addWidget(product);
    inner->addWidget(version);
    inner->addSpacing(24);
    inner->addWidget(copyright);
    inner->addWidget(m_status);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(frame);
    setMinimumWidth(420);

    m_sink = std::make_unique<StatusLabelSink>(m_status);

    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(WaitMilliseconds());
    connect(m_timer, &QTimer::timeout, this, [this] { Dispatch(); });
}

FrmSplash::~FrmSplash() = default;

void FrmSplash::Show()
{
    if (m_batchMode)
        return;
    TranslateForm(this);
    adjustSize();
    // The splash stands in the middle of the screen, never where it was last moved to.
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    show();
    QCoreApplication::processEvents();
}

void FrmSplash::ForceUnload()
{
    m_forced = true;
    m_timer->stop();
    hide();
}

void FrmSplash::Start(std::function<void()> dispatch)
{
    m_dispatch = std::move(dispatch);
    m_forced = false;
    m_timer->start(WaitMilliseconds());
}

int FrmSplash::WaitMilliseconds() const
{
    return m_batchMode ? 1000 : 3000;
}

void FrmSplash::closeEvent(QCloseEvent *event)
{
    if (!m_forced)
        Dispatch();
    event->accept();
}

void FrmSplash::mousePressEvent(QMouseEvent *)
{
    close();
}

void FrmSplash::Dispatch()
{
    // The timer and a click may both arrive: the main window is shown once only.
    if (m_dispatched || m_forced || !m_dispatch)
        return;
    m_dispatched = true;
    m_timer->stop();
    hide();
    const std::function<void()> dispatch = std::move(m_dispatch);
    m_dispatch = nullptr;
    RunShowingFailure("frmSplash::Dispatch", dispatch);
}

} // namespace fx
