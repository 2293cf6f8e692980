#include "approve/ui/frmabout.h"

#include "approve/messages.h"
#include "approve/ui/namedcontrols.h"
#include "frame/fileops.h"
#include "frame/messagebox.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/registry.h"
#include "frame/translation.h"
#include "frame/ui/eventguard.h"
#include "frame/ui/formplacing.h"
#include "frame/ui/translateform.h"

#include <QFrame>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>

namespace fx {

namespace {

const QString kMsInfoKey = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO");
const QString kSharedToolsKey = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location");

// A missing key or value is no failure here: it only means that the tool is not known.
QString ValueOrEmpty(const QString &keyPath, const QString &valueName)
{
    try {
        return RegGetValue(RegRoot::LocalMachine, keyPath, valueName).text.trimmed();
    } catch (const Failure &) {
        return QString();
    }
}

} // namespace

FrmAbout::FrmAbout(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QString::fromLatin1(msg::AboutCaption));

    auto *title = NamedControl<QLabel>(this, "lblTitle", msg::CaptionBase);
    title->setProperty(NoTranslateProperty, true);
    QFont big = title->font();
    big.setPointSize(big.pointSize() + 4);
    big.setBold(true);
    title->setFont(big);
    auto *version = NamedControl<QLabel>(this, "lblVersion");
    version->setText(TranslateText(ArgForm(msg::VersionText, {ProgramVersion()})));
    version->setProperty(NoTranslateProperty, true);
    auto *copyright = NamedControl<QLabel>(this, "lblCopyright", msg::AboutCopyright);
    auto *line = new QFrame(this);
    line->setObjectName(QStringLiteral("Line1"));
    line->setFrameShape(QFrame::HLine);
    auto *intergraph = NamedControl<QLabel>(this, "lblDisclaimer_0", msg::AboutNoticeIntergraph);
    auto *bentley = NamedControl<QLabel>(this, "lblDisclaimer_1", msg::AboutNoticeBentley);
    auto *microsoft = NamedControl<QLabel>(this, "lblDisclaimer_2", msg::AboutNoticeMicrosoft);
    for (QLabel *notice : {intergraph, bentley, microsoft})
        notice->setWordWrap(true);
    auto *cmdOK = NamedControl<QPushButton>(this, "cmdOK", msg::ButtonOK);
    auto *cmdSysInfo = NamedControl<QPushButton>(this, "cmdSysInfo", msg::AboutSysInfo);
    cmdOK->setDefault(true);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(version);
    layout->addWidget(copyright);
    layout->addWidget(line);
    layout->addWidget(intergraph);
    layout->addWidget(bentley);
    layout->addWidget(microsoft);
    AddButtonRow(layout, {cmdOK, cmdSysInfo});
    setMinimumWidth(420);

    connect(cmdOK, &QPushButton::clicked, this, [this] { accept(); });
    connect(cmdSysInfo, &QPushButton::clicked, this, [] { StartSysInfo(); });

    TranslateForm(this);
    KeepFormPlace(this, objectName());
}

QString FrmAbout::GetSysInfoPath()
{
    QString path = ValueOrEmpty(kMsInfoKey, QStringLiteral("PATH"));
    if (path.isEmpty()) {
        const QString folder = ValueOrEmpty(kSharedToolsKey, QStringLiteral("MSINFO"));
        if (!folder.isEmpty())
            path = folder + QStringLiteral("\\MSINFO32.EXE");
    }
    return path;
}

void FrmAbout::StartSysInfo()
{
    RunShowingFailure("frmAbout::StartSysInfo", [] {
        const QString path = GetSysInfoPath();
        if (path.isEmpty() || !IsFileExists(path) || !QProcess::startDetached(path, {}))
            ShowMessage(QString::fromLatin1(msg::SysInfoUnavailable), MbOk);
    });
}

void FrmAbout::ShowAbout(QWidget *parent)
{
    FrmAbout dialog(parent);
    dialog.exec();
}

} // namespace fx
