#pragma once

#include "app/MessageService.h"
#include "mail/MailPost.h"

#include <QNetworkReply>
#include <QPointer>
#include <QWidget>
#include <chrono>

class QLabel;
class QLineEdit;
class QNetworkAccessManager;
class QPlainTextEdit;
class QPushButton;

namespace kelvora {

// frmEmail sends an encrypted text by mail without a mail program: it posts the sender's
// name and address, the recipient's address, an optional clear-text note and the encrypted
// text (Msg) as a form to the product's web server, which sends the mail. The post runs in
// the background with the window's busy state shown; after a failure the window stays open
// with every field as it was, after success it closes.
class frmEmail : public QWidget {
    Q_OBJECT

public:
    frmEmail(MessageService& messages, int languageOffset, QWidget* parent = nullptr);
    ~frmEmail() override;

    // SetMsg hands over the encrypted text to send and shows it.
    void SetMsg(const QString& msg);
    // SetTimeout shortens the wait for a silent server (tests).
    void SetTimeout(std::chrono::milliseconds timeout) { m_timeout = timeout; }
    bool IsSending() const { return m_reply != nullptr; }

private:
    void BuildWindow();
    void OnSendClick();
    void OnCancelClick();
    void OnReplyFinished();
    void StopPost();
    void SetSending(bool sending);
    // FieldsToSend checks the fields and gathers them, or shows why they cannot be sent.
    std::optional<MailFields> FieldsToSend();
    QString Text(int germanId, const QString& s = {}) const;
    void ShowMessage(int germanId, const QString& text);

    MessageService& m_messages;
    int m_languageOffset;
    std::chrono::milliseconds m_timeout = kMailTimeout;
    QString m_msg;
    QNetworkAccessManager* m_network = nullptr;
    QPointer<QNetworkReply> m_reply;

    QLineEdit* m_txtSender = nullptr;
    QLineEdit* m_txtAdrSender = nullptr;
    QLineEdit* m_txtReceipAdr = nullptr;
    QPlainTextEdit* m_textMsg = nullptr;
    QPlainTextEdit* m_txtCrypt = nullptr;
    QLabel* m_lblSending = nullptr;
    QPushButton* m_cmdSend = nullptr;
    QPushButton* m_cmdCancel = nullptr;
};

} // namespace kelvora
