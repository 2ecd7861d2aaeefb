#pragma once

#include "app/MessageService.h"
#include "common/JobObserver.h"
#include "common/Random.h"
#include "crypto/CRijndael.h"

#include <QElapsedTimer>
#include <QWidget>
#include <array>
#include <string>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTimer;

namespace kelvora {

class ClickLabel;
class CountAnimation;
class FlagImage;
class Lamp;
class LightTab;
class ProgressBar;
class RatingDisplay;
class ucShape;

// FCrypt is the program's main window: a borderless window with rounded corners holding the
// files page (Frame_1) and the text page (Frame_0) under the tab strip TabStr, the passphrase
// area FramePwd that serves every page, and the working panel FrameW of the busy state.
// It gathers input, calls the core and shows results; every dialog goes through the
// MessageService it is given.
class FCrypt : public QWidget {
    Q_OBJECT

public:
    // The tabs of TabStr and TabFileCrypt.
    static constexpr int kFilesTab = 0;
    static constexpr int kTextTab = 1;
    static constexpr int kEncryptTab = 0;
    static constexpr int kDecryptTab = 1;

    // The address of the online version of the program.
    static inline const QString kOnlineVersionUrl =
        QStringLiteral("https://www.kelvora.net/crypt/crypt.php");
    // The usage text of "/?" ("%s" is the program's name).
    static constexpr int kUsageTextId = 505;
    // The title of the reminder shown before a text is encrypted.
    static inline const QString kTextReminderTitle = QStringLiteral("Kelvora-Crypt");

    FCrypt(MessageService& messages, RandomSource& random, int languageOffset,
           QWidget* parent = nullptr);
    ~FCrypt() override;

    // Load finishes the start: labels the window in its language, carries out the command line
    // (the whole argument string as one text) and shows the pages it chose, rates the empty
    // passphrase and gives the window its rounded shape. programName appears in the usage text.
    void Load(const std::string& commandLine, const QString& programName);

    int LanguageOffset() const { return m_languageOffset; }
    // SetLanguage switches the window to another language at once (the flags' click).
    void SetLanguage(int languageOffset);

    // SetWorking enters or leaves the busy state; use WorkingGuard to bracket a job.
    void SetWorking(bool on);
    bool IsWorking() const { return m_working; }

    // The file list and output name of "/setEncrFiles", kept for the files page.
    const std::string& PendingEncryptArguments() const { return m_pendingEncryptArguments; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    class TextJobObserver;

    // Building the window (FCryptLayout.cpp).
    void BuildWindow();
    QWidget* BuildHeader();
    QWidget* BuildTextPage();
    QWidget* BuildFilesPage();
    QWidget* BuildPassphraseArea();
    QWidget* BuildWorkingPanel();
    void ConnectControls();

    // Pages, language and window handling (FCrypt.cpp).
    void Localise();
    void DispatchCommandLine(const std::string& commandLine, const QString& programName);
    void ShowPage(int strTab, int fileTab);
    void OnTabStrChange(int newTab);
    void OnTabFileCryptChange(int newTab);
    void OnLblLinkClick();
    void OnChkHPwdClick();
    void OnTmrCountTick();
    QString Text(int germanId, const QString& s = {}) const;
    void ShowMessage(int germanId, MessageService::Icon icon = MessageService::Icon::Information);

    // Passphrase and text commands (FCryptText.cpp).
    void PwdBewert(const QString& passphrase);
    void OnCmdPassgenClick();
    void OnCommand1Click();
    void OnCommand2Click();
    void OnCmdCancelClick();
    // TextInputsGiven shows message 114 unless both the passphrase and the text are there.
    bool TextInputsGiven();
    // PassphraseKey is the single-passphrase key of the text in TxtCode.
    SecretBytes PassphraseKey() const;
    std::string AnsiResults() const;
    void ShowResults(std::string_view ansiText);

    MessageService& m_messages;
    RandomSource& m_random;
    int m_languageOffset;
    bool m_working = false;
    CRijndael* m_runningCipher = nullptr; // the cipher of the job in progress, for cmdCancel
    QElapsedTimer m_workClock;
    std::string m_pendingEncryptArguments;

    ucShape* m_background = nullptr;
    std::array<FlagImage*, 4> m_flags{};
    LightTab* m_tabStr = nullptr;
    LightTab* m_tabFileCrypt = nullptr;
    std::array<QWidget*, 2> m_frames{};
    QWidget* m_encryptPanel = nullptr;
    QWidget* m_decryptPanel = nullptr;
    QPlainTextEdit* m_txtResults = nullptr;
    QPushButton* m_command1 = nullptr;
    QPushButton* m_command2 = nullptr;
    QPushButton* m_cmdMail = nullptr;
    ClickLabel* m_lblLink = nullptr;
    QListWidget* m_lstCryptFiles = nullptr;
    QLineEdit* m_txtEncrFileName = nullptr;
    QLineEdit* m_txtDecrFile = nullptr;
    QLineEdit* m_txtDecrOutPath = nullptr;
    QWidget* m_framePwd = nullptr;
    QLineEdit* m_txtCode = nullptr;
    QCheckBox* m_chkHPwd = nullptr;
    QPushButton* m_cmdPassgen = nullptr;
    RatingDisplay* m_rating = nullptr;
    QWidget* m_frameW = nullptr;
    Lamp* m_pictArbeitampel = nullptr;
    CountAnimation* m_imgCount = nullptr;
    QTimer* m_tmrCount = nullptr;
    ProgressBar* m_progressBar1 = nullptr;
    ProgressBar* m_progressBar2 = nullptr;
    QPushButton* m_cmdCancel = nullptr;
};

// WorkingGuard holds the window in its busy state for its lifetime and restores it on every
// way out of a command, early returns and exceptions included.
class WorkingGuard {
public:
    explicit WorkingGuard(FCrypt& window) : m_window(window) { m_window.SetWorking(true); }
    ~WorkingGuard() { m_window.SetWorking(false); }
    WorkingGuard(const WorkingGuard&) = delete;
    WorkingGuard& operator=(const WorkingGuard&) = delete;

private:
    FCrypt& m_window;
};

} // namespace kelvora
