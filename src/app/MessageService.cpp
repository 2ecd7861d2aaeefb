#include "app/MessageService.h"

#include "i18n/Catalogue.h"
#include "i18n/TextIds.h"

#include <QAbstractButton>
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QUrl>
#include <array>
#include <utility>

namespace kelvora {
namespace {

QMessageBox::Icon ToQtIcon(MessageService::Icon icon) {
    switch (icon) {
    case MessageService::Icon::Warning:
        return QMessageBox::Warning;
    case MessageService::Icon::Critical:
        return QMessageBox::Critical;
    case MessageService::Icon::Information:
        break;
    }
    return QMessageBox::Information;
}

// The product's boxes carry the program's name when no title is given.
QString TitleOrDefault(const QString& title) {
    return title.isEmpty() ? QStringLiteral("Kelvora") : title;
}

QString ButtonText(int languageOffset, int germanId) {
    return QString::fromStdString(GetText(languageOffset, germanId));
}

QString FirstSelected(const QFileDialog& dialog) {
    const QStringList selected = dialog.selectedFiles();
    return selected.isEmpty() ? QString() : selected.constFirst();
}

} // namespace

void LabelButtons(QMessageBox& box, int languageOffset) {
    constexpr std::array<std::pair<QMessageBox::StandardButton, int>, 4> kButtons = {{
        {QMessageBox::Ok, kOkButtonId},
        {QMessageBox::Cancel, kCancelButtonId},
        {QMessageBox::Yes, kYesButtonId},
        {QMessageBox::No, kNoButtonId},
    }};
    for (const auto& [which, id] : kButtons) {
        if (QAbstractButton* button = box.button(which)) {
            button->setText(ButtonText(languageOffset, id));
        }
    }
}

void LabelFileDialog(QFileDialog& dialog, int languageOffset, int acceptId) {
    // Only Qt's own dialog can be labelled; the platform's speaks the desktop's language.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setLabelText(QFileDialog::Accept, ButtonText(languageOffset, acceptId));
    dialog.setLabelText(QFileDialog::Reject, ButtonText(languageOffset, kCancelButtonId));
}

int QtMessageService::Language() const {
    return m_languageOffset ? m_languageOffset() : kEnglish;
}

int QtMessageService::RunFileDialog(QFileDialog& dialog, int acceptId) const {
    LabelFileDialog(dialog, Language(), acceptId);
    return dialog.exec();
}

void QtMessageService::ShowMessage(int, const QString& text, Icon icon, const QString& title) {
    QMessageBox box(ToQtIcon(icon), TitleOrDefault(title), text, QMessageBox::Ok, m_parent);
    LabelButtons(box, Language());
    box.exec();
}

MessageService::Answer QtMessageService::AskOkCancel(int, const QString& text,
                                                     const QString& title) {
    QMessageBox box(QMessageBox::Question, TitleOrDefault(title), text,
                    QMessageBox::Ok | QMessageBox::Cancel, m_parent);
    LabelButtons(box, Language());
    return box.exec() == QMessageBox::Ok ? Answer::Ok : Answer::Cancel;
}

MessageService::Answer QtMessageService::AskYesNo(int, const QString& text, const QString& title) {
    QMessageBox box(QMessageBox::Question, TitleOrDefault(title), text,
                    QMessageBox::Yes | QMessageBox::No, m_parent);
    LabelButtons(box, Language());
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

QStringList QtMessageService::OpenFileNames(const QString& title, const QString& filter,
                                            bool several) {
    QFileDialog dialog(m_parent, title, QString(), filter);
    dialog.setFileMode(several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    return RunFileDialog(dialog, kOpenButtonId) == QDialog::Accepted ? dialog.selectedFiles()
                                                                     : QStringList();
}

QString QtMessageService::SaveFileName(const QString& title, const QString& filter,
                                       const QString& suggested) {
    QFileDialog dialog(m_parent, title, suggested, filter);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    return RunFileDialog(dialog, kSaveButtonId) == QDialog::Accepted ? FirstSelected(dialog)
                                                                     : QString();
}

QString QtMessageService::ExistingFolder(const QString& title) {
    QFileDialog dialog(m_parent, title);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return RunFileDialog(dialog, kOkButtonId) == QDialog::Accepted ? FirstSelected(dialog)
                                                                   : QString();
}

void QtMessageService::OpenUrl(const QString& url) {
    QDesktopServices::openUrl(QUrl(url));
}

} // namespace kelvora
