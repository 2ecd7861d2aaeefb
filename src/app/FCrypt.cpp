#include "app/FCrypt.h"

#include "app/CommandLine.h"
#include "app/DecryptPage.h"
#include "app/EncryptPage.h"
#include "app/PassphraseArea.h"
#include "app/TextPage.h"
#include "app/Theme.h"
#include "app/WindowChrome.h"
#include "app/WorkingPanel.h"
#include "common/LineBreaks.h"
#include "controls/LightTab.h"
#include "controls/ucShape.h"
#include "i18n/Catalogue.h"
#include "i18n/LocaliseForm.h"

#include <QCloseEvent>
#include <QMouseEvent>
#include <QWindow>

namespace kelvora {
namespace {

// The page the window shows when the command line names none.
constexpr int kStartTab = FCrypt::kTextTab;

} // namespace

FCrypt::FCrypt(MessageService& messages, RandomSource& random, int languageOffset, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), m_context{messages, random,
                                                                       languageOffset} {
    BuildWindow();
    m_tabStr->SetActiveTab(kStartTab);
}

FCrypt::~FCrypt() = default;

void FCrypt::Load(const std::string& commandLine, const QString& programName) {
    MarkLanguageFlag(this, m_context.languageOffset);
    Localise();
    DispatchCommandLine(commandLine, programName);
    OnTabFileCryptChange(m_tabFileCrypt->ActiveTab());
    OnTabStrChange(m_tabStr->ActiveTab());
    m_framePwd->Rate();
    setMask(RoundedRegion(size(), theme::kWindowRounding));
    ShowCaption(this, false);
}

void FCrypt::SetLanguage(int languageOffset) {
    m_context.languageOffset = languageOffset;
    MarkLanguageFlag(this, languageOffset);
    Localise();
}

void FCrypt::Localise() {
    LocaliseForm(this, m_context.languageOffset);
    m_tabStr->SetCaption(kFilesTab, m_context.Text(167));
    m_tabStr->SetCaption(kTextTab, m_context.Text(166));
    m_tabFileCrypt->SetCaption(kEncryptTab, m_context.Text(183));
    m_tabFileCrypt->SetCaption(kDecryptTab, m_context.Text(184));
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
        m_decryptPage->SetContainer(QString::fromStdString(command.decryptFile),
                                    QString::fromStdString(command.decryptOutPath));
        ShowPage(kFilesTab, kDecryptTab);
        break;
    case StartRequest::ShowUsage:
        m_context.messages.ShowMessage(
            kUsageTextId,
            QString::fromStdString(FromCrLf(
                GetText(m_context.languageOffset, kUsageTextId, programName.toStdString()))),
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
    m_textPage->hide();
    m_filesPage->hide();
    if (newTab == kFilesTab) {
        m_filesPage->show();
        OnTabFileCryptChange(m_tabFileCrypt->ActiveTab());
    }
    m_textPage->setVisible(newTab == kTextTab);
}

void FCrypt::OnTabFileCryptChange(int newTab) {
    m_encryptPage->setVisible(newTab == kEncryptTab);
    m_decryptPage->setVisible(newTab == kDecryptTab);
}

void FCrypt::SetWorking(bool on) {
    m_working = on;
    m_framePwd->SetWorking(on);
    m_frameW->setVisible(on);
    m_frameW->raise();
    m_textPage->setEnabled(!on);
    m_filesPage->setEnabled(!on);
    if (on) {
        setCursor(Qt::WaitCursor);
        m_frameW->Start();
    } else {
        unsetCursor();
        m_frameW->Stop();
    }
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
    if (m_working) {
        m_frameW->RequestCancel(); // the job ends at its next check, then the window goes
    }
    event->accept();
}

} // namespace kelvora
