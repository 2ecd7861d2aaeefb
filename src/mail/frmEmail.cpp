#include "mail/frmEmail.h"

#include "app/Theme.h"
#include "app/WindowParts.h"
#include "common/Ansi.h"
#include "common/LineBreaks.h"
#include "i18n/Catalogue.h"
#include "i18n/LocaliseForm.h"
#include "i18n/TextIds.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvora {
namespace {

std::string AnsiOf(const QString& text) {
    return ToCrLf(AnsiFromUtf8(text.toStdString()));
}

QPlainTextEdit* TextBox(const QString& name, QWidget* parent) {
    auto* box = new QPlainTextEdit(parent);
    box->setObjectName(name);
    box->setTabChangesFocus(true);
    return box;
}

} // namespace

frmEmail::frmEmail(MessageService& messages, int languageOffset, QWidget* parent)
    : QWidget(parent, Qt::Window), m_messages(messages), m_languageOffset(languageOffset),
      m_network(new QNetworkAccessManager(this)) {
    BuildWindow();
    LocaliseForm(this, languageOffset);
    SetSending(false);
}

void frmEmail::BuildWindow() {
    setObjectName(QStringLiteral("frmEmail"));
    setProperty("Tag", QStringLiteral("#%1").arg(kMailTitle));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(theme::StyleSheet() + QStringLiteral("#frmEmail { background: %1; }"
                                                       "QLabel[role=\"warning\"] { color: #B03A2E;"
                                                       " font-weight: bold; }")
                                            .arg(theme::kWindow.name()));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(22, 18, 22, 18);
    layout->setSpacing(10);
    // Each label stands above its box, so long translations take the width they need: the
    // sender's name and address side by side, the recipient's address below across both.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(14);
    grid->setVerticalSpacing(4);
    const auto addField = [this, grid](int row, int column, int span, const QString& labelName,
                                       int labelId, QLineEdit*& edit, const QString& editName) {
        QLabel* label = parts::Caption(labelName, labelId, this, QStringLiteral("prompt"));
        edit = parts::Edit(editName, this, label);
        grid->addWidget(label, row, column, 1, span, Qt::AlignBottom);
        grid->addWidget(edit, row + 1, column, 1, span);
    };
    addField(0, 0, 1, QStringLiteral("lblsenderName"), kSenderNameCaption, m_txtSender,
             QStringLiteral("TxtSender"));
    addField(0, 1, 1, QStringLiteral("Label1"), kSenderAddressCaption, m_txtAdrSender,
             QStringLiteral("TxtAdrSender"));
    grid->setRowMinimumHeight(2, 6);
    addField(3, 0, 2, QStringLiteral("Label3"), kRecipientAddressCaption, m_txtReceipAdr,
             QStringLiteral("txtReceipAdr"));
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid);

    QLabel* lblMsg = parts::Caption(QStringLiteral("LblMsg"), kMailMessageCaption, this,
                                    QStringLiteral("prompt"));
    m_textMsg = TextBox(QStringLiteral("TextMsg"), this);
    m_textMsg->setFixedHeight(90);
    lblMsg->setBuddy(m_textMsg);
    layout->addWidget(lblMsg);
    layout->addWidget(m_textMsg);
    layout->addWidget(parts::Caption(QStringLiteral("lblWarn"), kNoPassphraseInMailWarning, this,
                                     QStringLiteral("warning")));

    QLabel* lblCrypt = parts::Caption(QStringLiteral("LblCrypt"), kEncryptedTextCaption, this);
    m_txtCrypt = TextBox(QStringLiteral("TxtCrypt"), this);
    m_txtCrypt->setReadOnly(true);
    QFont mono(QStringLiteral("DejaVu Sans Mono"));
    mono.setStyleHint(QFont::Monospace);
    mono.setPointSize(9);
    m_txtCrypt->setFont(mono);
    lblCrypt->setBuddy(m_txtCrypt);
    layout->addWidget(lblCrypt);
    layout->addWidget(m_txtCrypt, 1);

    auto* buttons = new QHBoxLayout;
    m_lblSending =
        parts::Caption(QStringLiteral("LblSending"), kSendingText, this, QStringLiteral("hint"));
    m_cmdSend = parts::Button(QStringLiteral("cmdSend"), kSendButtonText, this, true);
    m_cmdCancel = parts::Button(QStringLiteral("cmdCancel"), kCancelButtonId, this);
    buttons->addWidget(m_lblSending);
    buttons->addStretch();
    buttons->addWidget(m_cmdSend);
    buttons->addWidget(m_cmdCancel);
    layout->addLayout(buttons);
    m_cmdSend->setDefault(true);

    connect(m_cmdSend, &QPushButton::clicked, this, &frmEmail::OnSendClick);
    connect(m_cmdCancel, &QPushButton::clicked, this, &frmEmail::OnCancelClick);
    resize(580, 660);
}

void frmEmail::SetMsg(const QString& msg) {
    m_msg = msg;
    m_txtCrypt->setPlainText(msg);
}

std::optional<MailFields> frmEmail::FieldsToSend() {
    const QString typed[] = {m_txtSender->text(), m_txtAdrSender->text(), m_txtReceipAdr->text(),
                             m_textMsg->toPlainText()};
    if (!IsMailAddress(AnsiOf(typed[1])) || !IsMailAddress(AnsiOf(typed[2]))) {
        ShowMessage(kInvalidAddressText, Text(kInvalidAddressText));
        return std::nullopt;
    }
    for (const QString& field : typed) {
        const AnsiCheck check = CheckAnsi(field.toStdString(), NulRule::Refused);
        if (!check.ok()) {
            ShowMessage(
                kNotSendableText,
                Text(kNotSendableText, QString::fromStdString(DescribeCharacter(*check.first))));
            return std::nullopt;
        }
    }
    MailFields fields{AnsiOf(typed[0]), AnsiOf(typed[1]), AnsiOf(typed[2]), AnsiOf(typed[3]),
                      AnsiOf(m_msg)};
    return fields;
}

void frmEmail::OnSendClick() {
    if (IsSending()) {
        return;
    }
    const std::optional<MailFields> fields = FieldsToSend();
    if (!fields) {
        return;
    }
    const std::optional<std::string> body = MailBody(*fields);
    if (!body) {
        ShowMessage(kMailTooLongText, Text(kMailTooLongText));
        return;
    }
    const std::optional<MailServer> server = ConfiguredMailServer();
    if (!server) {
        ShowMessage(kSendErrorText,
                    Text(kSendErrorText) + QStringLiteral(". ") + Text(kConnectionNeededText));
        return;
    }
    const QNetworkRequest request = MailRequest(*server, m_timeout);
    m_network->setProxy(MailProxy(request));
    m_reply = m_network->post(request, QByteArray::fromStdString(*body));
    connect(m_reply, &QNetworkReply::finished, this, &frmEmail::OnReplyFinished);
    SetSending(true);
}

void frmEmail::OnReplyFinished() {
    QNetworkReply* reply = m_reply;
    m_reply = nullptr;
    reply->deleteLater();
    SetSending(false);
    const QByteArray answer = reply->readAll();
    const MailVerdict verdict = JudgeMailAnswer(answer.toStdString());
    switch (verdict.outcome) {
    case MailOutcome::Sent:
        ShowMessage(kMailSentText, Text(kMailSentText));
        close();
        return;
    case MailOutcome::ServerError:
        ShowMessage(kSendErrorText,
                    Text(kSendErrorText) + QStringLiteral(": ") +
                        QString::fromStdString(FromCrLf(Utf8FromAnsi(verdict.serverText))));
        return;
    case MailOutcome::NoConnection:
        break;
    }
    ShowMessage(kSendErrorText,
                Text(kSendErrorText) + QStringLiteral(". ") + Text(kConnectionNeededText));
}

frmEmail::~frmEmail() {
    StopPost();
}

void frmEmail::OnCancelClick() {
    StopPost();
    close();
}

// StopPost ends a post that is still running without judging it: nothing more is shown.
void frmEmail::StopPost() {
    if (QNetworkReply* reply = m_reply) {
        m_reply = nullptr;
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}

// SetSending shows the busy state: the fields and Send rest while the post runs; Cancel
// stays, and ends the post with the window.
void frmEmail::SetSending(bool sending) {
    for (QWidget* field : std::initializer_list<QWidget*>{m_txtSender, m_txtAdrSender,
                                                          m_txtReceipAdr, m_textMsg, m_cmdSend}) {
        field->setEnabled(!sending);
    }
    m_lblSending->setVisible(sending);
    if (sending) {
        setCursor(Qt::BusyCursor);
    } else {
        unsetCursor();
    }
}

QString frmEmail::Text(int germanId, const QString& s) const {
    return QString::fromStdString(GetText(m_languageOffset, germanId, s.toStdString()));
}

void frmEmail::ShowMessage(int germanId, const QString& text) {
    m_messages.ShowMessage(germanId, text, MessageService::Icon::Information, {});
}

} // namespace kelvora
