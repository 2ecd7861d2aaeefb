#include "app/MessageService.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QUrl>

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

} // namespace

void QtMessageService::ShowMessage(int, const QString& text, Icon icon, const QString& title) {
    QMessageBox box(ToQtIcon(icon), TitleOrDefault(title), text, QMessageBox::Ok, m_parent);
    box.exec();
}

MessageService::Answer QtMessageService::AskOkCancel(int, const QString& text,
                                                     const QString& title) {
    QMessageBox box(QMessageBox::Question, TitleOrDefault(title), text,
                    QMessageBox::Ok | QMessageBox::Cancel, m_parent);
    return box.exec() == QMessageBox::Ok ? Answer::Ok : Answer::Cancel;
}

MessageService::Answer QtMessageService::AskYesNo(int, const QString& text, const QString& title) {
    QMessageBox box(QMessageBox::Question, TitleOrDefault(title), text,
                    QMessageBox::Yes | QMessageBox::No, m_parent);
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

QStringList QtMessageService::OpenFileNames(const QString& title, const QString& filter,
                                            bool several) {
    if (several) {
        return QFileDialog::getOpenFileNames(m_parent, title, QString(), filter);
    }
    const QString one = QFileDialog::getOpenFileName(m_parent, title, QString(), filter);
    return one.isEmpty() ? QStringList() : QStringList{one};
}

QString QtMessageService::SaveFileName(const QString& title, const QString& filter,
                                       const QString& suggested) {
    return QFileDialog::getSaveFileName(m_parent, title, suggested, filter);
}

QString QtMessageService::ExistingFolder(const QString& title) {
    return QFileDialog::getExistingDirectory(m_parent, title);
}

void QtMessageService::OpenUrl(const QString& url) {
    QDesktopServices::openUrl(QUrl(url));
}

} // namespace kelvora
