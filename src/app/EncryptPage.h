#pragma once

#include "files/FileError.h"

#include <QWidget>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kelvora {

class InputListBox;
class JobHost;
class PassphraseArea;
struct WindowContext;

// EncryptPage is FrameEncrypt, the encrypt page of the files page: the options OptFiles and
// OptDirs choose what CmdAdCryptdfile adds to the input list LstCryptFiles, CmdDelCryptFiles
// removes the selected entries, TxtEncrFileName (with CmdBrowseCryptOut) names the output
// container, and Command4 encrypts every entry into it.
class EncryptPage : public QWidget {
    Q_OBJECT

public:
    // The title of the reminder shown before files are encrypted.
    static inline const QString kReminderTitle = QStringLiteral("Kelvora");
    // The title of the dialog that chooses the output container.
    static inline const QString kOutputDialogTitle = QStringLiteral("Kelvora-Crypt");

    EncryptPage(WindowContext& context, PassphraseArea& passphrase, JobHost& host,
                QWidget* parent = nullptr);

    // AddPaths adds files and folders to the list as the Add button does (message 393 once
    // when some were listed already) and proposes an output name while there is none.
    void AddPaths(const QStringList& paths);
    void SetOutputName(const QString& path);
    // ChooseFiles selects OptFiles (after files were dropped on the window).
    void ChooseFiles();
    QWidget* FirstField() const;
    // Localise writes the texts the page composes itself (the list's count and size).
    void Localise();

private:
    void OnAddClick();
    void OnEncryptClick();
    void OnBrowseOutputClick();
    void UpdateListState();
    bool OutputIsAnInput(const QString& output) const;
    // Encrypt runs the job in the busy state; nothing when the passphrase is missing.
    std::optional<FileJobResult> Encrypt(const QString& output, bool replaceAgreed);

    WindowContext& m_context;
    PassphraseArea& m_passphrase;
    JobHost& m_host;
    QRadioButton* m_optFiles = nullptr;
    QRadioButton* m_optDirs = nullptr;
    QPushButton* m_cmdAdd = nullptr;
    QPushButton* m_cmdDel = nullptr;
    InputListBox* m_lstCryptFiles = nullptr;
    QLabel* m_lblListInfo = nullptr;
    QLineEdit* m_txtEncrFileName = nullptr;
    QPushButton* m_cmdBrowseCryptOut = nullptr;
    QPushButton* m_encryptButton = nullptr;
};

} // namespace kelvora
