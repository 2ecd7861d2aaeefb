// The passphrase area and the commands of the text page.
#include "app/FCrypt.h"
#include "common/Ansi.h"
#include "common/Bytes.h"
#include "common/LineBreaks.h"
#include "controls/ProgressBar.h"
#include "crypto/KeyRules.h"
#include "i18n/Catalogue.h"
#include "text/EncryptedText.h"
#include "tools/PassphraseGenerator.h"
#include "tools/RatingDisplay.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace kelvora {
namespace {

std::string AnsiFromBox(const QString& text) {
    return ToCrLf(AnsiFromUtf8(text.toStdString()));
}

QString BoxFromAnsi(std::string_view ansi) {
    return QString::fromStdString(FromCrLf(Utf8FromAnsi(ansi)));
}

// RunningCipher lets cmdCancel reach the cipher of the job in progress, and no longer once
// the job has ended, however it ends.
class RunningCipher {
public:
    RunningCipher(CRijndael*& slot, CRijndael& cipher) : m_slot(slot) { m_slot = &cipher; }
    ~RunningCipher() { m_slot = nullptr; }
    RunningCipher(const RunningCipher&) = delete;
    RunningCipher& operator=(const RunningCipher&) = delete;

private:
    CRijndael*& m_slot;
};

} // namespace

// TextJobObserver shows the cipher's progress on ProgressBar1 and lets the window's events
// run while the cipher works, so the window repaints and cmdCancel can be pressed.
class FCrypt::TextJobObserver final : public JobObserver {
public:
    explicit TextJobObserver(ProgressBar& bar) : m_bar(bar) {}
    void OnProgressRange(std::int64_t maximum) override { m_bar.SetMax(maximum); }
    void OnProgress(std::int64_t position) override { m_bar.SetPosition(position); }
    void LetEventsRun() override { QCoreApplication::processEvents(); }

private:
    ProgressBar& m_bar;
};

void FCrypt::PwdBewert(const QString& passphrase) {
    SecretString ansi(AnsiFromUtf8(passphrase.toStdString()));
    const PassphraseRating rating = kelvora::PwdBewert(ansi.str());
    m_rating->ShowRating(rating, Text(rating.sentenceId));
}

void FCrypt::OnCmdPassgenClick() {
    SecretString generated(GenerateRandomPassphrase(m_random));
    m_txtCode->setText(BoxFromAnsi(generated.str()));
    m_chkHPwd->setChecked(false);
    m_rating->ShowRating(TopRating(), Text(kGeneratedPassphraseMessageId));
}

bool FCrypt::TextInputsGiven() {
    if (m_txtCode->text().isEmpty() || m_txtResults->toPlainText().isEmpty()) {
        ShowMessage(114);
        return false;
    }
    return true;
}

SecretBytes FCrypt::PassphraseKey() const {
    const SecretString passphrase(AnsiFromUtf8(m_txtCode->text().toStdString()));
    return MakePassphraseKey(passphrase.str());
}

std::string FCrypt::AnsiResults() const {
    return AnsiFromBox(m_txtResults->toPlainText());
}

void FCrypt::ShowResults(std::string_view ansiText) {
    m_txtResults->setPlainText(BoxFromAnsi(ansiText));
}

void FCrypt::OnCommand1Click() {
    if (!TextInputsGiven()) {
        return;
    }
    if (m_messages.AskOkCancel(190, Text(190), kTextReminderTitle) != MessageService::Answer::Ok) {
        return;
    }
    WorkingGuard working(*this);
    const std::string plain = WithBanner(m_languageOffset, AnsiResults());
    ShowResults(plain);

    TextJobObserver observer(*m_progressBar1);
    CRijndael cipher(&observer);
    const RunningCipher running(m_runningCipher, cipher);
    SecretBytes key = PassphraseKey();
    m_txtCode->clear();

    const TextResult result = EncryptText(cipher, key.bytes(), plain, m_random);
    key = SecretBytes();
    if (result.status == TextStatus::Ok) {
        ShowResults(result.text);
        m_cmdMail->setEnabled(true);
    }
}

void FCrypt::OnCommand2Click() {
    if (!TextInputsGiven()) {
        return;
    }
    WorkingGuard working(*this);
    TextJobObserver observer(*m_progressBar1);
    CRijndael cipher(&observer);
    const RunningCipher running(m_runningCipher, cipher);
    SecretBytes key = PassphraseKey();

    TextResult result = DecryptText(cipher, key.bytes(), AnsiResults());
    if (result.status == TextStatus::NotBlockAligned) {
        ShowMessage(114);
    } else if (result.status == TextStatus::Ok) {
        ShowResults(UpToFirstNul(result.text));
    }
    Wipe(result.text);
    key = SecretBytes();
    m_txtCode->clear();
}

void FCrypt::OnCmdCancelClick() {
    if (m_runningCipher != nullptr) {
        m_runningCipher->Cancel = true;
    }
}

} // namespace kelvora
