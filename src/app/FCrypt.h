#pragma once

#include "app/JobScope.h"
#include "app/MessageService.h"
#include "app/WindowContext.h"
#include "common/Random.h"

#include <QWidget>
#include <array>
#include <string>

namespace kelvora {

class DecryptPage;
class EncryptPage;
class FlagImage;
class LightTab;
class PassphraseArea;
class TextPage;
class WorkingPanel;
class ucShape;

// FCrypt is the program's main window: a borderless window with rounded corners holding the
// files page (Frame_1, with the encrypt and decrypt pages under the tab strip TabFileCrypt) and
// the text page (Frame_0) under the tab strip TabStr, the passphrase area FramePwd that serves
// every page, and the working panel FrameW of the busy state. It keeps the header, the tabs,
// the start, the language and the window handling, and connects its parts.
class FCrypt : public QWidget, public JobHost {
    Q_OBJECT

public:
    // The tabs of TabStr and TabFileCrypt.
    static constexpr int kFilesTab = 0;
    static constexpr int kTextTab = 1;
    static constexpr int kEncryptTab = 0;
    static constexpr int kDecryptTab = 1;

    // The usage text of "/?" ("%s" is the program's name).
    static constexpr int kUsageTextId = 505;

    FCrypt(MessageService& messages, RandomSource& random, int languageOffset,
           QWidget* parent = nullptr);
    ~FCrypt() override;

    // Load finishes the start: labels the window in its language, carries out the command line
    // (the whole argument string as one text) and shows the pages it chose, rates the empty
    // passphrase and gives the window its rounded shape. programName appears in the usage text.
    void Load(const std::string& commandLine, const QString& programName);

    int LanguageOffset() const { return m_context.languageOffset; }
    // SetLanguage switches the window to another language at once (the flags' click).
    void SetLanguage(int languageOffset);

    // JobHost: the busy state, entered and left through JobScope.
    void SetWorking(bool on) override;
    bool IsWorking() const override { return m_working; }
    WorkingPanel& Working() override { return *m_frameW; }

    PassphraseArea& Passphrase() { return *m_framePwd; }

    // The file list and output name of "/setEncrFiles", kept for the files page.
    const std::string& PendingEncryptArguments() const { return m_pendingEncryptArguments; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // Building the window (FCryptLayout.cpp).
    void BuildWindow();
    QWidget* BuildHeader();
    QWidget* BuildFilesPage();
    void ConnectControls();

    // Pages, language and window handling (FCrypt.cpp).
    void Localise();
    void DispatchCommandLine(const std::string& commandLine, const QString& programName);
    void ShowPage(int strTab, int fileTab);
    void OnTabStrChange(int newTab);
    void OnTabFileCryptChange(int newTab);

    WindowContext m_context;
    bool m_working = false;
    std::string m_pendingEncryptArguments;

    ucShape* m_background = nullptr;
    std::array<FlagImage*, 4> m_flags{};
    LightTab* m_tabStr = nullptr;
    LightTab* m_tabFileCrypt = nullptr;
    TextPage* m_textPage = nullptr;
    QWidget* m_filesPage = nullptr;
    EncryptPage* m_encryptPage = nullptr;
    DecryptPage* m_decryptPage = nullptr;
    PassphraseArea* m_framePwd = nullptr;
    WorkingPanel* m_frameW = nullptr;
};

} // namespace kelvora
