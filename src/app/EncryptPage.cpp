#include "app/EncryptPage.h"

#include "app/BackgroundJob.h"
#include "app/FileErrorMessage.h"
#include "app/InputListBox.h"
#include "app/JobScope.h"
#include "app/PassphraseArea.h"
#include "app/WindowContext.h"
#include "app/WindowParts.h"
#include "app/WorkingPanel.h"
#include "controls/ProgressBar.h"
#include "files/EncryptJob.h"
#include "i18n/TextIds.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <exception>
#include <filesystem>

namespace kelvora {
namespace {

// EncryptAnswers answers the job's one question: the person agreed to replace the output
// before the job began; a container that appeared since is asked about again.
class EncryptAnswers final : public FileJobObserver {
public:
    EncryptAnswers(const WindowContext& context, bool agreed)
        : m_context(context), m_agreed(agreed) {}
    bool AskReplaceContainer(const std::string& path) override {
        const QString shown = QString::fromStdString(path);
        return m_agreed || m_context.messages.AskYesNo(kOverwriteQuestion,
                                                       m_context.Text(kOverwriteQuestion, shown),
                                                       QString()) == MessageService::Answer::Yes;
    }

private:
    const WindowContext& m_context;
    bool m_agreed;
};

// FolderContainerName proposes "photos.vexo" beside a folder "photos", never inside it.
QString FolderContainerName(const QString& folder) {
    return QDir::cleanPath(QFileInfo(folder).absoluteFilePath()) + QStringLiteral(".vexo");
}

} // namespace

EncryptPage::EncryptPage(WindowContext& context, PassphraseArea& passphrase, JobHost& host,
                         QWidget* parent)
    : QWidget(parent), m_context(context), m_passphrase(passphrase), m_host(host) {
    setObjectName(QStringLiteral("FrameEncrypt"));
    auto* layout = parts::Column(this, 6);
    layout->addWidget(parts::Caption(QStringLiteral("LblEncrHint"), kEncryptFilesHint, this,
                                     QStringLiteral("hint")));

    auto* choose = new QHBoxLayout;
    m_optFiles = parts::Tag(new QRadioButton(this), QStringLiteral("OptFiles"), kFilesOptionText);
    m_optDirs = parts::Tag(new QRadioButton(this), QStringLiteral("OptDirs"), kFoldersOptionText);
    m_optFiles->setChecked(true);
    m_cmdAdd = parts::Button(QStringLiteral("CmdAdCryptdfile"), kAddButtonText, this);
    m_cmdDel = parts::Button(QStringLiteral("CmdDelCryptFiles"), kRemoveButtonText, this);
    choose->addWidget(m_optFiles);
    choose->addWidget(m_optDirs);
    choose->addStretch();
    choose->addWidget(m_cmdAdd);
    choose->addWidget(m_cmdDel);
    layout->addLayout(choose);

    QLabel* listCaption = parts::Caption(QStringLiteral("LblInputFiles"), kInputFilesCaption, this);
    layout->addWidget(listCaption);
    m_lstCryptFiles = new InputListBox(this);
    listCaption->setBuddy(m_lstCryptFiles);
    layout->addWidget(m_lstCryptFiles, 1);
    m_lblListInfo = new QLabel(this);
    m_lblListInfo->setObjectName(QStringLiteral("LblListInfo"));
    m_lblListInfo->setProperty("role", QStringLiteral("hint"));
    layout->addWidget(m_lblListInfo);

    const parts::BrowseField output =
        parts::Browse(QStringLiteral("LblOutputFile"), kOutputFileCaption,
                      QStringLiteral("TxtEncrFileName"), QStringLiteral("CmdBrowseCryptOut"), this);
    m_txtEncrFileName = output.edit;
    m_cmdBrowseCryptOut = output.browse;
    m_encryptButton = parts::Button(QStringLiteral("Command4"), kEncryptFilesText, this, true);
    output.row->addSpacing(12);
    output.row->addWidget(m_encryptButton);
    layout->addWidget(output.caption);
    layout->addLayout(output.row);

    connect(m_cmdAdd, &QPushButton::clicked, this, &EncryptPage::OnAddClick);
    connect(m_cmdDel, &QPushButton::clicked, m_lstCryptFiles, &InputListBox::RemoveSelected);
    connect(m_cmdBrowseCryptOut, &QPushButton::clicked, this, &EncryptPage::OnBrowseOutputClick);
    connect(m_encryptButton, &QPushButton::clicked, this, &EncryptPage::OnEncryptClick);
    connect(m_lstCryptFiles, &InputListBox::Changed, this, &EncryptPage::UpdateListState);
    UpdateListState();
}

QWidget* EncryptPage::FirstField() const {
    return m_lstCryptFiles;
}

void EncryptPage::ChooseFiles() {
    m_optFiles->setChecked(true);
}

void EncryptPage::SetOutputName(const QString& path) {
    m_txtEncrFileName->setText(path);
}

void EncryptPage::Localise() {
    UpdateListState();
}

void EncryptPage::AddPaths(const QStringList& paths) {
    if (paths.isEmpty()) {
        return;
    }
    InputList& list = m_lstCryptFiles->List();
    if (m_txtEncrFileName->text().isEmpty() && QFileInfo(paths.first()).isDir()) {
        m_txtEncrFileName->setText(FolderContainerName(paths.first()));
    }
    list.SetOutputName(m_txtEncrFileName->text().toStdString());
    const bool refused = m_lstCryptFiles->AddPaths(paths, m_host);
    m_txtEncrFileName->setText(QString::fromStdString(list.OutputName()));
    if (refused) {
        m_context.ShowMessage(kAlreadyListedText);
    }
}

void EncryptPage::OnAddClick() {
    if (m_optDirs->isChecked()) {
        const QString folder =
            m_context.messages.ExistingFolder(m_context.Text(kChooseFolderToEncryptTitle));
        AddPaths(folder.isEmpty() ? QStringList() : QStringList{folder});
    } else {
        AddPaths(m_context.messages.OpenFileNames(m_context.Text(kChooseFilesToEncryptTitle),
                                                  m_context.Filter(kAllFilesFilter), true));
    }
}

void EncryptPage::OnBrowseOutputClick() {
    const QString chosen = m_context.messages.SaveFileName(
        kOutputDialogTitle, m_context.Filter(kContainerFilter), m_txtEncrFileName->text());
    if (!chosen.isEmpty()) {
        m_txtEncrFileName->setText(chosen);
    }
}

void EncryptPage::UpdateListState() {
    // The widget's count, not the list's: a folder walk may be adding to the list meanwhile.
    const int count = m_lstCryptFiles->count();
    m_cmdDel->setEnabled(count > 0);
    m_lblListInfo->setText(m_context.Text(
        kListInfoText, m_context.Locale().formattedDataSize(m_lstCryptFiles->TotalBytes()),
        QString::number(count)));
}

bool EncryptPage::OutputIsAnInput(const QString& output) const {
    std::error_code error;
    const std::filesystem::path target(output.toStdString());
    if (!std::filesystem::exists(target, error)) {
        return false;
    }
    for (const InputEntry& entry : m_lstCryptFiles->List().Entries()) {
        if (std::filesystem::equivalent(target, entry.path, error)) {
            return true;
        }
    }
    return false;
}

void EncryptPage::OnEncryptClick() {
    const QString output = m_txtEncrFileName->text();
    const std::vector<InputEntry>& entries = m_lstCryptFiles->List().Entries();
    if (entries.empty() || output.isEmpty()) {
        m_context.ShowMessage(kCheckNamesAndPassphraseText);
        return;
    }
    if (OutputIsAnInput(output)) {
        m_context.messages.ShowMessage(kGeneralErrorId,
                                       m_context.Text(kGeneralErrorId) + u' ' +
                                           m_context.Text(kOutputIsInputText, output),
                                       MessageService::Icon::Critical, QString());
        return;
    }
    const bool exists = QFileInfo::exists(output);
    if (exists &&
        m_context.messages.AskYesNo(kOverwriteQuestion, m_context.Text(kOverwriteQuestion, output),
                                    QString()) != MessageService::Answer::Yes) {
        return;
    }
    if (m_context.messages.AskOkCancel(kRememberPassphraseText,
                                       m_context.Text(kRememberPassphraseText),
                                       kReminderTitle) != MessageService::Answer::Ok) {
        return;
    }
    const std::optional<FileJobResult> result = Encrypt(output, exists);
    if (result && result->ok()) {
        m_context.ShowMessage(kEncryptedFileSavedText, output);
        m_lstCryptFiles->ClearAll();
    } else if (result) {
        ShowFileError(m_context, *result, output.toStdString());
    }
}

std::optional<FileJobResult> EncryptPage::Encrypt(const QString& output, bool replaceAgreed) {
    const std::vector<InputEntry>& entries = m_lstCryptFiles->List().Entries();
    JobScope job(m_host);
    job.Observer().FileBar().SetMax(static_cast<qint64>(entries.size()));
    const std::optional<SecretBytes> key = m_passphrase.EncryptionKey(kCheckNamesAndPassphraseText);
    if (!key) {
        return std::nullopt;
    }
    const EncryptRequest request{entries, output.toStdString(),
                                 &*key,   &m_context.random,
                                 {},      m_lstCryptFiles->List().PassedOver()};
    EncryptAnswers answers(m_context, replaceAgreed);
    try {
        return BackgroundJob(job.Observer(), answers).Run([&request](FileJobObserver& observer) {
            return EncryptFiles(request, observer);
        });
    } catch (const std::exception&) { // no memory left for the job
        return Failure(FileError::WriteFailed, 0, 0, request.outputPath);
    }
}

} // namespace kelvora
