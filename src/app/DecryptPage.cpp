#include "app/DecryptPage.h"

#include "app/BackgroundJob.h"
#include "app/FileErrorMessage.h"
#include "app/JobScope.h"
#include "app/PassphraseArea.h"
#include "app/WindowContext.h"
#include "app/WindowParts.h"
#include "app/WorkingPanel.h"
#include "files/DecryptJob.h"
#include "i18n/TextIds.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <exception>

namespace kelvora {
namespace {

// DecryptAnswers asks, on the window's thread, what to do with files that exist already,
// and notes what the run restored and refused.
class DecryptAnswers final : public FileJobObserver {
public:
    DecryptAnswers(const WindowContext& context, DecryptPage::Outcome& outcome)
        : m_context(context), m_outcome(outcome) {}

    ExistingFileAnswer AskExistingFile(const std::string& path) override {
        const QString shown = QString::fromStdString(path);
        const auto answer = m_context.messages.AskYesNo(
            kOverwriteQuestion, m_context.Text(kOverwriteQuestion, shown), QString());
        return answer == MessageService::Answer::Yes ? ExistingFileAnswer::Overwrite
                                                     : ExistingFileAnswer::AnotherName;
    }
    std::optional<std::string> AskAnotherName(const std::string& path) override {
        const QString chosen = m_context.messages.SaveFileName(m_context.Text(kSaveContentTitle),
                                                               m_context.Filter(kAllFilesFilter),
                                                               QString::fromStdString(path));
        if (chosen.isEmpty()) {
            return std::nullopt; // the file is skipped
        }
        return chosen.toStdString();
    }
    void OnFileDone(std::size_t, const std::string&) override { ++m_outcome.restored; }
    void OnFileRefused(std::size_t, const OmittedEntry& refused) override {
        m_outcome.refused << QString::fromStdString(refused.name);
    }

private:
    const WindowContext& m_context;
    DecryptPage::Outcome& m_outcome;
};

} // namespace

DecryptPage::DecryptPage(WindowContext& context, PassphraseArea& passphrase, JobHost& host,
                         QWidget* parent)
    : QWidget(parent), m_context(context), m_passphrase(passphrase), m_host(host) {
    setObjectName(QStringLiteral("FrameDecrypt"));
    auto* layout = parts::Column(this, 6);
    const parts::BrowseField file =
        parts::Browse(QStringLiteral("LblDecrFile"), kDecryptFileCaption,
                      QStringLiteral("TxtDecrFile"), QStringLiteral("CmdBrowseDecrFile"), this);
    m_txtDecrFile = file.edit;
    m_cmdBrowseDecrFile = file.browse;
    const parts::BrowseField folder =
        parts::Browse(QStringLiteral("LblDecrOutPath"), kOutputFolderCaption,
                      QStringLiteral("TxtDecrOutPath"), QStringLiteral("CmdBrowseOutPath"), this);
    m_txtDecrOutPath = folder.edit;
    m_cmdBrowseOutPath = folder.browse;
    for (const parts::BrowseField& field : {file, folder}) {
        layout->addWidget(field.caption);
        layout->addLayout(field.row);
        layout->addSpacing(8);
    }

    m_lblDecrResult = new QLabel(this);
    m_lblDecrResult->setObjectName(QStringLiteral("LblDecrResult"));
    m_lblDecrResult->setWordWrap(true);
    m_lblDecrResult->setTextFormat(Qt::RichText);
    m_lblDecrResult->setTextInteractionFlags(Qt::TextBrowserInteraction);
    m_lblDecrResult->setOpenExternalLinks(false);
    m_lblDecrResult->hide();
    layout->addWidget(m_lblDecrResult);
    layout->addStretch();

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_decryptButton = parts::Button(QStringLiteral("Command5"), kDecryptFilesText, this, true);
    buttons->addWidget(m_decryptButton);
    layout->addLayout(buttons);

    connect(m_cmdBrowseDecrFile, &QPushButton::clicked, this, &DecryptPage::OnBrowseFileClick);
    connect(m_cmdBrowseOutPath, &QPushButton::clicked, this, &DecryptPage::OnBrowseFolderClick);
    connect(m_decryptButton, &QPushButton::clicked, this, &DecryptPage::OnDecryptClick);
    connect(m_lblDecrResult, &QLabel::linkActivated, this,
            [this](const QString& link) { m_context.messages.OpenUrl(link); });
}

void DecryptPage::SetContainer(const QString& path, const QString& folder) {
    m_txtDecrFile->setText(path);
    m_txtDecrOutPath->setText(folder);
}

QWidget* DecryptPage::FirstField() const {
    return m_txtDecrFile;
}

void DecryptPage::OnBrowseFileClick() {
    const QStringList chosen = m_context.messages.OpenFileNames(
        m_context.Text(kChooseContainerTitle), m_context.Filter(kContainerFilter), false);
    if (!chosen.isEmpty()) {
        SetContainer(chosen.first(), QFileInfo(chosen.first()).absolutePath() + u'/');
    }
}

void DecryptPage::OnBrowseFolderClick() {
    const QString folder =
        m_context.messages.ExistingFolder(m_context.Text(kChooseOutputFolderTitle));
    if (!folder.isEmpty()) {
        m_txtDecrOutPath->setText(folder);
    }
}

void DecryptPage::OnDecryptClick() {
    ShowResultLine({});
    Outcome outcome;
    const std::optional<FileJobResult> result = Decrypt(outcome);
    if (!result) {
        return;
    }
    ShowOutcome(outcome);
    if (result->error != FileError::UnsafeName) { // the result line names those files
        ShowFileError(m_context, *result, m_txtDecrFile->text().toStdString());
    }
}

std::optional<FileJobResult> DecryptPage::Decrypt(Outcome& outcome) {
    JobScope job(m_host);
    const std::optional<SecretBytes> key = m_passphrase.DecryptionKey(kCheckNamesAndPassphraseText);
    if (!key) {
        return std::nullopt;
    }
    if (m_txtDecrFile->text().isEmpty() || m_txtDecrOutPath->text().isEmpty()) {
        m_context.ShowMessage(kCheckNamesAndPassphraseText);
        return std::nullopt;
    }
    outcome.folder = m_txtDecrOutPath->text();
    const DecryptRequest request{m_txtDecrFile->text().toStdString(), outcome.folder.toStdString(),
                                 &*key};
    DecryptAnswers answers(m_context, outcome);
    try {
        return BackgroundJob(job.Observer(), answers).Run([&request](FileJobObserver& observer) {
            return DecryptContainer(request, observer);
        });
    } catch (const std::exception&) { // a container made to exhaust the reader
        return Failure(FileError::DamagedData, 0, 0, request.containerPath);
    }
}

void DecryptPage::ShowOutcome(const Outcome& outcome) {
    if (outcome.restored == 0 && outcome.refused.isEmpty()) {
        return;
    }
    const QString link = QStringLiteral("<a href=\"%1\">%2</a>")
                             .arg(QUrl::fromLocalFile(outcome.folder).toString(QUrl::FullyEncoded),
                                  outcome.folder.toHtmlEscaped());
    QString line = m_context.Text(kRestoredText, link, QString::number(outcome.restored));
    if (!outcome.refused.isEmpty()) {
        line += QStringLiteral("<br>") +
                m_context.Text(kNotRestoredText, outcome.refused.join(QStringLiteral(", ")))
                    .toHtmlEscaped();
    }
    ShowResultLine(line);
}

// ShowResultLine shows the line, or hides the empty label: a label that takes links from the
// keyboard is a Tab stop, and an empty one would be a stop a screen reader cannot name.
void DecryptPage::ShowResultLine(const QString& line) {
    m_lblDecrResult->setText(line);
    m_lblDecrResult->setVisible(!line.isEmpty());
}

} // namespace kelvora
