#include "app/FCrypt.h"

#include "app/RecordingMessageService.h"
#include "common/Ansi.h"
#include "common/FixedRandom.h"
#include "controls/LightTab.h"
#include "i18n/Catalogue.h"
#include "text/EncryptedText.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTest>
#include <QTimer>

namespace kelvora {
namespace {

using namespace Qt::StringLiterals;

QString Catalogue(int languageOffset, int germanId) {
    return QString::fromStdString(GetText(languageOffset, germanId));
}

QString BannerOf(int languageOffset) {
    return QString::fromStdString(Utf8FromAnsi(BannerLine(languageOffset)));
}

// Harness owns a shown main window with a recording message service and fixed random bytes.
struct Harness {
    testing::RecordingMessageService messages;
    testing::FixedRandom random;
    FCrypt window;

    explicit Harness(int languageOffset = kEnglish, const std::string& commandLine = {})
        : window(messages, random, languageOffset) {
        window.show();
        window.Load(commandLine, u"kelvora"_s);
        Settle();
    }

    // Settle lays the window out as the event loop does: each layout request can raise
    // another one in the parent.
    static void Settle() {
        for (int round = 0; round < 8; ++round) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        }
    }

    template <typename Widget = QWidget> Widget* Find(const char* name) {
        auto* widget = window.findChild<Widget*>(QString::fromLatin1(name));
        if (widget == nullptr) {
            qFatal("no control named %s", name);
        }
        return widget;
    }
    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    QString Results() { return Find<QPlainTextEdit>("txtResults")->toPlainText(); }
    QString Passphrase() { return Find<QLineEdit>("TxtCode")->text(); }
    QString Sentence() { return Find<QLabel>("Label3")->text(); }
    void Fill(const QString& text, const QString& passphrase) {
        Find<QPlainTextEdit>("txtResults")->setPlainText(text);
        Find<QLineEdit>("TxtCode")->setText(passphrase);
    }

    // Names joins the names of the given controls for which the test holds.
    QString Names(std::initializer_list<const char*> names, bool (*test)(QWidget*)) {
        QStringList held;
        for (const char* name : names) {
            if (test(Find(name))) {
                held << QString::fromLatin1(name);
            }
        }
        return held.join(u' ');
    }
    // Page is the active tabs of TabStr and TabFileCrypt, then the page controls shown.
    QString Page() {
        return u"%1%2 "_s.arg(Find<LightTab>("TabStr")->ActiveTab())
                   .arg(Find<LightTab>("TabFileCrypt")->ActiveTab()) +
               Names({"Frame_0", "Command1", "Command2", "cmdMail", "LblLink", "Frame_1",
                      "LstCryptFiles", "TxtDecrFile"},
                     [](QWidget* w) { return w->isVisible(); });
    }
    // State is what the busy state changes: the flag, the panels shown, the areas enabled.
    QString State() {
        return (window.IsWorking() ? u"working: "_s : u"idle: "_s) +
               Names({"FrameW", "PictAmpel"}, [](QWidget* w) { return !w->isHidden(); }) +
               u" / "_s + Names({"Frame_0", "FramePwd"}, [](QWidget* w) { return w->isEnabled(); });
    }
    // Rating is which stars show and which lamps are lit, e.g. "11100 010".
    QString Rating() {
        QString rating;
        for (const char* star : {"Stern_1", "Stern_2", "Stern_3", "Stern_4", "Stern_5"}) {
            rating += QLatin1Char(Find(star)->isHidden() ? '0' : '1');
        }
        rating += u' ';
        for (const char* lamp : {"AmpelL_0", "AmpelL_1", "AmpelL_2"}) {
            rating += QLatin1Char(Find(lamp)->property("lit").toBool() ? '1' : '0');
        }
        return rating;
    }
    // ClippedControls names every shown control whose text lacks room or that sticks out of
    // its parent.
    QString ClippedControls() {
        Settle();
        QStringList clipped;
        for (QWidget* w : window.findChildren<QWidget*>()) {
            const QSize size = w->size();
            auto* label = qobject_cast<QLabel*>(w);
            const bool captioned = label != nullptr ||
                                   qobject_cast<QAbstractButton*>(w) != nullptr ||
                                   qobject_cast<LightTab*>(w) != nullptr;
            const bool textFits =
                label != nullptr && label->wordWrap()
                    ? label->heightForWidth(size.width()) <= size.height()
                    : !captioned || (w->sizeHint().width() <= size.width() &&
                                     w->minimumSizeHint().height() <= size.height());
            const bool inside = QRect({}, w->parentWidget()->size()).contains(w->geometry());
            if (w->isVisible() && !(textFits && inside)) {
                clipped << u"%1 %2x%3"_s.arg(w->objectName()).arg(size.width()).arg(size.height());
            }
        }
        return clipped.join(u", "_s);
    }
    // TaggedTexts is every text the window's marks put into it, with the tab captions.
    QStringList TaggedTexts() {
        QStringList texts;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (widget->property("Tag").toString().startsWith(u'#')) {
                texts << widget->property("text").toString();
            }
        }
        for (const char* strip : {"TabStr", "TabFileCrypt"}) {
            texts << Find<LightTab>(strip)->Caption(0) << Find<LightTab>(strip)->Caption(1);
        }
        return texts;
    }
};

// RunCli runs the built kelvora-cli with input on standard input and the passphrase in its
// environment, as a script would, and gives its output (or how it failed).
QString RunCli(const QStringList& args, const QString& input, const QString& passphrase) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"KELVORA_PASSPHRASE"_s, passphrase);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KELVORA_CLI_PATH), args);
    process.write(input.toUtf8());
    process.closeWriteChannel();
    const bool ok = process.waitForFinished(30000) && process.exitCode() == 0;
    return ok ? QString::fromUtf8(process.readAllStandardOutput())
              : u"failed with status %1"_s.arg(process.exitCode());
}

const char* const kTextPage = "10 Frame_0 Command1 Command2 LblLink";

} // namespace

class FCryptTest : public QObject {
    Q_OBJECT

private slots:
    void LanguageSwitchRestoresEveryCaption() {
        Harness h(kGerman);
        QCOMPARE(h.Find<QAbstractButton>("Command1")->text(), Catalogue(kGerman, 161));
        QCOMPARE(h.Find<LightTab>("TabStr")->Caption(FCrypt::kTextTab), Catalogue(kGerman, 166));
        QVERIFY(h.window.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(!h.window.mask().isEmpty());
        QCOMPARE(h.Find<QLabel>("ImageDE")->frameShape(), QFrame::Box);
        const QStringList german = h.TaggedTexts();
        const QString germanTip = h.Find("IControlBx")->toolTip();
        QCOMPARE(germanTip, Catalogue(kGerman, 500));

        h.Click("ImageFR");
        QCOMPARE(h.window.LanguageOffset(), kFrench);
        QCOMPARE(h.Find<QLabel>("ImageFR")->frameShape(), QFrame::Box);
        QCOMPARE(h.Find<QLabel>("ImageDE")->frameShape(), QFrame::NoFrame);
        QCOMPARE(h.Find<QAbstractButton>("Command2")->text(), Catalogue(kFrench, 162));
        QCOMPARE(h.Find<LightTab>("TabFileCrypt")->Caption(0), Catalogue(kFrench, 183));
        QVERIFY(h.TaggedTexts() != german);
        // A tooltip is a mark only until it has been labelled once.
        QCOMPARE(h.Find("IControlBx")->toolTip(), germanTip);

        h.Click("ImageDE");
        QCOMPARE(h.TaggedTexts(), german);
    }

    void NoTextIsClippedInAnyLanguage_data() {
        QTest::addColumn<int>("languageOffset");
        QTest::addColumn<QString>("commandLine");
        for (const auto& [language, offset] : {std::pair{"German", kGerman},
                                               {"English", kEnglish},
                                               {"Spanish", kSpanish},
                                               {"French", kFrench}}) {
            for (const char* page : {"", "/filee", "/filed"}) {
                QTest::addRow("%s %s", language, page) << offset << QString::fromLatin1(page);
            }
        }
    }

    // Every shown caption has the room its text needs, and every control lies inside its parent.
    void NoTextIsClippedInAnyLanguage() {
        QFETCH(int, languageOffset);
        QFETCH(QString, commandLine);
        Harness h(languageOffset, commandLine.toStdString());
        QCOMPARE(h.ClippedControls(), QString());
        h.Click("cmdPassgen"); // the longest sentence the rating area shows
        QCOMPARE(h.ClippedControls(), QString());
        const WorkingGuard working(h.window); // the working panel
        QCOMPARE(h.ClippedControls(), QString());
    }

    void CommandLineOpensPages_data() {
        for (const char* column : {"commandLine", "page", "decrFile", "decrOutPath", "message"}) {
            QTest::addColumn<QString>(column);
        }
        const auto row = [](const char* name, const char* commandLine, const char* page,
                            const char* decrFile = "", const char* decrOutPath = "",
                            const char* message = "") {
            QTest::newRow(name) << QString::fromLatin1(commandLine) << QString::fromLatin1(page)
                                << QString::fromLatin1(decrFile) << QString::fromLatin1(decrOutPath)
                                << QString::fromLatin1(message);
        };
        row("none", "", kTextPage);
        row("filee", "/fileeXYZ", "00 Frame_1 LstCryptFiles");
        row("filed", "/FileD", "01 Frame_1 TxtDecrFile");
        row("setDecrFile", "/SETDECRFILE /home/Ann/Box.vexo", "01 Frame_1 TxtDecrFile",
            "/home/Ann/Box.vexo", "/home/Ann/");
        row("setEncrFiles waits for the files page", "/setEncrFiles /a.txt /outputfile /a.vexo",
            kTextPage);
        row("usage names the program", "/?", kTextPage, "", "",
            "Parameters for Kelvora:\nkelvora [/setEncrFiles <list of files> /outputfile "
            "<file>]|[/setDecrFile <file>]");
    }

    void CommandLineOpensPages() {
        QFETCH(QString, commandLine);
        QFETCH(QString, page);
        QFETCH(QString, decrFile);
        QFETCH(QString, decrOutPath);
        QFETCH(QString, message);
        Harness h(kEnglish, commandLine.toStdString());
        QCOMPARE(h.Page(), page);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), decrFile);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), decrOutPath);
        QCOMPARE(h.messages.ShownIds(),
                 message.isEmpty() ? QList<int>{} : QList<int>{FCrypt::kUsageTextId});
        QCOMPARE(h.messages.shown.value(0).text, message);
    }

    void TabsSwitchPages() {
        Harness h;
        auto* strip = h.Find<LightTab>("TabStr");
        auto* files = h.Find<LightTab>("TabFileCrypt");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->TabRect(FCrypt::kFilesTab).center());
        QCOMPARE(h.Page(), u"00 Frame_1 LstCryptFiles"_s);
        QTest::mouseClick(files, Qt::LeftButton, {}, files->TabRect(FCrypt::kDecryptTab).center());
        QCOMPARE(h.Page(), u"01 Frame_1 TxtDecrFile"_s);
        QTest::keyClick(strip, Qt::Key_Right); // cmdMail stays hidden until the mail window exists
        QCOMPARE(h.Page(), u"11 Frame_0 Command1 Command2 LblLink"_s);
    }

    void RatingShowsEachLevelBound_data() {
        QTest::addColumn<QString>("passphrase");
        QTest::addColumn<QString>("rating");
        QTest::addColumn<int>("sentence");
        const auto row = [](const char* name, const QString& passphrase, const char* rating,
                            int sentence) {
            QTest::newRow(name) << passphrase << QString::fromLatin1(rating) << sentence;
        };
        // Scores worked out by hand: lower case only loses 35 %, length counts up to 32.
        const auto q = [](int count) { return QString(count, u'q'); };
        row("empty, 0", QString(), "00000 100", 124);
        row("ab, 4", u"ab"_s, "00000 100", 124);
        row("abc, 6", u"abc"_s, "10000 100", 124);
        row("abcd, 8", u"abcd"_s, "10000 100", 124);
        row("abcde, 10", u"abcde"_s, "11000 110", 125);
        row("11 letters, 22", u"abcdefghijk"_s, "11000 110", 125);
        row("12 letters, 25", u"abcdefghijkl"_s, "11100 010", 126);
        row("24 letters, 49", q(24), "11100 010", 126);
        row("25 letters, 51", q(25), "11110 011", 127);
        row("30 of all classes, 94", u"Aa1!~"_s + q(25), "11110 011", 127);
        row("31 of all classes, 97", u"Aa1!~"_s + q(26), "11111 001", 128);
        row("32 mixed letters, capped 71", u"Ab"_s + q(30), "11110 011", 127);
    }

    void RatingShowsEachLevelBound() {
        QFETCH(QString, passphrase);
        QFETCH(QString, rating);
        QFETCH(int, sentence);
        Harness h(kSpanish);
        h.Fill({}, u"something else first"_s);
        h.Fill({}, passphrase);
        QCOMPARE(h.Rating(), rating);
        QCOMPARE(h.Sentence(), Catalogue(kSpanish, sentence));
    }

    void HiddenPassphraseShowsAgainWhenCreated() {
        Harness h;
        auto* box = h.Find<QLineEdit>("TxtCode");
        h.Fill({}, u"secret"_s);
        h.Click("ChkHPwd");
        QCOMPARE(box->displayText(), u"******"_s);
        h.Click("cmdPassgen");
        QCOMPARE(h.Passphrase().size(), 32);
        QCOMPARE(box->displayText(), h.Passphrase());
        QVERIFY(!h.Find<QAbstractButton>("ChkHPwd")->isChecked());
        QCOMPARE(h.Sentence(), Catalogue(kEnglish, 106));
        QCOMPARE(h.Rating(), u"11111 001"_s);
    }

    void EncryptThenDecryptInTheWindow() {
        Harness h(kFrench);
        const QString text = u"Grüße\nzweite Zeile"_s;
        h.Fill(text, u"correct horse"_s);
        QVERIFY(!h.Find("cmdMail")->isEnabled());
        h.Click("Command1");
        QCOMPARE(h.messages.ShownIds(), QList<int>{190});
        QCOMPARE(h.messages.shown.first().title, u"Kelvora-Crypt"_s);
        QVERIFY(!h.Results().contains(u"Kelvora"_s));
        QVERIFY(!h.Results().contains(u'\r'));
        QVERIFY(h.Passphrase().isEmpty());
        QVERIFY(h.Find("cmdMail")->isEnabled());
        QCOMPARE(h.State(), u"idle: PictAmpel / Frame_0 FramePwd"_s);

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
        QCOMPARE(h.messages.openedUrls, QStringList{FCrypt::kOnlineVersionUrl});
    }

    void ControlBoxMinimisesOnItsLeftAndClosesElsewhere() {
        Harness h;
        auto* box = h.Find("IControlBx");
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(14, box->height() / 2));
        QVERIFY(h.window.windowState() & Qt::WindowMinimized);
        QVERIFY(h.window.isVisible());
        h.window.showNormal();
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(15, box->height() / 2));
        QVERIFY(!h.window.isVisible());
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FCryptTest)
#include "FCryptTest.moc"
