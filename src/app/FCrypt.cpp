#include "app/FCrypt.h"

#include "app/Accessibility.h"
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
#include "i18n/TextIds.h"

#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QWindow>

namespace kelvora {
namespace {

// The page the window shows when the command line names none.
constexpr int kStartTab = FCrypt::kFilesTab;

constexpr QLatin1StringView kContainerSuffix(".vexo");

// LocalPaths gives the files a drop carries, or nothing when it carries anything else.
QStringList LocalPaths(const QMimeData* data) {
    QStringList paths;
    if (data == nullptr || !data->hasUrls()) {
        return paths;
    }
    for (const QUrl& url : data->urls()) {
        if (!url.isLocalFile()) {
            return {};
        }
        paths << url.toLocalFile();
    }
    return paths;
}

// Absolute makes a path given on the command line independent of the working folder.
QString Absolute(const std::string& path) {
    return QDir::cleanPath(QFileInfo(QString::fromStdString(path)).absoluteFilePath());
}

bool AllExist(const std::vector<std::string>& paths) {
    return !paths.empty() && std::all_of(paths.begin(), paths.end(), [](const std::string& path) {
        return QFileInfo::exists(QString::fromStdString(path));
    });
}

} // namespace

FCrypt::FCrypt(MessageService& messages, RandomSource& random, int languageOffset, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), m_context{messages, random,
                                                                       languageOffset} {
    InstallAccessibility();
    BuildWindow();
    m_pageTabs->SetActiveTab(kStartTab);
}

FCrypt::~FCrypt() = default;

void FCrypt::Load(const std::string& commandLine, const QString& programName) {
    Load(commandLine.empty() ? std::vector<std::string>() : std::vector{commandLine}, programName);
}

void FCrypt::Load(const std::vector<std::string>& arguments, const QString& programName) {
    MarkLanguageFlag(this, m_context.languageOffset);
    Localise();
    DispatchCommandLine(arguments, programName);
    OnFileTabChange(m_fileTabs->ActiveTab());
    OnPageTabChange(m_pageTabs->ActiveTab());
    m_passphraseArea->Rate();
    setMask(RoundedRegion(size(), theme::kWindowRounding));
    ShowCaption(this, false);
    FocusFirstField();
}

void FCrypt::SetLanguage(int languageOffset) {
    m_context.languageOffset = languageOffset;
    MarkLanguageFlag(this, languageOffset);
    Localise();
    // The keyboard, mail and welcome windows follow, titles included.
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isWindow()) {
            LocaliseForm(child, languageOffset);
        }
    }
    m_passphraseArea->SetLanguage(languageOffset);
    if (m_about) {
        m_about->SetLanguage(languageOffset);
    }
}

void FCrypt::Localise() {
    LocaliseForm(this, m_context.languageOffset);
    m_passphraseArea->Localise();
    m_pageTabs->SetCaption(kFilesTab, m_context.Text(kFilesPageTabText));
    m_pageTabs->SetCaption(kTextTab, m_context.Text(kTextPageTabText));
    m_fileTabs->SetCaption(kEncryptTab, m_context.Text(kEncryptFilesText));
    m_fileTabs->SetCaption(kDecryptTab, m_context.Text(kDecryptFilesText));
    m_encryptPage->Localise();
    NameForScreenReaders();
}

void FCrypt::NameForScreenReaders() {
    for (std::size_t i = 0; i < m_flags.size(); ++i) {
        m_flags[i]->setAccessibleName(m_context.Text(kFirstLanguageNameId + static_cast<int>(i)));
    }
    m_pageTabs->setAccessibleName(m_context.Text(kPagesName));
    m_fileTabs->setAccessibleName(m_context.Text(kFilesPageTabText));
    m_controlBox->setAccessibleName(m_context.Text(kControlBoxTip));
    m_controlBox->setProperty("minimiseName", m_context.Text(kMinimiseName));
    m_controlBox->setProperty("closeName", m_context.Text(kCloseName));
    // Every field is named by its caption, as a reader of the window would name it.
    for (QLabel* label : findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            label->buddy()->setAccessibleName(label->text());
        }
    }
}

void FCrypt::DispatchCommandLine(const std::vector<std::string>& arguments,
                                 const QString& programName) {
    const StartCommand command = ParseArguments(arguments);
    switch (command.request) {
    case StartRequest::OpenEncryptPage:
        ShowPage(kFilesTab, kEncryptTab);
        break;
    case StartRequest::OpenDecryptPage:
        ShowPage(kFilesTab, kDecryptTab);
        break;
    case StartRequest::SetEncryptFiles: {
        QStringList files;
        for (const std::string& file : command.encryptFiles) {
            files << Absolute(file);
        }
        if (!command.encryptOutput.empty()) {
            m_encryptPage->SetOutputName(Absolute(command.encryptOutput));
        }
        m_encryptPage->AddPaths(files);
        ShowPage(kFilesTab, kEncryptTab);
        break;
    }
    case StartRequest::SetDecryptFile:
        m_decryptPage->SetContainer(QString::fromStdString(command.decryptFile),
                                    QString::fromStdString(command.decryptOutPath));
        ShowPage(kFilesTab, kDecryptTab);
        break;
    case StartRequest::OpenTextPage:
        ShowPage(kTextTab, kEncryptTab);
        break;
    case StartRequest::ShowUsage:
        m_context.messages.ShowMessage(
            kUsageTextId,
            QString::fromStdString(FromCrLf(
                GetText(m_context.languageOffset, kUsageTextId, programName.toStdString()))),
            MessageService::Icon::Information, QString());
        break;
    case StartRequest::Nothing:
        // A file manager hands over the files it opens with the program, as a drop would.
        if (AllExist(arguments)) {
            QStringList paths;
            for (const std::string& path : arguments) {
                paths << Absolute(path);
            }
            OpenPaths(paths);
        }
        break;
    }
}

void FCrypt::OpenPaths(const QStringList& paths) {
    if (paths.isEmpty() || m_working) {
        return;
    }
    if (paths.size() == 1 && paths.first().endsWith(kContainerSuffix, Qt::CaseInsensitive)) {
        m_decryptPage->SetContainer(paths.first(), QFileInfo(paths.first()).absolutePath() + u'/');
        ShowPage(kFilesTab, kDecryptTab);
        return;
    }
    m_encryptPage->AddPaths(paths);
    m_encryptPage->ChooseFiles();
    ShowPage(kFilesTab, kEncryptTab);
}

void FCrypt::FocusFirstField() {
    if (m_pageTabs->ActiveTab() == kTextTab) {
        m_textPage->FirstField()->setFocus();
    } else if (m_fileTabs->ActiveTab() == kEncryptTab) {
        m_encryptPage->FirstField()->setFocus();
    } else {
        m_decryptPage->FirstField()->setFocus();
    }
}

void FCrypt::ShowPage(int strTab, int fileTab) {
    m_fileTabs->SetActiveTab(fileTab);
    m_pageTabs->SetActiveTab(strTab);
}

void FCrypt::OnPageTabChange(int newTab) {
    NotifyTabSelected(m_pageTabs, newTab);
    m_textPage->hide();
    m_filesPage->hide();
    if (newTab == kFilesTab) {
        m_filesPage->show();
        OnFileTabChange(m_fileTabs->ActiveTab());
    }
    m_textPage->setVisible(newTab == kTextTab);
    m_passphraseArea->SetSharedSecurityOffered(newTab != kTextTab);
}

void FCrypt::OnFileTabChange(int newTab) {
    NotifyTabSelected(m_fileTabs, newTab);
    m_encryptPage->setVisible(newTab == kEncryptTab);
    m_decryptPage->setVisible(newTab == kDecryptTab);
}

// OnAboutClick shows the welcome and about window, made when it is not open. Its flags
// switch this window's language too, and its Start leads back here.
void FCrypt::OnAboutClick() {
    if (!m_about) {
        m_about =
            new FrmAbout(m_context.messages, m_context.languageOffset, FrmAbout::DrawPanel(), this);
        connect(m_about, &FrmAbout::LanguageChosen, this, &FCrypt::SetLanguage);
        connect(m_about, &FrmAbout::StartRequested, this, [this] {
            raise();
            activateWindow();
        });
    }
    m_about->show();
    m_about->raise();
    m_about->activateWindow();
}

void FCrypt::SetWorking(bool on) {
    m_working = on;
    m_passphraseArea->SetWorking(on);
    m_workingPanel->setVisible(on);
    m_workingPanel->raise();
    m_textPage->setEnabled(!on);
    m_filesPage->setEnabled(!on);
    if (on) {
        setCursor(Qt::WaitCursor);
        m_workingPanel->Start();
    } else {
        unsetCursor();
        m_workingPanel->Stop();
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

void FCrypt::dragEnterEvent(QDragEnterEvent* event) {
    if (!m_working && !LocalPaths(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void FCrypt::dropEvent(QDropEvent* event) {
    const QStringList paths = LocalPaths(event->mimeData());
    if (m_working || paths.isEmpty()) {
        return;
    }
    event->acceptProposedAction();
    OpenPaths(paths);
    FocusFirstField();
}

void FCrypt::closeEvent(QCloseEvent* event) {
    if (m_working) {
        m_workingPanel->RequestCancel(); // the job ends at its next check, then the window goes
    }
    // The keyboard, mail and welcome windows belong to this one and go with it.
    for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isWindow()) {
            child->close();
        }
    }
    event->accept();
}

} // namespace kelvora
