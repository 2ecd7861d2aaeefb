#pragma once

#include "mail/frmEmail.h"

#include <QPointer>
#include <QString>
#include <QWidget>
#include <optional>
#include <string>
#include <string_view>

class QPlainTextEdit;
class QPushButton;

namespace kelvora {

class ClickLabel;
class JobHost;
class PassphraseArea;
struct WindowContext;

// TextPage is Frame_0, the text page: the text box txtResults, Command1 (encrypt the text),
// Command2 (decrypt it), cmdMail (send the encrypted text) and the link LblLink to the online
// version.
class TextPage : public QWidget {
    Q_OBJECT

public:
    // The address of the online version of the program.
    static inline const QString kOnlineVersionUrl =
        QStringLiteral("https://www.kelvora.net/crypt/crypt.php");
    // The title of the reminder shown before a text is encrypted.
    static inline const QString kTextReminderTitle = QStringLiteral("Kelvora-Crypt");

    TextPage(WindowContext& context, PassphraseArea& passphrase, JobHost& host,
             QWidget* parent = nullptr);

    QWidget* FirstField() const;

private:
    void OnEncryptClick();
    void OnDecryptClick();
    void OnOnlineLinkClick();
    // OnMailClick opens the mail window with the text of the last encryption.
    void OnMailClick();
    // TextInputsGiven shows message 114 unless both the passphrase and the text are there.
    bool TextInputsGiven();
    std::string AnsiResults() const;
    std::string ArmourToDecrypt();
    // AnsiTextToEncrypt is the text of the box in Windows-1252. When it holds a character the
    // code page lacks, or a NUL, the person is asked first whether "?" may stand in for them;
    // No gives nothing.
    std::optional<std::string> AnsiTextToEncrypt();
    void ShowResults(std::string_view ansiText);
    // ShowDecrypted puts a decrypted text into the box; see OnDecryptClick.
    void ShowDecrypted(std::string_view ansiText);

    WindowContext& m_context;
    PassphraseArea& m_passphrase;
    JobHost& m_host;
    QPlainTextEdit* m_txtResults = nullptr;
    QPushButton* m_encryptButton = nullptr;
    QPushButton* m_decryptButton = nullptr;
    QPushButton* m_cmdMail = nullptr;
    ClickLabel* m_onlineLink = nullptr;
    QString m_mailText;        // the text of the last encryption, as the box showed it
    QPointer<frmEmail> m_mail; // the mail window while it is open
};

} // namespace kelvora
