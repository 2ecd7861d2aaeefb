#pragma once

#include "about/FrmAbout.h"
#include "app/JobScope.h"
#include "app/MessageService.h"
#include "app/WindowContext.h"
#include "common/Random.h"

#include <QPointer>
#include <QWidget>
#include <array>
#include <string>
#include <vector>

namespace kelvora {

class ControlBox;
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

    FCrypt(MessageService& messages, RandomSource& random, int languageOffset,
           QWidget* parent = nullptr);
    ~FCrypt() override;

    // Load finishes the start: labels the window in its language, carries out the command line
    // (the program's arguments, without its name) and shows the pages it chose, rates the
    // passphrase, gives the window its rounded shape and puts the focus in the first field of
    // the page shown. programName appears in the usage text.
    void Load(const std::vector<std::string>& arguments, const QString& programName);
    // Load with the whole command line as one text.
    void Load(const std::string& commandLine, const QString& programName);

    // OpenPaths does what dropping these paths on the window does: one container opens the
    // decrypt page, anything else goes into the input list of the encrypt page.
    void OpenPaths(const QStringList& paths);

    int LanguageOffset() const { return m_context.languageOffset; }
    // SetLanguage switches the window to another language at once (the flags' click).
    void SetLanguage(int languageOffset);

    // JobHost: the busy state, entered and left through JobScope.
    void SetWorking(bool on) override;
    bool IsWorking() const override { return m_working; }
    WorkingPanel& Working() override { return *m_workingPanel; }

    PassphraseArea& Passphrase() { return *m_passphraseArea; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Building the window (FCryptLayout.cpp).
    void BuildWindow();
    QWidget* BuildHeader();
    QWidget* BuildFilesPage();
    void ConnectControls();

    // Pages, language and window handling (FCrypt.cpp).
    void Localise();
    void NameForScreenReaders();
    void DispatchCommandLine(const std::vector<std::string>& arguments, const QString& programName);
    void FocusFirstField();
    void ShowPage(int strTab, int fileTab);
    void OnPageTabChange(int newTab);
    void OnFileTabChange(int newTab);
    void OnAboutClick();

    WindowContext m_context;
    bool m_working = false;

    ucShape* m_background = nullptr;
    std::array<FlagImage*, 4> m_flags{};
    ControlBox* m_controlBox = nullptr;
    LightTab* m_pageTabs = nullptr;
    LightTab* m_fileTabs = nullptr;
    TextPage* m_textPage = nullptr;
    QWidget* m_filesPage = nullptr;
    EncryptPage* m_encryptPage = nullptr;
    DecryptPage* m_decryptPage = nullptr;
    PassphraseArea* m_passphraseArea = nullptr;
    WorkingPanel* m_workingPanel = nullptr;
    QPointer<FrmAbout> m_about; // the welcome and about window while it is open
};

} // namespace kelvora
