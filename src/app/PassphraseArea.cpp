#include "app/PassphraseArea.h"

#include "app/SharedSecurityPanel.h"
#include "app/WindowContext.h"
#include "app/WindowParts.h"
#include "common/Ansi.h"
#include "common/LineBreaks.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "i18n/TextIds.h"
#include "tools/FrmTast.h"
#include "tools/PassphraseGenerator.h"
#include "tools/RatingDisplay.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kelvora {
namespace {

constexpr int kCardMargin = 16;
constexpr int kGeneratorHiddenKeyPlace = 5;

std::string Utf8Of(const QLineEdit& box) {
    return box.text().toStdString();
}

// UnholdableCharacter names the first character of a passphrase the key cannot hold.
std::optional<QString> UnholdableCharacter(std::string_view utf8) {
    const AnsiCheck check = CheckAnsi(utf8, NulRule::Allowed);
    if (check.ok()) {
        return std::nullopt;
    }
    return QString::fromStdString(DescribeCharacter(*check.first));
}

} // namespace

PassphraseArea::PassphraseArea(WindowContext& context, QWidget* parent)
    : QFrame(parent), m_context(context) {
    parts::MakeCard(this, QStringLiteral("FramePwd"));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(kCardMargin, 12, kCardMargin, 14);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    QLabel* prompt =
        parts::Caption(QStringLiteral("Label4"), kPassphrasePrompt, this, QStringLiteral("prompt"));
    grid->addWidget(prompt, 0, 0, 1, 3);

    m_txtCode = parts::Edit(QStringLiteral("TxtCode"), this, prompt);
    m_txtCode->setStyleSheet(QStringLiteral("lineedit-password-character: 42;")); // hide as "*"
    m_generateButton = parts::Button(QStringLiteral("cmdPassgen"), kCreateRandomText, this);
    grid->addWidget(m_txtCode, 1, 0);
    grid->addWidget(m_generateButton, 1, 1);
    m_keyboardButton = parts::Button(QStringLiteral("cmdTast"), kScreenKeyboardButtonText, this);
    grid->addWidget(m_keyboardButton, 1, 2);
    m_hidePassphrase =
        parts::Tag(new QCheckBox(this), QStringLiteral("ChkHPwd"), kHidePassphraseText);
    m_rating = new RatingDisplay(this);
    grid->addWidget(m_rating, 3, 0, 1, 3);
    m_warnings = new QLabel(this);
    m_warnings->setObjectName(QStringLiteral("LblPwdWarning"));
    m_warnings->setStyleSheet(QStringLiteral("color: #A8461B;"));
    m_warnings->setWordWrap(true);
    m_warnings->hide();
    grid->addWidget(m_warnings, 4, 0, 1, 3);

    m_sharedSecurity = new SharedSecurityPanel(
        *m_txtCode, m_context.messages, [&context] { return context.languageOffset; }, this);
    // The mode buttons share the row of ChkHPwd, so shared mode costs the window little room;
    // the row spans the card, so that the texts of every language fit side by side.
    auto* optionRow = new QHBoxLayout;
    optionRow->addWidget(m_hidePassphrase);
    optionRow->addStretch();
    optionRow->addWidget(m_sharedSecurity->ModeButtons());
    grid->addLayout(optionRow, 2, 0, 1, 3);
    grid->addWidget(m_sharedSecurity, 5, 0, 1, 3);
    grid->setColumnStretch(0, 1);

    connect(m_generateButton, &QPushButton::clicked, this, &PassphraseArea::OnGenerateClick);
    connect(m_hidePassphrase, &QCheckBox::toggled, this, &PassphraseArea::OnHideClick);
    connect(m_keyboardButton, &QPushButton::clicked, this, &PassphraseArea::OnKeyboardClick);
    connect(m_txtCode, &QLineEdit::textChanged, this, &PassphraseArea::Rate);
    Rate(); // no star shows before the first rating
    connect(m_txtCode, &QLineEdit::textChanged, this, &PassphraseArea::ShowWarnings);
}

bool PassphraseArea::IsEmpty() const {
    return m_txtCode->text().isEmpty();
}

std::optional<SecretBytes> PassphraseArea::EncryptionKey(int missingMessageId) {
    if (IsEmpty()) {
        m_context.ShowMessage(missingMessageId);
        return std::nullopt;
    }
    SecretString typed(Utf8Of(*m_txtCode));
    if (const auto character = UnholdableCharacter(typed.str())) {
        m_context.ShowMessage(kUnholdablePassphraseMessageId, *character);
        return std::nullopt;
    }
    const SecretString passphrase(AnsiFromUtf8(typed.str()));
    return MakePassphraseKey(passphrase.str());
}

std::optional<SecretBytes> PassphraseArea::DecryptionKey(int missingMessageId) {
    if (m_sharedSecurity->IsShared()) {
        std::optional<SecretBytes> key = m_sharedSecurity->BuildKey();
        if (key) {
            m_sharedSecurity->ClearSlots();
        }
        return key;
    }
    if (IsEmpty()) {
        m_context.ShowMessage(missingMessageId);
        return std::nullopt;
    }
    const SecretString passphrase(AnsiFromUtf8(Utf8Of(*m_txtCode)));
    return MakePassphraseKey(passphrase.str());
}

void PassphraseArea::Clear() {
    m_txtCode->clear();
}

void PassphraseArea::Rate() {
    const SecretString ansi(AnsiFromUtf8(m_txtCode->text().toStdString()));
    const PassphraseRating rating = PwdBewert(ansi.str());
    m_rating->ShowRating(rating, m_context.Text(rating.sentenceId));
}

void PassphraseArea::ShowWarnings() {
    const SecretString typed(Utf8Of(*m_txtCode));
    QStringList lines;
    if (const auto character = UnholdableCharacter(typed.str())) {
        lines << m_context.Text(kUnholdableCharacterWarningId, *character);
    }
    if (m_txtCode->text().toStdU32String().size() > kKeyBytes) {
        lines << m_context.Text(kOnlyFirst32WarningId);
    }
    m_warnings->setText(lines.join(QLatin1Char('\n')));
    m_warnings->setVisible(!lines.isEmpty());
}

void PassphraseArea::SetSharedSecurityOffered(bool offered) {
    m_sharedSecurity->SetOffered(offered);
}

void PassphraseArea::Localise() {
    ShowWarnings();
    m_sharedSecurity->Localise();
}

void PassphraseArea::SetWorking(bool on) {
    m_rating->TrafficLight()->setVisible(!on);
    setEnabled(!on);
    if (m_keyboard) {
        m_keyboard->setEnabled(!on);
    }
}

void PassphraseArea::SetLanguage(int languageOffset) {
    if (m_keyboard) {
        m_keyboard->SetLanguage(languageOffset);
    }
}

void PassphraseArea::OnGenerateClick() {
    const SecretString generated(GenerateRandomPassphrase(m_context.random));
    m_txtCode->setText(QString::fromStdString(FromCrLf(Utf8FromAnsi(generated.str()))));
    m_hidePassphrase->setChecked(false);
    m_rating->ShowRating(TopRating(), m_context.Text(kGeneratedPassphraseMessageId));
    m_sharedSecurity->HideKeyPlace(kGeneratorHiddenKeyPlace);
}

// OnKeyboardClick opens the screen keyboard, which types into the passphrase box only; a
// second click brings the open one forward.
void PassphraseArea::OnKeyboardClick() {
    if (!m_keyboard) {
        m_keyboard = new FrmTast(*m_txtCode, m_context.languageOffset,
                                 FrmTast::SystemKeyboardLayout(), window());
    }
    m_keyboard->show();
    m_keyboard->raise();
    m_keyboard->activateWindow();
}

void PassphraseArea::OnHideClick() {
    m_txtCode->setEchoMode(m_hidePassphrase->isChecked() ? QLineEdit::Password : QLineEdit::Normal);
}

} // namespace kelvora
