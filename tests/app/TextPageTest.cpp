#include "app/TextPage.h"

#include "app/WindowHarness.h"

#include <QTextBlock>
#include <QTimer>

namespace kelvora {

using namespace Qt::StringLiterals;
using namespace testing;
using Answer = MessageService::Answer;

class TextPageTest : public QObject {
    Q_OBJECT

private slots:
    // A text encrypted in the window opens with kelvora-cli and the reverse; each command
    // reminds once, empties the passphrase box and writes lines without carriage returns.
    void WindowAndCliOpenEachOthersTexts() {
        const QString passphrase = u"Shared Passphrase \u00e4"_s;
        Harness h(kFrench);
        h.Fill(u"Grüße\nzweite Zeile"_s, passphrase);
        h.Click("Command1");
        QCOMPARE(h.messages.ShownIds(), QList<int>{190});
        QCOMPARE(h.messages.shown.first().title, u"Kelvora-Crypt"_s);
        QVERIFY(!h.Results().contains(u'\r'));
        QVERIFY(!h.Results().contains(u"Kelvora"_s)); // the banner travels inside
        QVERIFY(h.Passphrase().isEmpty());
        QCOMPARE(RunCli({u"decrypt-text"_s}, h.Results(), passphrase),
                 BannerOf(kFrench) + u"\nGrüße\nzweite Zeile"_s);

        const QString encrypted = RunCli({u"encrypt-text"_s, u"--lang"_s, u"de"_s},
                                         u"from\nthe command line \u00e4"_s, passphrase);
        QVERIFY2(!encrypted.startsWith(u"failed"_s), qPrintable(encrypted));
        h.Fill(encrypted, passphrase);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kGerman) + u"\nfrom\nthe command line \u00e4"_s);
        QVERIFY(h.Passphrase().isEmpty());
        QCOMPARE(h.messages.ShownIds(), QList<int>{190});
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
            box->setTextCursor(QTextCursor(box->document()->findBlockByNumber(cursorLine)));
            h.Click("Command2");
            QCOMPARE(h.Results(), BannerOf(kEnglish) + u'\n' + expected);
            QCOMPARE(h.messages.ShownIds(), QList<int>{630});
            QCOMPARE(h.messages.shown.first().text, Catalogue(kEnglish, 630, u"2"_s));
        }
    }

    // Missing or broken input, or Cancel at the reminder, leaves the text as it was.
    void RefusedInputLeavesTheText() {
        for (const auto& [command, text, passphrase, message, passphraseKept] :
             {std::tuple{"Command1", "some text", "", 114, true},
              {"Command1", "", "secret", 114, true},
              {"Command2", "c29tZQ==", "", 114, true},
              {"Command2", "", "secret", 114, true},
              {"Command2", "QUJD", "secret", 114, false}, // not a whole block
              {"Command1", "keep me", "secret", 190, true}}) {
            Harness h;
            h.messages.answers = {Answer::Cancel};
            h.Fill(QString::fromLatin1(text), QString::fromLatin1(passphrase));
            h.Click(command);
            QCOMPARE(h.messages.ShownIds(), QList<int>{message});
            QCOMPARE(h.messages.shown.first().text, Catalogue(kEnglish, message));
            QCOMPARE(h.Results(), QString::fromLatin1(text));
            QCOMPARE(h.Passphrase(), passphraseKept ? QString::fromLatin1(passphrase) : QString());
            QVERIFY(!h.Find("cmdMail")->isEnabled());
        }
    }

    // Characters the text format cannot carry are named with their count, and become "?" only
    // after Yes.
    void TextWithUnsupportedCharactersIsEncryptedOnlyAfterYes() {
        Harness h;
        const QString text = u"line\nsmile 🙂 and \u0000"_s;
        h.messages.answers = {Answer::No};
        h.Fill(text, u"secret"_s);
        h.Click("Command1");
        QCOMPARE(h.messages.ShownIds(), QList<int>{591});
        QCOMPARE(h.messages.shown[0].text,
                 Catalogue(kEnglish, 591, u"'🙂' (U+1F642)"_s, u"12"_s));
        QCOMPARE(h.Results(), text);
        QCOMPARE(h.Passphrase(), u"secret"_s);
        h.messages.shown.clear();
        h.Click("Command1"); // Yes to the question, OK to the reminder
        QCOMPARE(h.messages.ShownIds(), (QList<int>{591, 190}));
        h.Fill(h.Results(), u"secret"_s);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kEnglish) + u"\nline\nsmile ? and ?"_s);
    }

    // A wrong passphrase leaves the encrypted text unless asked to show what came out.
    void WrongPassphraseLeavesTheEncryptedTextUnlessAskedToShow() {
        Harness h;
        h.Fill(u"kept"_s, u"right"_s);
        h.Click("Command1");
        const QString encrypted = h.Results();
        h.messages.shown.clear();
        h.messages.answers = {Answer::No};
        h.Fill(encrypted, u"wrong"_s);
        h.Click("Command2");
        QCOMPARE(h.messages.ShownIds(), QList<int>{592});
        QCOMPARE(h.Results(), encrypted);
        QCOMPARE(h.Passphrase(), QString());
        h.Fill(encrypted, u"wrong"_s);
        h.Click("Command2"); // Yes: shown as it came out
        QVERIFY(h.Results() != encrypted);
        QVERIFY(!h.Results().startsWith(BannerOf(kEnglish)));
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
