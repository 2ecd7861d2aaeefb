#include "app/PassphraseArea.h"

#include "app/WindowContext.h"
#include "app/WindowParts.h"
#include "common/Ansi.h"
#include "common/LineBreaks.h"
#include "crypto/KeyRules.h"
#include "tools/PassphraseGenerator.h"
#include "tools/RatingDisplay.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kelvora {
namespace {

constexpr int kCardMargin = 16;

} // namespace

PassphraseArea::PassphraseArea(WindowContext& context, QWidget* parent)
    : QFrame(parent), m_context(context) {
    parts::MakeCard(this, QStringLiteral("FramePwd"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(kCardMargin, 12, kCardMargin, 14);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    QLabel* prompt = parts::Caption(QStringLiteral("Label4"), 149, this, QStringLiteral("prompt"));
    grid->addWidget(prompt, 0, 0, 1, 2);

    m_txtCode = parts::Edit(QStringLiteral("TxtCode"), this, prompt);
    m_txtCode->setStyleSheet(QStringLiteral("lineedit-password-character: 42;")); // hide as "*"
    m_cmdPassgen = parts::Button(QStringLiteral("cmdPassgen"), 155, this);
    grid->addWidget(m_txtCode, 1, 0);
    grid->addWidget(m_cmdPassgen, 1, 1);
    m_chkHPwd = parts::Tag(new QCheckBox(this), QStringLiteral("ChkHPwd"), 158);
    grid->addWidget(m_chkHPwd, 2, 0, 1, 2, Qt::AlignLeft);

    m_rating = new RatingDisplay(this);
    grid->addWidget(m_rating, 3, 0, 1, 2);
    grid->setColumnStretch(0, 1);

    connect(m_cmdPassgen, &QPushButton::clicked, this, &PassphraseArea::OnCmdPassgenClick);
    connect(m_chkHPwd, &QCheckBox::toggled, this, &PassphraseArea::OnChkHPwdClick);
    connect(m_txtCode, &QLineEdit::textChanged, this, &PassphraseArea::Rate);
}

bool PassphraseArea::IsEmpty() const {
    return m_txtCode->text().isEmpty();
}

std::optional<SecretBytes> PassphraseArea::EncryptionKey(int missingMessageId) {
    if (IsEmpty()) {
        m_context.ShowMessage(missingMessageId);
        return std::nullopt;
    }
    const SecretString passphrase(AnsiFromUtf8(m_txtCode->text().toStdString()));
    return MakePassphraseKey(passphrase.str());
}

std::optional<SecretBytes> PassphraseArea::DecryptionKey(int missingMessageId) {
    return EncryptionKey(missingMessageId);
}

void PassphraseArea::Clear() {
    m_txtCode->clear();
}

void PassphraseArea::Rate() {
    const SecretString ansi(AnsiFromUtf8(m_txtCode->text().toStdString()));
    const PassphraseRating rating = PwdBewert(ansi.str());
    m_rating->ShowRating(rating, m_context.Text(rating.sentenceId));
}

void PassphraseArea::SetWorking(bool on) {
    m_rating->TrafficLight()->setVisible(!on);
    setEnabled(!on);
}

void PassphraseArea::OnCmdPassgenClick() {
    const SecretString generated(GenerateRandomPassphrase(m_context.random));
    m_txtCode->setText(QString::fromStdString(FromCrLf(Utf8FromAnsi(generated.str()))));
    m_chkHPwd->setChecked(false);
    m_rating->ShowRating(TopRating(), m_context.Text(kGeneratedPassphraseMessageId));
}

void PassphraseArea::OnChkHPwdClick() {
    m_txtCode->setEchoMode(m_chkHPwd->isChecked() ? QLineEdit::Password : QLineEdit::Normal);
}

} // namespace kelvora
