#include "mail/frmEmail.h"

#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "common/Version.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <memory>
#include <tuple>

namespace kelvora {

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

// LoopbackHttpServer is a small HTTP server on 127.0.0.1. It records each complete request as
// it arrived, byte for byte (the head up to the blank line, then the body), and answers it with
// a 200 response carrying the scripted body, or, when the body is empty, not at all.
struct LoopbackHttpServer {
    QTcpServer server;
    QByteArray answer;
    QList<QByteArray> requests;

    explicit LoopbackHttpServer(QByteArray body) : answer(std::move(body)) {
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
            QTcpSocket* socket = server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket,
                             [this, socket, received = std::make_shared<QByteArray>()] {
                                 Read(*socket, *received);
                             });
        });
        server.listen(QHostAddress::LocalHost);
    }
    quint16 Port() const { return server.serverPort(); }

    void Read(QTcpSocket& socket, QByteArray& received) {
        static const QRegularExpression length(u"\r\ncontent-length: *(\\d+)"_s,
                                               QRegularExpression::CaseInsensitiveOption);
        received += socket.readAll();
        const qsizetype headEnd = received.indexOf("\r\n\r\n");
        const QString head = QString::fromLatin1(received.left(headEnd));
        if (headEnd < 0 ||
            received.size() - headEnd - 4 < length.match(head).captured(1).toLongLong()) {
            return;
        }
        requests.append(received);
        if (!answer.isEmpty()) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(answer.size()) +
                         "\r\nConnection: close\r\n\r\n" + answer);
            socket.disconnectFromHost();
        }
    }
};

// The body the fields of Harness::Fill make: only letters and digits pass, a blank is "+",
// ü, ö and ß are their Windows-1252 codes, line breaks are CR LF.
constexpr char kExpectedBody[] =
    "Mode=cryptmobile&mailabsn=Anna+Berg%2DL%FCdke&mailabs=anna%40example%2Eorg"
    "&mailadr=bo%2Eek%40example%2Enet&MailText=Hallo+Bo%2C+sch%F6ne+Gr%FC%DFe%2E%0D%0ABis+bald"
    "&Text=QUJD%0D%0AREVG";

// Harness owns a shown mail window that posts to a server on the loopback port it is given.
struct Harness {
    testing::RecordingMessageService messages;
    QPointer<frmEmail> window;

    explicit Harness(quint16 port, int languageOffset = kEnglish)
        : window(new frmEmail(messages, languageOffset)) {
        qputenv("KELVORA_MAIL_SERVER", "127.0.0.1:" + QByteArray::number(port));
        // The loopback server is reached directly, whatever proxy the machine names.
        for (const char* proxy : {"http_proxy", "HTTP_PROXY", "all_proxy", "ALL_PROXY"}) {
            qunsetenv(proxy);
        }
        window->SetTimeout(300ms);
        window->SetMsg(u"QUJD\nREVG"_s);
        window->show();
    }
    ~Harness() { delete window; }

    template <typename Widget = QWidget> Widget* Find(const char* name) {
        return testing::FindControl<Widget>(window.data(), QString::fromLatin1(name));
    }
    void Fill(const QString& sender = u"anna@example.org"_s,
              const QString& recipient = u"bo.ek@example.net"_s) {
        Find<QLineEdit>("TxtSender")->setText(u"Anna Berg-Lüdke"_s);
        Find<QLineEdit>("TxtAdrSender")->setText(sender);
        Find<QLineEdit>("txtReceipAdr")->setText(recipient);
        Find<QPlainTextEdit>("TextMsg")->setPlainText(u"Hallo Bo, schöne Grüße.\nBis bald"_s);
    }
    void Send() { QTest::mouseClick(Find("cmdSend"), Qt::LeftButton); }
    QString Fields() {
        return QStringList{
            Find<QLineEdit>("TxtSender")->text(), Find<QLineEdit>("TxtAdrSender")->text(),
            Find<QLineEdit>("txtReceipAdr")->text(), Find<QPlainTextEdit>("TextMsg")->toPlainText(),
            Find<QPlainTextEdit>("TxtCrypt")->toPlainText()}
            .join(u'|');
    }
    // Busy is what sending changes: the flag, Send and the fields at rest, the sending label.
    QList<bool> Busy() {
        return {window->IsSending(), !Find("cmdSend")->isEnabled(),
                !Find("TxtAdrSender")->isEnabled(), Find("LblSending")->isVisible()};
    }
};

} // namespace

class frmEmailTest : public QObject {
    Q_OBJECT

private slots:
    // The same post goes to the server directly or, when the system names one, through its
    // proxy; after success the window closes.
    void PostsTheFormByteForByte() {
        for (const bool proxied : {false, true}) {
            LoopbackHttpServer server("ok");
            Harness h(server.Port());
            const QByteArray port = QByteArray::number(server.Port());
            const QByteArray host = proxied ? "mail.example.invalid" : "127.0.0.1:" + port;
            if (proxied) {
                qputenv("KELVORA_MAIL_SERVER", host);
                qputenv("http_proxy", "http://127.0.0.1:" + port);
            }
            h.Fill();
            h.Send();
            qunsetenv("http_proxy");
            QTRY_COMPARE(h.messages.ShownIds(), QList<int>{401});
            QCOMPARE(server.requests.size(), 1);
            const QByteArray request = server.requests.first();
            const qsizetype headEnd = request.indexOf("\r\n\r\n");
            const QByteArray head = request.left(headEnd + 2);
            const QByteArray target = proxied ? "http://" + host : QByteArray();
            QVERIFY2(head.startsWith("POST " + target + "/crypt/cryptmobile.php HTTP/1.1\r\n"),
                     head.constData());
            QVERIFY(head.contains("\r\nContent-Type: application/x-www-form-urlencoded\r\n"));
            QVERIFY(head.contains("\r\nUser-Agent: Kelvora Mobile " + QByteArray(kVersionText) +
                                  "\r\n"));
            QVERIFY(head.contains("\r\nHost: " + host + "\r\n"));
            QCOMPARE(request.mid(headEnd + 4), QByteArray(kExpectedBody));
            QTRY_VERIFY(h.window.isNull());
        }
    }

    // Whatever went wrong, the window is busy until it knows, then stays open with the fields
    // as they were. Rows: the server's answer, or silence until the timeout; the message shown.
    void FailuresKeepTheWindow() {
        for (const auto& [answer, shown] :
             {std::pair{QByteArray("ERR: quota full"), u"Error sending the message: quota full"_s},
              {QByteArray(), u"Error sending the message. Internet connection needed."_s}}) {
            LoopbackHttpServer server(answer);
            Harness h(server.Port());
            h.window->SetTimeout(1500ms);
            h.Fill();
            const QString before = h.Fields();
            h.Send();
            QCOMPARE(h.Busy(), QList<bool>(4, true));
            // The window answers events while it waits.
            QTRY_COMPARE(server.requests.size(), 1);
            if (answer.isEmpty()) {
                QVERIFY(h.messages.shown.isEmpty());
            }
            QTRY_COMPARE_WITH_TIMEOUT(h.messages.ShownIds(), QList<int>{402}, 5000);
            QCOMPARE(h.messages.shown.first().text, shown);
            QVERIFY(h.window && h.window->isVisible());
            QCOMPARE(h.Busy(), QList<bool>(4, false));
            QCOMPARE(h.Fields(), before);
        }
    }

    // Cancel stays usable while the post runs, and ends it without a word.
    void CancelEndsThePostQuietly() {
        LoopbackHttpServer server({});
        Harness h(server.Port());
        h.Fill();
        h.Send();
        QTRY_COMPARE(server.requests.size(), 1);
        QTest::mouseClick(h.Find("cmdCancel"), Qt::LeftButton);
        QTRY_VERIFY(h.window.isNull());
        QTest::qWait(500); // longer than the timeout: a post left running would report now
        QVERIFY(h.messages.shown.isEmpty());
    }

    // An address that fails the pattern, a character Windows-1252 lacks or an encrypted text
    // too long for the form sends nothing and changes nothing. Screen readers name each box by
    // the caption in front of it (the captions are checked with every window's marks).
    void RefusesWhatCannotBeSent() {
        LoopbackHttpServer server("ok");
        Harness h(server.Port());
        for (const auto& [box, id] :
             {std::pair{"TxtSender", 395}, {"TextMsg", 398}, {"TxtCrypt", 557}}) {
            QCOMPARE(QAccessible::queryAccessibleInterface(h.Find(box))->text(QAccessible::Name),
                     testing::Catalogue(kEnglish, id));
        }
        const auto refused = [&h](int id) {
            const QString before = h.Fields();
            h.messages.shown.clear();
            h.Send();
            QCOMPARE(h.messages.ShownIds(), QList<int>{id});
            QVERIFY(!h.window->IsSending());
            QCOMPARE(h.Fields(), before);
        };
        h.Fill(u"a@b.cd"_s, u"bo@example.net"_s);
        refused(404);
        h.Fill(u"anna@example.org"_s, QString());
        refused(404);
        h.Fill();
        h.Find<QPlainTextEdit>("TextMsg")->setPlainText(u"Cześć, Łukasz"_s);
        refused(558);
        QVERIFY(h.messages.shown.first().text.endsWith(u"'ś' (U+015B)"_s));
        h.Fill();
        h.window->SetMsg(QString(32768, u'Q'));
        refused(555);
        QTest::qWait(100);
        QVERIFY(server.requests.isEmpty());
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::frmEmailTest)
#include "frmEmailTest.moc"
