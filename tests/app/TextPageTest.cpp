#include "app/TextPage.h"

#include "app/WindowHarness.h"

#include <QTextBlock>
#include <QTimer>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::BannerOf;
using testing::Catalogue;
using testing::Harness;
using testing::RunCli;

class TextPageTest : public QObject {
    Q_OBJECT

private slots:
    void EncryptThenDecryptInTheWindow() {
        Harness h(kFrench);
        const QString text = u"Grüße\nzweite Zeile"_s;
        h.Fill(text, u"correct horse"_s);
        h.Click("Command1");
        QCOMPARE(h.messages.ShownIds(), QList<int>{190});
        QCOMPARE(h.messages.shown.first().title, u"Kelvora-Crypt"_s);
        QVERIFY(!h.Results().contains(u"Kelvora"_s));
        QVERIFY(!h.Results().contains(u'\r'));
        QVERIFY(h.Passphrase().isEmpty());

        h.Fill(h.Results(), u"correct horse"_s);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kFrench) + u'\n' + text);
        QVERIFY(h.Passphrase().isEmpty());
        QCOMPARE(h.messages.ShownIds(), QList<int>{190});
    }

    void WindowTextDecryptsWithTheCliAndBack() {
        const QString passphrase = u"Shared Passphrase \u00e4"_s;
        Harness h(kEnglish);
        h.Fill(u"from the window\nline two"_s, passphrase);
        h.Click("Command1");
        QCOMPARE(RunCli({u"decrypt-text"_s}, h.Results(), passphrase),
                 BannerOf(kEnglish) + u"\nfrom the window\nline two"_s);

        const QString encrypted = RunCli({u"encrypt-text"_s, u"--lang"_s, u"de"_s},
                                         u"from\nthe command line \u00e4"_s, passphrase);
        QVERIFY2(!encrypted.startsWith(u"failed"_s), qPrintable(encrypted));
        h.Fill(encrypted, passphrase);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kGerman) + u"\nfrom\nthe command line \u00e4"_s);
    }

    // A pasted mail thread: each text found among prose and quote marks; of two, the one
    // the cursor stands in, after the window says there are two.
    void DecryptsTheTextInAMailWhereTheCursorStands() {
        const QString passphrase = u"mail"_s;
        const QString first =
            RunCli({u"encrypt-text"_s, u"--lang"_s, u"en"_s}, u"one"_s, passphrase);
        const QString second =
            RunCli({u"encrypt-text"_s, u"--lang"_s, u"en"_s}, u"two"_s, passphrase);
        const QString quotedSecond = u"> "_s + second.trimmed().replace(u'\n', u"\n> "_s);
        const QString mail =
            u"Hello,\n\n"_s + first + u"\nBob wrote:\n"_s + quotedSecond + u"\n-- \nAnna"_s;
        for (const auto& [cursorLine, expected] :
             {std::pair{0, u"one"_s}, std::pair{4, u"one"_s}, std::pair{9, u"two"_s}}) {
            Harness h;
            h.Fill(mail, passphrase);
            auto* box = h.Find<QPlainTextEdit>("txtResults");
            QTextCursor cursor(box->document()->findBlockByNumber(cursorLine));
            box->setTextCursor(cursor);
            h.Click("Command2");
            QCOMPARE(h.Results(), BannerOf(kEnglish) + u'\n' + expected);
            QCOMPARE(h.messages.ShownIds(), QList<int>{630});
            QCOMPARE(h.messages.shown.first().text,
                     Catalogue(kEnglish, 630).replace(u"%s"_s, u"2"_s));
        }
        Harness h(kGerman);
        h.Fill(u"> "_s + first.trimmed().replace(u'\n', u"\n> "_s), passphrase);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kEnglish) + u"\none"_s);
        QVERIFY(h.messages.ShownIds().isEmpty());
    }

    // Missing or broken input, or Cancel at the reminder, leaves the text as it was.
    void RefusedInputLeavesTheText_data() {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("passphrase");
        QTest::addColumn<int>("message");
        QTest::addColumn<bool>("passphraseKept");
        const auto row = [](const char* name, const char* command, const char* text,
                            const char* passphrase, int message, bool kept) {
            QTest::newRow(name) << QString::fromLatin1(command) << QString::fromLatin1(text)
                                << QString::fromLatin1(passphrase) << message << kept;
        };
        row("encrypt, no passphrase", "Command1", "some text", "", 114, true);
        row("encrypt, no text", "Command1", "", "secret", 114, true);
        row("decrypt, no passphrase", "Command2", "c29tZQ==", "", 114, true);
        row("decrypt, no text", "Command2", "", "secret", 114, true);
        row("decrypt, not a whole block", "Command2", "QUJD", "secret", 114, false);
        row("encrypt, cancelled at the reminder", "Command1", "keep me", "secret", 190, true);
    }

    void RefusedInputLeavesTheText() {
        QFETCH(QString, command);
        QFETCH(QString, text);
        QFETCH(QString, passphrase);
        QFETCH(int, message);
        QFETCH(bool, passphraseKept);
        Harness h;
        h.messages.answers = {MessageService::Answer::Cancel};
        h.Fill(text, passphrase);
        h.Click(command.toLatin1().constData());
        QCOMPARE(h.messages.ShownIds(), QList<int>{message});
        QCOMPARE(h.messages.shown.first().text, Catalogue(kEnglish, message));
        QCOMPARE(h.Results(), text);
        QCOMPARE(h.Passphrase(), passphraseKept ? passphrase : QString());
        QVERIFY(!h.Find("cmdMail")->isEnabled());
    }

    void CancelDuringALongJobKeepsThePlainText() {
        Harness h(kSpanish);
        const QString text = QString(QString(63, u'x') + u'\n').repeated(16384);
        h.Fill(text, u"secret"_s);
        QString busyState;
        // The first time the job lets events run, the window is busy and only Cancel is usable.
        QTimer::singleShot(0, &h.window, [&] {
            busyState = h.State();
            h.Click("cmdCancel");
        });
        h.Click("Command1");
        QCOMPARE(busyState, u"working: FrameW / "_s);
        QCOMPARE(h.Results(), BannerOf(kSpanish) + u'\n' + text);
        QVERIFY(!h.Find("cmdMail")->isEnabled());
        QCOMPARE(h.State(), u"idle: PictAmpel / Frame_0 FramePwd"_s);
    }

    void OnlineLinkTellsThenOpensTheAddress() {
        Harness h;
        h.Click("LblLink");
        QCOMPARE(h.messages.ShownIds(), QList<int>{191});
        QCOMPARE(h.messages.openedUrls, QStringList{TextPage::kOnlineVersionUrl});
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::TextPageTest)
#include "TextPageTest.moc"
