#include "app/TextPage.h"

#include "app/JobScope.h"
#include "app/PassphraseArea.h"
#include "app/WindowChrome.h"
#include "app/WindowContext.h"
#include "app/WindowParts.h"
#include "app/WorkingPanel.h"
#include "common/Ansi.h"
#include "common/LineBreaks.h"
#include "crypto/CRijndael.h"
#include "i18n/Catalogue.h"
#include "i18n/TextIds.h"
#include "mail/frmEmail.h"
#include "text/ArmourFinder.h"
#include "text/EncryptedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvora {
namespace {} // namespace

TextPage::TextPage(WindowContext& context, PassphraseArea& passphrase, JobHost& host,
                   QWidget* parent)
    : QWidget(parent), m_context(context), m_passphrase(passphrase), m_host(host) {
    setObjectName(QStringLiteral("Frame_0"));
    auto* layout = parts::Column(this, 8);
    layout->setContentsMargins(0, 4, 0, 0);
    QLabel* caption = parts::Caption(QStringLiteral("LblText"), kTextBoxCaption, this);
    layout->addWidget(caption);

    m_txtResults = new QPlainTextEdit(this);
    m_txtResults->setObjectName(QStringLiteral("txtResults"));
    caption->setBuddy(m_txtResults);
    QFont mono(QStringLiteral("DejaVu Sans Mono"));
    mono.setStyleHint(QFont::Monospace);
    mono.setPointSize(9);
    m_txtResults->setFont(mono);
    layout->addWidget(m_txtResults, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    m_encryptButton = parts::Button(QStringLiteral("Command1"), kEncryptTextButtonText, this, true);
    m_decryptButton = parts::Button(QStringLiteral("Command2"), kDecryptTextButtonText, this, true);
    // cmdMail hands the encrypted text to the mail window. It is enabled while the box shows
    // the text of the last encryption, so that it never sends anything else.
    m_cmdMail = parts::Button(QStringLiteral("cmdMail"), kSendByMailText, this);
    m_cmdMail->setEnabled(false);
    m_onlineLink = parts::Tag(new ClickLabel(this), QStringLiteral("LblLink"), kOnlineVersionText);
    m_onlineLink->setProperty("role", QStringLiteral("link"));
    m_onlineLink->setCursor(Qt::PointingHandCursor);
    buttons->addWidget(m_encryptButton);
    buttons->addWidget(m_decryptButton);
    buttons->addWidget(m_cmdMail);
    buttons->addStretch();
    buttons->addWidget(m_onlineLink);
    layout->addLayout(buttons);

    connect(m_encryptButton, &QPushButton::clicked, this, &TextPage::OnEncryptClick);
    connect(m_decryptButton, &QPushButton::clicked, this, &TextPage::OnDecryptClick);
    connect(m_onlineLink, &ClickLabel::Clicked, this, &TextPage::OnOnlineLinkClick);
    connect(m_cmdMail, &QPushButton::clicked, this, &TextPage::OnMailClick);
    connect(m_txtResults, &QPlainTextEdit::textChanged, this, [this] {
        m_cmdMail->setEnabled(!m_mailText.isEmpty() && m_txtResults->toPlainText() == m_mailText);
    });
}

QWidget* TextPage::FirstField() const {
    return m_txtResults;
}

bool TextPage::TextInputsGiven() {
    if (m_passphrase.IsEmpty() || m_txtResults->toPlainText().isEmpty()) {
        m_context.ShowMessage(kCheckNamesAndPassphraseText);
        return false;
    }
    return true;
}

std::string TextPage::AnsiResults() const {
    return ToCrLf(AnsiFromUtf8(m_txtResults->toPlainText().toStdString()));
}

std::optional<std::string> TextPage::AnsiTextToEncrypt() {
    SecretString typed(m_txtResults->toPlainText().toStdString());
    const AnsiCheck check = CheckAnsi(typed.str(), NulRule::Refused);
    if (!check.ok()) {
        const QString text = QString::fromStdString(
            GetText(m_context.languageOffset, kUnsupportedInTextQuestionId,
                    DescribeCharacter(*check.first), std::to_string(check.first->position)));
        if (m_context.messages.AskYesNo(kUnsupportedInTextQuestionId, text, QString()) !=
            MessageService::Answer::Yes) {
            return std::nullopt;
        }
    }
    return ToCrLf(AnsiTextFromUtf8(typed.str()));
}

// ArmourToDecrypt takes the encrypted text out of the box, which may hold a whole pasted
// mail: the only one found, or of several the one the cursor stands in (else the first),
// after saying so. A box in which nothing looks like an encrypted text is taken whole.
std::string TextPage::ArmourToDecrypt() {
    std::string text = AnsiResults();
    const std::vector<ArmourBlock> blocks = FindArmourBlocks(text);
    if (blocks.empty()) {
        return text;
    }
    std::size_t chosen = 0;
    if (blocks.size() > 1) {
        const auto line = static_cast<std::size_t>(m_txtResults->textCursor().blockNumber()) + 1;
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            if (blocks[i].firstLine <= line && line <= blocks[i].lastLine) {
                chosen = i;
            }
        }
        m_context.ShowMessage(kSeveralArmoursMessageId, QString::number(blocks.size()));
    }
    return blocks[chosen].base64;
}

void TextPage::ShowResults(std::string_view ansiText) {
    m_txtResults->setPlainText(QString::fromStdString(FromCrLf(Utf8FromAnsi(ansiText))));
}

void TextPage::OnEncryptClick() {
    if (!TextInputsGiven()) {
        return;
    }
    // Everything that can refuse or change the input is settled before anything changes.
    std::optional<SecretBytes> key = m_passphrase.EncryptionKey(kCheckNamesAndPassphraseText);
    if (!key) {
        return;
    }
    std::optional<std::string> text = AnsiTextToEncrypt();
    if (!text || m_context.messages.AskOkCancel(kRememberPassphraseText,
                                                m_context.Text(kRememberPassphraseText),
                                                kTextReminderTitle) != MessageService::Answer::Ok) {
        return;
    }
    JobScope job(m_host);
    SecretString plain(WithBanner(m_context.languageOffset, *text));
    Wipe(*text);
    ShowResults(plain.str());

    CRijndael cipher(&job.Observer());
    job.LinkCancel(cipher.Cancel);
    m_passphrase.Clear();
    const TextResult result = EncryptText(cipher, key->bytes(), plain.str(), m_context.random);
    key.reset();
    if (result.status == TextStatus::Ok) {
        ShowResults(result.text);
        m_mailText = m_txtResults->toPlainText();
        m_cmdMail->setEnabled(true);
    }
}

void TextPage::OnDecryptClick() {
    if (!TextInputsGiven()) {
        return;
    }
    const std::string armour = ArmourToDecrypt();
    // In shared mode this combines the keys, or names the one missing, before the busy state.
    std::optional<SecretBytes> key = m_passphrase.DecryptionKey(kCheckNamesAndPassphraseText);
    if (!key) {
        return;
    }
    TextResult result;
    {
        JobScope job(m_host);
        CRijndael cipher(&job.Observer());
        job.LinkCancel(cipher.Cancel);
        result = DecryptText(cipher, key->bytes(), armour);
    }
    key.reset();
    m_passphrase.Clear();
    if (result.status == TextStatus::NotBlockAligned) {
        m_context.ShowMessage(kCheckNamesAndPassphraseText);
    } else if (result.status == TextStatus::Ok) {
        ShowDecrypted(UpToFirstNul(result.text));
    }
    Wipe(result.text);
}

void TextPage::ShowDecrypted(std::string_view ansiText) {
    // A text that does not start with a banner line was most likely deciphered with a wrong
    // key: the encrypted text stays unless the person wants to see the result anyway.
    if (!StartsWithBanner(ansiText) &&
        m_context.messages.AskYesNo(kNoBannerQuestionId, m_context.Text(kNoBannerQuestionId),
                                    QString()) != MessageService::Answer::Yes) {
        return;
    }
    ShowResults(ansiText);
}

void TextPage::OnOnlineLinkClick() {
    m_context.ShowMessage(kAuthoriseCertificateText);
    m_context.messages.OpenUrl(kOnlineVersionUrl);
}

// OnMailClick hands the text to the mail window, the open one when there is one, so the
// fields typed into it stay.
void TextPage::OnMailClick() {
    if (!m_mail) {
        m_mail = new frmEmail(m_context.messages, m_context.languageOffset, window());
    }
    m_mail->SetMsg(m_mailText);
    m_mail->show();
    m_mail->raise();
    m_mail->activateWindow();
}

} // namespace kelvora
