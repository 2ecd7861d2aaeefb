#include "app/FCrypt.h"

#include "app/CommandLine.h"
#include "app/CountAnimation.h"
#include "app/Theme.h"
#include "app/WindowChrome.h"
#include "common/LineBreaks.h"
#include "controls/LightTab.h"
#include "controls/ProgressBar.h"
#include "controls/ucShape.h"
#include "i18n/Catalogue.h"
#include "i18n/LocaliseForm.h"
#include "tools/RatingDisplay.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

namespace kelvora {
namespace {

// The mail window is not part of the program yet; cmdMail stays hidden until it is.
constexpr bool kMailWindowAvailable = false;

// The page the window shows when the command line names none.
constexpr int kStartTab = FCrypt::kTextTab;

} // namespace

FCrypt::FCrypt(MessageService& messages, RandomSource& random, int languageOffset, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), m_messages(messages), m_random(random),
      m_languageOffset(languageOffset) {
    BuildWindow();
    m_tabStr->SetActiveTab(kStartTab);
}

FCrypt::~FCrypt() = default;

void FCrypt::Load(const std::string& commandLine, const QString& programName) {
    MarkLanguageFlag(this, m_languageOffset);
    Localise();
    DispatchCommandLine(commandLine, programName);
    OnTabFileCryptChange(m_tabFileCrypt->ActiveTab());
    OnTabStrChange(m_tabStr->ActiveTab());
    PwdBewert(m_txtCode->text());
    setMask(RoundedRegion(size(), theme::kWindowRounding));
    ShowCaption(this, false);
}

void FCrypt::SetLanguage(int languageOffset) {
    m_languageOffset = languageOffset;
    MarkLanguageFlag(this, m_languageOffset);
    Localise();
}

void FCrypt::Localise() {
    LocaliseForm(this, m_languageOffset);
    m_tabStr->SetCaption(kFilesTab, Text(167));
    m_tabStr->SetCaption(kTextTab, Text(166));
    m_tabFileCrypt->SetCaption(kEncryptTab, Text(183));
    m_tabFileCrypt->SetCaption(kDecryptTab, Text(184));
}

void FCrypt::DispatchCommandLine(const std::string& commandLine, const QString& programName) {
    const StartCommand command = ParseCommandLine(commandLine);
    switch (command.request) {
    case StartRequest::OpenEncryptPage:
        ShowPage(kFilesTab, kEncryptTab);
        break;
    case StartRequest::OpenDecryptPage:
        ShowPage(kFilesTab, kDecryptTab);
        break;
    case StartRequest::SetEncryptFiles:
        // The input list is filled by the files page, which takes these over once it exists.
        m_pendingEncryptArguments = command.encryptArguments;
        break;
    case StartRequest::SetDecryptFile:
        m_txtDecrFile->setText(QString::fromStdString(command.decryptFile));
        m_txtDecrOutPath->setText(QString::fromStdString(command.decryptOutPath));
        ShowPage(kFilesTab, kDecryptTab);
        break;
    case StartRequest::ShowUsage:
        m_messages.ShowMessage(kUsageTextId,
                               QString::fromStdString(FromCrLf(GetText(
                                   m_languageOffset, kUsageTextId, programName.toStdString()))),
                               MessageService::Icon::Information, QString());
        break;
    case StartRequest::Nothing:
        break;
    }
}

void FCrypt::ShowPage(int strTab, int fileTab) {
    m_tabFileCrypt->SetActiveTab(fileTab);
    m_tabStr->SetActiveTab(strTab);
}

void FCrypt::OnTabStrChange(int newTab) {
    m_frames[0]->hide();
    m_frames[1]->hide();
    if (newTab == kFilesTab) {
        m_frames[1]->show();
        OnTabFileCryptChange(m_tabFileCrypt->ActiveTab());
    }
    const bool text = newTab == kTextTab;
    m_frames[0]->setVisible(text);
    m_command1->setVisible(text);
    m_command2->setVisible(text);
    m_lblLink->setVisible(text);
    m_cmdMail->setVisible(text && kMailWindowAvailable);
}

void FCrypt::OnTabFileCryptChange(int newTab) {
    m_encryptPanel->setVisible(newTab == kEncryptTab);
    m_decryptPanel->setVisible(newTab == kDecryptTab);
}

void FCrypt::OnLblLinkClick() {
    ShowMessage(191);
    m_messages.OpenUrl(kOnlineVersionUrl);
}

void FCrypt::OnChkHPwdClick() {
    m_txtCode->setEchoMode(m_chkHPwd->isChecked() ? QLineEdit::Password : QLineEdit::Normal);
}

void FCrypt::SetWorking(bool on) {
    m_working = on;
    m_rating->TrafficLight()->setVisible(!on);
    m_frameW->setVisible(on);
    m_frameW->raise();
    m_pictArbeitampel->SetLit(on);
    m_frames[0]->setEnabled(!on);
    m_frames[1]->setEnabled(!on);
    m_framePwd->setEnabled(!on);
    if (on) {
        setCursor(Qt::WaitCursor);
        m_progressBar1->SetPosition(0);
        m_progressBar2->SetPosition(0);
        m_workClock.start();
        OnTmrCountTick();
        m_tmrCount->start();
    } else {
        unsetCursor();
        m_tmrCount->stop();
    }
}

void FCrypt::OnTmrCountTick() {
    m_imgCount->Tick(m_workClock.isValid() ? m_workClock.elapsed() / 1000 : 0);
}

QString FCrypt::Text(int germanId, const QString& s) const {
    return QString::fromStdString(GetText(m_languageOffset, germanId, s.toStdString()));
}

void FCrypt::ShowMessage(int germanId, MessageService::Icon icon) {
    m_messages.ShowMessage(germanId, Text(germanId), icon, QString());
}

void FCrypt::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !isMaximized() && windowHandle() != nullptr) {
        windowHandle()->startSystemMove();
    }
    QWidget::mousePressEvent(event);
}

void FCrypt::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_background->setGeometry(rect());
    setMask(RoundedRegion(size(), theme::kWindowRounding));
}

void FCrypt::closeEvent(QCloseEvent* event) {
    if (m_runningCipher != nullptr) {
        m_runningCipher->Cancel = true; // the job ends at its next check, then the window goes
    }
    event->accept();
}

} // namespace kelvora
