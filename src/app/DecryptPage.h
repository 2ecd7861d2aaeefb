#pragma once

#include "files/FileError.h"

#include <QStringList>
#include <QWidget>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace kelvora {

class JobHost;
class PassphraseArea;
struct WindowContext;

// DecryptPage is FrameDecrypt, the decrypt page of the files page: the container to decrypt
// TxtDecrFile (with CmdBrowseDecrFile), the folder to restore into TxtDecrOutPath (with
// CmdBrowseOutPath), Command5 that restores every file, and the result line LblDecrResult
// that says how many files were restored where, with a link that opens the folder.
class DecryptPage : public QWidget {
    Q_OBJECT

public:
    DecryptPage(WindowContext& context, PassphraseArea& passphrase, JobHost& host,
                QWidget* parent = nullptr);

    // SetContainer names the container to decrypt and the folder to restore into.
    void SetContainer(const QString& path, const QString& folder);
    QWidget* FirstField() const;

    // What the last run restored and passed over, for the result line.
    struct Outcome {
        int restored = 0;
        QString folder;
        QStringList refused;
    };

private:
    void OnDecryptClick();
    void OnBrowseFileClick();
    void OnBrowseFolderClick();
    std::optional<FileJobResult> Decrypt(Outcome& outcome);
    void ShowOutcome(const Outcome& outcome);
    void ShowResultLine(const QString& line);

    WindowContext& m_context;
    PassphraseArea& m_passphrase;
    JobHost& m_host;
    QLineEdit* m_txtDecrFile = nullptr;
    QLineEdit* m_txtDecrOutPath = nullptr;
    QPushButton* m_cmdBrowseDecrFile = nullptr;
    QPushButton* m_cmdBrowseOutPath = nullptr;
    QPushButton* m_decryptButton = nullptr;
    QLabel* m_lblDecrResult = nullptr;
};

} // namespace kelvora
