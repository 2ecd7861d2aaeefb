#include "mail/frmEmail.h"

#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "common/Version.h"
#include "mail/LoopbackHttpServer.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace kelvora {
namespace {

using namespace std::chrono_literals;

using testing::Catalogue;

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
        window->SetMsg(QStringLiteral("QUJD\nREVG"));
        window->show();
    }
    ~Harness() { delete window; }

    template <typename Widget = QWidget> Widget* Find(const char* name) {
        return testing::FindControl<Widget>(window.data(), QString::fromLatin1(name));
    }
    void Fill(const QString& sender = QStringLiteral("anna@example.org"),
              const QString& recipient = QStringLiteral("bo.ek@example.net")) {
        Find<QLineEdit>("TxtSender")->setText(QStringLiteral("Anna Berg-Lüdke"));
        Find<QLineEdit>("TxtAdrSender")->setText(sender);
        Find<QLineEdit>("txtReceipAdr")->setText(recipient);
        Find<QPlainTextEdit>("TextMsg")->setPlainText(
            QStringLiteral("Hallo Bo, schöne Grüße.\nBis bald"));
    }
    void Send() { QTest::mouseClick(Find("cmdSend"), Qt::LeftButton); }
    QString Fields() {
        return QStringList{
            Find<QLineEdit>("TxtSender")->text(), Find<QLineEdit>("TxtAdrSender")->text(),
            Find<QLineEdit>("txtReceipAdr")->text(), Find<QPlainTextEdit>("TextMsg")->toPlainText(),
            Find<QPlainTextEdit>("TxtCrypt")->toPlainText()}
            .join(u'|');
    }
};

// A port on which nothing listens: one the system just gave out and took back.
quint16 ClosedPort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

} // namespace

class frmEmailTest : public QObject {
    Q_OBJECT

private slots:
    void PostsTheFormByteForByte() {
        testing::LoopbackHttpServer server("ok");
        Harness h(server.Port());
        h.Fill();
        h.Send();
        QTRY_COMPARE(h.messages.ShownIds(), QList<int>{401});
        QCOMPARE(server.Requests().size(), 1);
        const QByteArray request = server.Requests().first();
        const qsizetype headEnd = request.indexOf("\r\n\r\n");
        const QByteArray head = request.left(headEnd + 2);
        QVERIFY(head.startsWith("POST /crypt/cryptmobile.php HTTP/1.1\r\n"));
        QVERIFY(head.contains("\r\nContent-Type: application/x-www-form-urlencoded\r\n"));
        QVERIFY(
            head.contains("\r\nUser-Agent: Kelvora Mobile " + QByteArray(kVersionText) + "\r\n"));
        QVERIFY(head.contains("\r\nHost: 127.0.0.1:" + QByteArray::number(server.Port()) + "\r\n"));
        QCOMPARE(request.mid(headEnd + 4), QByteArray(kExpectedBody));
        QTRY_VERIFY(h.window.isNull()); // closed after success
    }

    void AnswerJudged_data() {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QString>("shown");
        const QString noConnection = Catalogue(kEnglish, 402) + u". "_qs + Catalogue(kEnglish, 403);
        QTest::newRow("server error")
            << QByteArray("ERR: quota full") << u"Error sending the message: quota full"_qs;
        QTest::newRow("ok with line break") << QByteArray("ok\r\n") << noConnection;
        QTest::newRow("nothing") << QByteArray() << noConnection;
        QTest::newRow("OK in capitals") << QByteArray("OK") << noConnection;
    }

    void AnswerJudged() {
        QFETCH(QByteArray, answer);
        QFETCH(QString, shown);
        testing::LoopbackHttpServer server(answer);
        Harness h(server.Port());
        h.Fill();
        const QString before = h.Fields();
        h.Send();
        QTRY_COMPARE(h.messages.ShownIds(), QList<int>{402});
        QCOMPARE(h.messages.shown.first().text, shown);
        QCOMPARE(server.Requests().size(), 1);
        QVERIFY(!h.window.isNull());
        QVERIFY(h.window->isVisible());
        QCOMPARE(h.Fields(), before);
        QVERIFY(h.Find("cmdSend")->isEnabled());
    }

    void NoServerListening() {
        Harness h(ClosedPort());
        h.Fill();
        h.Send();
        QTRY_COMPARE(h.messages.ShownIds(), QList<int>{402});
        QCOMPARE(h.messages.shown.first().text,
                 u"Error sending the message. Internet connection needed."_qs);
        QVERIFY(!h.window.isNull());
    }

    void BusyWhileTheServerIsSilent() {
        testing::LoopbackHttpServer server("ok", true);
        Harness h(server.Port());
        h.window->SetTimeout(1500ms);
        h.Fill();
        const QString before = h.Fields();
        h.Send();
        QVERIFY(h.window->IsSending());
        QVERIFY(!h.Find("cmdSend")->isEnabled());
        QVERIFY(!h.Find("TxtAdrSender")->isEnabled());
        QVERIFY(h.Find("cmdCancel")->isEnabled());
        QVERIFY(h.Find("LblSending")->isVisible());
        QTRY_COMPARE(server.Requests().size(), 1); // the window answers events while it waits
        QVERIFY(h.messages.shown.isEmpty());
        QTRY_COMPARE_WITH_TIMEOUT(h.messages.ShownIds(), QList<int>{402}, 5000);
        QCOMPARE(h.messages.shown.first().text,
                 u"Error sending the message. Internet connection needed."_qs);
        QVERIFY(!h.window->IsSending());
        QVERIFY(h.Find("cmdSend")->isEnabled());
        QVERIFY(!h.Find("LblSending")->isVisible());
        QCOMPARE(h.Fields(), before);
    }

    void CancelEndsThePostQuietly() {
        testing::LoopbackHttpServer server("ok", true);
        Harness h(server.Port());
        h.Fill();
        h.Send();
        QTRY_COMPARE(server.Requests().size(), 1);
        QTest::mouseClick(h.Find("cmdCancel"), Qt::LeftButton);
        QTRY_VERIFY(h.window.isNull());
        QTest::qWait(500); // longer than the timeout: a post left running would report now
        QVERIFY(h.messages.shown.isEmpty());
    }

    void GoesThroughTheSystemProxy() {
        testing::LoopbackHttpServer proxy("ok");
        Harness h(proxy.Port());
        qputenv("KELVORA_MAIL_SERVER", "mail.example.invalid");
        qputenv("http_proxy", "http://127.0.0.1:" + QByteArray::number(proxy.Port()));
        h.Fill();
        h.Send();
        qunsetenv("http_proxy");
        QTRY_COMPARE(h.messages.ShownIds(), QList<int>{401});
        QCOMPARE(proxy.Requests().size(), 1);
        QVERIFY2(proxy.Requests().first().startsWith(
                     "POST http://mail.example.invalid/crypt/cryptmobile.php HTTP/1.1\r\n"),
                 proxy.Requests().first().left(80).constData());
    }

    void InvalidAddressSendsNothing_data() {
        QTest::addColumn<QString>("sender");
        QTest::addColumn<QString>("recipient");
        QTest::newRow("sender too short after @") << u"a@b.cd"_qs << u"bo@example.net"_qs;
        QTest::newRow("recipient ends with digit") << u"anna@example.org"_qs << u"bo@example.n1"_qs;
        QTest::newRow("recipient empty") << u"anna@example.org"_qs << QString();
    }

    void InvalidAddressSendsNothing() {
        QFETCH(QString, sender);
        QFETCH(QString, recipient);
        testing::LoopbackHttpServer server("ok");
        Harness h(server.Port());
        h.Fill(sender, recipient);
        const QString before = h.Fields();
        h.Send();
        QCOMPARE(h.messages.ShownIds(), QList<int>{404});
        QVERIFY(!h.window->IsSending());
        QTest::qWait(100);
        QVERIFY(server.Requests().isEmpty());
        QCOMPARE(h.Fields(), before);
    }

    void RefusesWhatCannotBeSent() {
        testing::LoopbackHttpServer server("ok");
        Harness h(server.Port());
        h.Fill();
        h.Find<QPlainTextEdit>("TextMsg")->setPlainText(u"Cześć, Łukasz"_qs);
        h.Send();
        QCOMPARE(h.messages.ShownIds(), QList<int>{558});
        QVERIFY(h.messages.shown.first().text.endsWith(u"'ś' (U+015B)"_qs));

        h.messages.shown.clear();
        h.Find<QPlainTextEdit>("TextMsg")->clear();
        h.window->SetMsg(QString(32768, u'Q'));
        h.Send();
        QCOMPARE(h.messages.ShownIds(), QList<int>{555});
        h.messages.shown.clear();
        h.window->SetMsg(QString(32767, u'Q'));
        h.Send();
        QTRY_COMPARE(h.messages.ShownIds(), QList<int>{401});
        QCOMPARE(server.Requests().size(), 1);
    }

    // The captions are marks (checked with every window's marks); screen readers name each box by
    // the caption in front of it.
    void BoxesAreNamedByTheirCaptions() {
        for (const int language : {kGerman, kFrench}) {
            Harness h(ClosedPort(), language);
            for (const auto& [box, id] : {std::pair{"TxtSender", 395}, std::pair{"TextMsg", 398},
                                          std::pair{"TxtCrypt", 557}}) {
                QCOMPARE(
                    QAccessible::queryAccessibleInterface(h.Find(box))->text(QAccessible::Name),
                    Catalogue(language, id));
            }
            QCOMPARE(h.Find<QPlainTextEdit>("TxtCrypt")->toPlainText(), u"QUJD\nREVG"_qs);
        }
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::frmEmailTest)
#include "frmEmailTest.moc"
