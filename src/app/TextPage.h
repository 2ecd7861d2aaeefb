#pragma once

#include <QString>
#include <QWidget>
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

    QPlainTextEdit* TextBox() const { return m_txtResults; }

private:
    void OnCommand1Click();
    void OnCommand2Click();
    void OnLblLinkClick();
    // TextInputsGiven shows message 114 unless both the passphrase and the text are there.
    bool TextInputsGiven();
    std::string AnsiResults() const;
    std::string ArmourToDecrypt();
    void ShowResults(std::string_view ansiText);

    WindowContext& m_context;
    PassphraseArea& m_passphrase;
    JobHost& m_host;
    QPlainTextEdit* m_txtResults = nullptr;
    QPushButton* m_command1 = nullptr;
    QPushButton* m_command2 = nullptr;
    QPushButton* m_cmdMail = nullptr;
    ClickLabel* m_lblLink = nullptr;
};

} // namespace kelvora
