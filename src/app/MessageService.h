#pragma once

#include "i18n/TextIds.h"

#include <QString>
#include <QStringList>
#include <functional>

class QFileDialog;
class QMessageBox;
class QWidget;

namespace kelvora {

// MessageService is the one seam for every modal interaction of the windows: message boxes
// by catalogue id, questions, file and folder choosers, and opening a web address. The
// program uses QtMessageService; tests install a service that records what was shown and
// returns scripted answers, so no test ever blocks on a dialog.
class MessageService {
public:
    enum class Icon { Information, Warning, Critical };
    enum class Answer { Ok, Cancel, Yes, No };

    virtual ~MessageService() = default;

    // ShowMessage shows text (the catalogue text of id, already filled) with an OK button.
    virtual void ShowMessage(int id, const QString& text, Icon icon, const QString& title) = 0;
    // AskOkCancel and AskYesNo ask a question and return the button pressed.
    virtual Answer AskOkCancel(int id, const QString& text, const QString& title) = 0;
    virtual Answer AskYesNo(int id, const QString& text, const QString& title) = 0;

    // File choosers return the chosen path(s), or nothing when the person cancelled.
    virtual QStringList OpenFileNames(const QString& title, const QString& filter,
                                      bool several) = 0;
    virtual QString SaveFileName(const QString& title, const QString& filter,
                                 const QString& suggested) = 0;
    virtual QString ExistingFolder(const QString& title) = 0;

    // OpenUrl hands a web address to the system's browser.
    virtual void OpenUrl(const QString& url) = 0;
};

// The catalogue ids of the dialogs' buttons.

// LabelButtons gives the OK, Cancel, Yes and No buttons of a box their catalogue texts, so
// that no English button appears in a window of another language.
void LabelButtons(QMessageBox& box, int languageOffset);
// LabelFileDialog does the same for a file or folder chooser: acceptId names its accept
// button, Cancel is the catalogue's.
void LabelFileDialog(QFileDialog& dialog, int languageOffset, int acceptId);

// QtMessageService shows real Qt dialogs over parent, their buttons in the language that
// languageOffset answers at the time (English until one is given).
class QtMessageService final : public MessageService {
public:
    explicit QtMessageService(QWidget* parent = nullptr) : m_parent(parent) {}
    void setParent(QWidget* parent) { m_parent = parent; }
    void SetLanguageSource(std::function<int()> languageOffset) {
        m_languageOffset = std::move(languageOffset);
    }

    void ShowMessage(int id, const QString& text, Icon icon, const QString& title) override;
    Answer AskOkCancel(int id, const QString& text, const QString& title) override;
    Answer AskYesNo(int id, const QString& text, const QString& title) override;
    QStringList OpenFileNames(const QString& title, const QString& filter, bool several) override;
    QString SaveFileName(const QString& title, const QString& filter,
                         const QString& suggested) override;
    QString ExistingFolder(const QString& title) override;
    void OpenUrl(const QString& url) override;

private:
    int Language() const;
    int RunFileDialog(QFileDialog& dialog, int acceptId) const;

    QWidget* m_parent;
    std::function<int()> m_languageOffset;
};

} // namespace kelvora
