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
#include "text/ArmourFinder.h"
#include "text/EncryptedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvora {
namespace {

// The mail window is not part of the program yet; cmdMail stays hidden until it is.
constexpr bool kMailWindowAvailable = false;
constexpr int kMissingInputMessageId = 114;
constexpr int kSeveralArmoursMessageId = 630;

} // namespace

TextPage::TextPage(WindowContext& context, PassphraseArea& passphrase, JobHost& host,
                   QWidget* parent)
    : QWidget(parent), m_context(context), m_passphrase(passphrase), m_host(host) {
    setObjectName(QStringLiteral("Frame_0"));
    auto* layout = parts::Column(this, 8);
    layout->setContentsMargins(0, 4, 0, 0);
    QLabel* caption = parts::Caption(QStringLiteral("LblText"), 165, this);
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
    m_command1 = parts::Button(QStringLiteral("Command1"), 161, this, true);
    m_command2 = parts::Button(QStringLiteral("Command2"), 162, this, true);
    // cmdMail opens the mail window: it is enabled after an encryption and shown once the
    // program has that window.
    m_cmdMail = parts::Button(QStringLiteral("cmdMail"), 181, this);
    m_cmdMail->setEnabled(false);
    m_cmdMail->setVisible(kMailWindowAvailable);
    m_lblLink = parts::Tag(new ClickLabel(this), QStringLiteral("LblLink"), 160);
    m_lblLink->setProperty("role", QStringLiteral("link"));
    m_lblLink->setCursor(Qt::PointingHandCursor);
    buttons->addWidget(m_command1);
    buttons->addWidget(m_command2);
    buttons->addWidget(m_cmdMail);
    buttons->addStretch();
    buttons->addWidget(m_lblLink);
    layout->addLayout(buttons);

    connect(m_command1, &QPushButton::clicked, this, &TextPage::OnCommand1Click);
    connect(m_command2, &QPushButton::clicked, this, &TextPage::OnCommand2Click);
    connect(m_lblLink, &ClickLabel::clicked, this, &TextPage::OnLblLinkClick);
}

bool TextPage::TextInputsGiven() {
    if (m_passphrase.IsEmpty() || m_txtResults->toPlainText().isEmpty()) {
        m_context.ShowMessage(kMissingInputMessageId);
        return false;
    }
    return true;
}

std::string TextPage::AnsiResults() const {
    return ToCrLf(AnsiFromUtf8(m_txtResults->toPlainText().toStdString()));
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

void TextPage::OnCommand1Click() {
    if (!TextInputsGiven()) {
        return;
    }
    if (m_context.messages.AskOkCancel(190, m_context.Text(190), kTextReminderTitle) !=
        MessageService::Answer::Ok) {
        return;
    }
    JobScope job(m_host);
    const std::string plain = WithBanner(m_context.languageOffset, AnsiResults());
    ShowResults(plain);

    CRijndael cipher(&job.Observer());
    job.LinkCancel(cipher.Cancel);
    std::optional<SecretBytes> key = m_passphrase.EncryptionKey(kMissingInputMessageId);
    m_passphrase.Clear();
    if (!key) {
        return;
    }
    const TextResult result = EncryptText(cipher, key->bytes(), plain, m_context.random);
    key.reset();
    if (result.status == TextStatus::Ok) {
        ShowResults(result.text);
        m_cmdMail->setEnabled(true);
    }
}

void TextPage::OnCommand2Click() {
    if (!TextInputsGiven()) {
        return;
    }
    const std::string armour = ArmourToDecrypt();
    JobScope job(m_host);
    CRijndael cipher(&job.Observer());
    job.LinkCancel(cipher.Cancel);
    std::optional<SecretBytes> key = m_passphrase.DecryptionKey(kMissingInputMessageId);
    if (!key) {
        return;
    }
    TextResult result = DecryptText(cipher, key->bytes(), armour);
    if (result.status == TextStatus::NotBlockAligned) {
        m_context.ShowMessage(kMissingInputMessageId);
    } else if (result.status == TextStatus::Ok) {
        ShowResults(UpToFirstNul(result.text));
    }
    Wipe(result.text);
    key.reset();
    m_passphrase.Clear();
}

void TextPage::OnLblLinkClick() {
    m_context.ShowMessage(191);
    m_context.messages.OpenUrl(kOnlineVersionUrl);
}

} // namespace kelvora
