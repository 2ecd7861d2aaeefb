#include "app/FCrypt.h"

#include "app/RecordingMessageService.h"
#include "common/Ansi.h"
#include "common/FixedRandom.h"
#include "controls/LightTab.h"
#include "i18n/Catalogue.h"
#include "text/EncryptedText.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <memory>

namespace kelvora {

using testing::RecordingMessageService;
using Answer = MessageService::Answer;

namespace {

QString Catalogue(int languageOffset, int germanId) {
    return QString::fromStdString(GetText(languageOffset, germanId));
}

// Harness owns a shown main window with a recording message service and fixed random bytes.
struct Harness {
    RecordingMessageService messages;
    testing::FixedRandom random;
    FCrypt window;

    explicit Harness(int languageOffset = kEnglish, const std::string& commandLine = {})
        : window(messages, random, languageOffset) {
        window.show();
        window.Load(commandLine, QStringLiteral("kelvora"));
        Settle();
    }

    // Settle lays the window out as the event loop does: each layout request can raise
    // another one in the parent.
    static void Settle() {
        for (int round = 0; round < 8; ++round) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        }
    }

    template <typename Widget> Widget* Find(const char* name) {
        auto* widget = window.findChild<Widget*>(QString::fromLatin1(name));
        if (widget == nullptr) {
            qFatal("no control named %s", name);
        }
        return widget;
    }
    void Click(const char* name) { QTest::mouseClick(Find<QWidget>(name), Qt::LeftButton); }
    QString Results() { return Find<QPlainTextEdit>("txtResults")->toPlainText(); }
    void SetResults(const QString& text) { Find<QPlainTextEdit>("txtResults")->setPlainText(text); }
    void SetPassphrase(const QString& text) { Find<QLineEdit>("TxtCode")->setText(text); }
    QString Passphrase() { return Find<QLineEdit>("TxtCode")->text(); }
    int ShownStars() {
        int stars = 0;
        for (int i = 1; i <= 5; ++i) {
            stars +=
                Find<QWidget>(QStringLiteral("Stern_%1").arg(i).toLatin1())->isHidden() ? 0 : 1;
        }
        return stars;
    }
    QString LitLamps() {
        QString lit;
        for (const char* lamp : {"AmpelL_0", "AmpelL_1", "AmpelL_2"}) {
            lit +=
                Find<QWidget>(lamp)->property("lit").toBool() ? QLatin1Char('1') : QLatin1Char('0');
        }
        return lit;
    }
    // ClippedControls names every shown control whose text lacks room or that sticks out of
    // its parent.
    QStringList ClippedControls() {
        QStringList clipped;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisible()) {
                continue;
            }
            const QSize size = widget->size();
            bool fits =
                QRect(QPoint(0, 0), widget->parentWidget()->size()).contains(widget->geometry());
            auto* label = qobject_cast<QLabel*>(widget);
            if (label != nullptr && label->wordWrap()) {
                fits = fits && label->heightForWidth(size.width()) <= size.height();
            } else if (label != nullptr || qobject_cast<QAbstractButton*>(widget) != nullptr ||
                       qobject_cast<LightTab*>(widget) != nullptr) {
                fits = fits && widget->sizeHint().width() <= size.width() &&
                       widget->minimumSizeHint().height() <= size.height();
            }
            if (!fits) {
                clipped << widget->objectName() + QLatin1Char(' ') + QString::number(size.width()) +
                               QLatin1Char('x') + QString::number(size.height());
            }
        }
        return clipped;
    }
    // TaggedTexts is every text the window's marks put into it, with the tab captions.
    QStringList TaggedTexts() {
        QStringList texts;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->property("Tag").toString().startsWith(QLatin1Char('#'))) {
                continue;
            }
            if (auto* label = qobject_cast<QLabel*>(widget)) {
                texts << label->text();
            } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
                texts << button->text();
            }
        }
        for (const char* strip : {"TabStr", "TabFileCrypt"}) {
            texts << Find<LightTab>(strip)->Caption(0) << Find<LightTab>(strip)->Caption(1);
        }
        return texts;
    }
};

struct CliRun {
    int status = -1;
    QString out;
};

// RunCli runs the built kelvora-cli with input on standard input and the passphrase in its
// environment, as a script would.
CliRun RunCli(const QStringList& args, const QString& input, const QString& passphrase) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KELVORA_PASSPHRASE"), passphrase);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KELVORA_CLI_PATH), args);
    process.write(input.toUtf8());
    process.closeWriteChannel();
    if (!process.waitForFinished(30000)) {
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput())};
}

QString BannerOf(int languageOffset) {
    return QString::fromStdString(Utf8FromAnsi(BannerLine(languageOffset)));
}

} // namespace

class FCryptTest : public QObject {
    Q_OBJECT

private slots:
    void StartsLabelledInItsLanguage();
    void LanguageSwitchRestoresEveryCaption();
    void NoTextIsClippedInAnyLanguage_data();
    void NoTextIsClippedInAnyLanguage();
    void CommandLineOpensPages_data();
    void CommandLineOpensPages();
    void UsageNamesTheProgram();
    void TabsSwitchPages();
    void RatingShowsEachLevelBound_data();
    void RatingShowsEachLevelBound();
    void HidePassphraseMasksTheBox();
    void CreateRandomFillsPassphraseAtTopRating();
    void EncryptThenDecryptInTheWindow();
    void WindowTextDecryptsWithTheCliAndBack();
    void EmptyInputGivesMessage_data();
    void EmptyInputGivesMessage();
    void CancelAtTheReminderChangesNothing();
    void CancelDuringALongJobKeepsThePlainText();
    void BrokenCipherTextGivesMessage();
    void OnlineLinkTellsThenOpensTheAddress();
    void ControlBoxMinimisesOnItsLeftAndClosesElsewhere();
};

void FCryptTest::StartsLabelledInItsLanguage() {
    Harness h(kGerman);
    QCOMPARE(h.Find<QPushButton>("Command1")->text(), Catalogue(kGerman, 161));
    QCOMPARE(h.Find<LightTab>("TabStr")->Caption(FCrypt::kFilesTab), Catalogue(kGerman, 167));
    QCOMPARE(h.Find<LightTab>("TabStr")->Caption(FCrypt::kTextTab), Catalogue(kGerman, 166));
    QCOMPARE(h.Find<LightTab>("TabFileCrypt")->Caption(1), Catalogue(kGerman, 184));
    QCOMPARE(h.Find<QLabel>("ImageDE")->frameShape(), QFrame::Box);
    QCOMPARE(h.Find<QLabel>("ImageEN")->frameShape(), QFrame::NoFrame);
    QCOMPARE(h.Find<QLabel>("Label3")->text(), Catalogue(kGerman, 124));
    QVERIFY(!h.window.testAttribute(Qt::WA_WState_Hidden));
    QVERIFY(h.window.windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(!h.window.mask().isEmpty());
}

void FCryptTest::LanguageSwitchRestoresEveryCaption() {
    Harness h(kGerman);
    const QStringList german = h.TaggedTexts();
    const QString germanTip = h.Find<QWidget>("IControlBx")->toolTip();
    QCOMPARE(germanTip, Catalogue(kGerman, 500));

    h.Click("ImageFR");
    QCOMPARE(h.window.LanguageOffset(), kFrench);
    QCOMPARE(h.Find<QLabel>("ImageFR")->frameShape(), QFrame::Box);
    QCOMPARE(h.Find<QLabel>("ImageDE")->frameShape(), QFrame::NoFrame);
    QCOMPARE(h.Find<QPushButton>("Command2")->text(), Catalogue(kFrench, 162));
    QCOMPARE(h.Find<LightTab>("TabFileCrypt")->Caption(0), Catalogue(kFrench, 183));
    QVERIFY(h.TaggedTexts() != german);
    // A tooltip is a mark only until it has been labelled once.
    QCOMPARE(h.Find<QWidget>("IControlBx")->toolTip(), germanTip);

    h.Click("ImageDE");
    QCOMPARE(h.TaggedTexts(), german);
}

void FCryptTest::NoTextIsClippedInAnyLanguage_data() {
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
void FCryptTest::NoTextIsClippedInAnyLanguage() {
    QFETCH(int, languageOffset);
    QFETCH(QString, commandLine);
    Harness h(languageOffset, commandLine.toStdString());
    QStringList clipped = h.ClippedControls();
    QVERIFY2(clipped.isEmpty(), qPrintable(clipped.join(QStringLiteral(", "))));
    h.Click("cmdPassgen"); // the longest sentence the rating area shows
    Harness::Settle();
    clipped = h.ClippedControls();
    QVERIFY2(clipped.isEmpty(), qPrintable(clipped.join(QStringLiteral(", "))));
    {
        const WorkingGuard working(h.window); // the working panel
        Harness::Settle();
        clipped = h.ClippedControls();
    }
    QVERIFY2(clipped.isEmpty(), qPrintable(clipped.join(QStringLiteral(", "))));
}

void FCryptTest::CommandLineOpensPages_data() {
    QTest::addColumn<QString>("commandLine");
    QTest::addColumn<int>("strTab");
    QTest::addColumn<int>("fileTab");
    QTest::addColumn<QString>("decrFile");
    QTest::addColumn<QString>("decrOutPath");

    QTest::newRow("none") << "" << int(FCrypt::kTextTab) << 0 << ""
                          << "";
    QTest::newRow("filee") << "/fileeXYZ" << int(FCrypt::kFilesTab) << int(FCrypt::kEncryptTab)
                           << ""
                           << "";
    QTest::newRow("filed") << "/FileD" << int(FCrypt::kFilesTab) << int(FCrypt::kDecryptTab) << ""
                           << "";
    QTest::newRow("setDecrFile") << "/SETDECRFILE /home/Ann/Box.vexo" << int(FCrypt::kFilesTab)
                                 << int(FCrypt::kDecryptTab) << "/home/Ann/Box.vexo"
                                 << "/home/Ann/";
    QTest::newRow("setDecrFile without blank") << "/setDecrFile" << int(FCrypt::kTextTab) << 0 << ""
                                               << "";
    QTest::newRow("setEncrFiles waits for the files page")
        << "/setEncrFiles /a.txt /outputfile /a.vexo" << int(FCrypt::kTextTab) << 0 << ""
        << "";
}

void FCryptTest::CommandLineOpensPages() {
    QFETCH(QString, commandLine);
    QFETCH(int, strTab);
    QFETCH(int, fileTab);
    QFETCH(QString, decrFile);
    QFETCH(QString, decrOutPath);
    Harness h(kEnglish, commandLine.toStdString());
    QCOMPARE(h.Find<LightTab>("TabStr")->ActiveTab(), strTab);
    QCOMPARE(h.Find<LightTab>("TabFileCrypt")->ActiveTab(), fileTab);
    const bool files = strTab == FCrypt::kFilesTab;
    QCOMPARE(h.Find<QWidget>("Frame_1")->isVisible(), files);
    QCOMPARE(h.Find<QWidget>("Frame_0")->isVisible(), !files);
    QCOMPARE(h.Find<QWidget>("Command1")->isVisible(), !files);
    QCOMPARE(h.Find<QWidget>("LblLink")->isVisible(), !files);
    QCOMPARE(h.Find<QWidget>("TxtDecrFile")->isVisible(), files && fileTab == FCrypt::kDecryptTab);
    QCOMPARE(h.Find<QWidget>("LstCryptFiles")->isVisible(),
             files && fileTab == FCrypt::kEncryptTab);
    QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), decrFile);
    QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), decrOutPath);
    QVERIFY(h.messages.shown.isEmpty());
}

void FCryptTest::UsageNamesTheProgram() {
    Harness h(kEnglish, "/?");
    QCOMPARE(h.messages.ShownIds(), QList<int>{FCrypt::kUsageTextId});
    QCOMPARE(h.messages.shown.first().text,
             QStringLiteral("Parameters for Kelvora:\nkelvora [/setEncrFiles <list of files> "
                            "/outputfile <file>]|[/setDecrFile <file>]"));
    QCOMPARE(h.Find<LightTab>("TabStr")->ActiveTab(), int(FCrypt::kTextTab));
}

void FCryptTest::TabsSwitchPages() {
    Harness h;
    auto* strip = h.Find<LightTab>("TabStr");
    auto* files = h.Find<LightTab>("TabFileCrypt");
    QTest::mouseClick(strip, Qt::LeftButton, {}, strip->TabRect(FCrypt::kFilesTab).center());
    QVERIFY(h.Find<QWidget>("Frame_1")->isVisible());
    QVERIFY(!h.Find<QWidget>("Frame_0")->isVisible());
    QVERIFY(h.Find<QWidget>("LstCryptFiles")->isVisible());
    QTest::mouseClick(files, Qt::LeftButton, {}, files->TabRect(FCrypt::kDecryptTab).center());
    QVERIFY(h.Find<QWidget>("TxtDecrFile")->isVisible());
    QVERIFY(!h.Find<QWidget>("LstCryptFiles")->isVisible());
    QTest::keyClick(strip, Qt::Key_Right);
    QVERIFY(h.Find<QWidget>("Frame_0")->isVisible());
    QVERIFY(h.Find<QWidget>("Command2")->isVisible());
    QVERIFY(!h.Find<QWidget>("cmdMail")->isVisible()); // until the mail window exists
}

void FCryptTest::RatingShowsEachLevelBound_data() {
    QTest::addColumn<QString>("passphrase");
    QTest::addColumn<int>("stars");
    QTest::addColumn<QString>("lamps");
    QTest::addColumn<int>("sentence");

    // Scores worked out by hand: lower case only loses 35 %, length counts up to 32.
    QTest::newRow("empty, 0") << "" << 0 << "100" << 124;
    QTest::newRow("ab, 4") << "ab" << 0 << "100" << 124;
    QTest::newRow("abc, 6") << "abc" << 1 << "100" << 124;
    QTest::newRow("abcd, 8") << "abcd" << 1 << "100" << 124;
    QTest::newRow("abcde, 10") << "abcde" << 2 << "110" << 125;
    QTest::newRow("11 letters, 22") << "abcdefghijk" << 2 << "110" << 125;
    QTest::newRow("12 letters, 25") << "abcdefghijkl" << 3 << "010" << 126;
    QTest::newRow("24 letters, 49") << QString(24, QLatin1Char('q')) << 3 << "010" << 126;
    QTest::newRow("25 letters, 51") << QString(25, QLatin1Char('q')) << 4 << "011" << 127;
    QTest::newRow("30 of all classes, 94")
        << "Aa1!~" + QString(25, QLatin1Char('q')) << 4 << "011" << 127;
    QTest::newRow("31 of all classes, 97")
        << "Aa1!~" + QString(26, QLatin1Char('q')) << 5 << "001" << 128;
    QTest::newRow("32 mixed letters, capped 71")
        << "Ab" + QString(30, QLatin1Char('q')) << 4 << "011" << 127;
}

void FCryptTest::RatingShowsEachLevelBound() {
    QFETCH(QString, passphrase);
    QFETCH(int, stars);
    QFETCH(QString, lamps);
    QFETCH(int, sentence);
    Harness h(kSpanish);
    h.SetPassphrase(QStringLiteral("something else first"));
    h.SetPassphrase(passphrase);
    QCOMPARE(h.ShownStars(), stars);
    QCOMPARE(h.LitLamps(), lamps);
    QCOMPARE(h.Find<QLabel>("Label3")->text(), Catalogue(kSpanish, sentence));
}

void FCryptTest::HidePassphraseMasksTheBox() {
    Harness h;
    h.SetPassphrase(QStringLiteral("secret"));
    h.Click("ChkHPwd");
    QCOMPARE(h.Find<QLineEdit>("TxtCode")->displayText(), QStringLiteral("******"));
    h.Click("ChkHPwd");
    QCOMPARE(h.Find<QLineEdit>("TxtCode")->displayText(), QStringLiteral("secret"));
}

void FCryptTest::CreateRandomFillsPassphraseAtTopRating() {
    Harness h;
    h.Click("ChkHPwd");
    h.Click("cmdPassgen");
    const QString passphrase = h.Passphrase();
    QCOMPARE(passphrase.size(), 32);
    for (const QChar c : passphrase) {
        QVERIFY(c.unicode() >= 32 && c.unicode() <= 125);
    }
    QVERIFY(!h.Find<QCheckBox>("ChkHPwd")->isChecked());
    QCOMPARE(h.Find<QLineEdit>("TxtCode")->echoMode(), QLineEdit::Normal);
    QCOMPARE(h.Find<QLabel>("Label3")->text(), Catalogue(kEnglish, 106));
    QCOMPARE(h.ShownStars(), 5);
    QCOMPARE(h.LitLamps(), QStringLiteral("001"));
}

void FCryptTest::EncryptThenDecryptInTheWindow() {
    Harness h(kFrench);
    const QString text = QStringLiteral("Grüße\nzweite Zeile");
    h.SetResults(text);
    h.SetPassphrase(QStringLiteral("correct horse"));
    QVERIFY(!h.Find<QWidget>("cmdMail")->isEnabled());
    h.Click("Command1");

    QCOMPARE(h.messages.ShownIds(), QList<int>{190});
    QCOMPARE(h.messages.shown.first().title, QStringLiteral("Kelvora-Crypt"));
    QVERIFY(!h.Results().contains(QStringLiteral("Kelvora")));
    QVERIFY(!h.Results().contains(QLatin1Char('\r')));
    QVERIFY(h.Passphrase().isEmpty());
    QVERIFY(h.Find<QWidget>("cmdMail")->isEnabled());
    QVERIFY(h.Find<QWidget>("FramePwd")->isEnabled());
    QVERIFY(h.Find<QWidget>("FrameW")->isHidden());

    h.SetPassphrase(QStringLiteral("correct horse"));
    h.Click("Command2");
    QCOMPARE(h.Results(), BannerOf(kFrench) + QLatin1Char('\n') + text);
    QVERIFY(h.Passphrase().isEmpty());
    QCOMPARE(h.messages.ShownIds(), QList<int>{190});
}

void FCryptTest::WindowTextDecryptsWithTheCliAndBack() {
    const QString passphrase = QStringLiteral("Shared Passphrase \u00e4");
    Harness h(kEnglish);
    h.SetResults(QStringLiteral("from the window\nline two"));
    h.SetPassphrase(passphrase);
    h.Click("Command1");
    const CliRun decrypted = RunCli({QStringLiteral("decrypt-text")}, h.Results(), passphrase);
    QCOMPARE(decrypted.status, 0);
    QCOMPARE(decrypted.out, BannerOf(kEnglish) + QStringLiteral("\nfrom the window\nline two"));

    const CliRun encrypted =
        RunCli({QStringLiteral("encrypt-text"), QStringLiteral("--lang"), QStringLiteral("de")},
               QStringLiteral("from\nthe command line \u00e4"), passphrase);
    QCOMPARE(encrypted.status, 0);
    h.SetResults(encrypted.out);
    h.SetPassphrase(passphrase);
    h.Click("Command2");
    QCOMPARE(h.Results(), BannerOf(kGerman) + QStringLiteral("\nfrom\nthe command line \u00e4"));
}

void FCryptTest::EmptyInputGivesMessage_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("passphrase");
    QTest::newRow("encrypt, no passphrase") << "Command1"
                                            << "some text"
                                            << "";
    QTest::newRow("encrypt, no text") << "Command1"
                                      << ""
                                      << "secret";
    QTest::newRow("decrypt, no passphrase") << "Command2"
                                            << "c29tZQ=="
                                            << "";
    QTest::newRow("decrypt, no text") << "Command2"
                                      << ""
                                      << "secret";
}

void FCryptTest::EmptyInputGivesMessage() {
    QFETCH(QString, command);
    QFETCH(QString, text);
    QFETCH(QString, passphrase);
    Harness h;
    h.SetResults(text);
    h.SetPassphrase(passphrase);
    h.Click(command.toLatin1().constData());
    QCOMPARE(h.messages.ShownIds(), QList<int>{114});
    QCOMPARE(h.messages.shown.first().text, Catalogue(kEnglish, 114));
    QCOMPARE(h.Results(), text);
    QCOMPARE(h.Passphrase(), passphrase);
}

void FCryptTest::CancelAtTheReminderChangesNothing() {
    Harness h;
    h.messages.answers = {Answer::Cancel};
    h.SetResults(QStringLiteral("keep me"));
    h.SetPassphrase(QStringLiteral("secret"));
    h.Click("Command1");
    QCOMPARE(h.messages.ShownIds(), QList<int>{190});
    QCOMPARE(h.Results(), QStringLiteral("keep me"));
    QCOMPARE(h.Passphrase(), QStringLiteral("secret"));
    QVERIFY(!h.Find<QWidget>("cmdMail")->isEnabled());
}

void FCryptTest::CancelDuringALongJobKeepsThePlainText() {
    Harness h(kSpanish);
    const QString text = QString(QString(63, QLatin1Char('x')) + QLatin1Char('\n')).repeated(16384);
    h.SetResults(text);
    h.SetPassphrase(QStringLiteral("secret"));
    bool sawBusyWindow = false;
    // The first time the job lets events run, the window is busy and only Cancel is usable.
    QTimer::singleShot(0, &h.window, [&] {
        sawBusyWindow = h.window.IsWorking() && h.Find<QWidget>("FrameW")->isVisible() &&
                        !h.Find<QWidget>("Frame_0")->isEnabled() &&
                        !h.Find<QWidget>("FramePwd")->isEnabled() &&
                        h.Find<QWidget>("PictAmpel")->isHidden();
        h.Click("cmdCancel");
    });
    h.Click("Command1");
    QVERIFY(sawBusyWindow);
    QCOMPARE(h.Results(), BannerOf(kSpanish) + QLatin1Char('\n') + text);
    QVERIFY(!h.Find<QWidget>("cmdMail")->isEnabled());
    QVERIFY(!h.window.IsWorking());
    QVERIFY(h.Find<QWidget>("FrameW")->isHidden());
    QVERIFY(h.Find<QWidget>("Frame_0")->isEnabled());
    QVERIFY(h.Find<QWidget>("FramePwd")->isEnabled());
    QVERIFY(!h.Find<QWidget>("PictAmpel")->isHidden());
}

void FCryptTest::BrokenCipherTextGivesMessage() {
    Harness h;
    h.SetResults(QStringLiteral("QUJD")); // three bytes: not a whole block
    h.SetPassphrase(QStringLiteral("secret"));
    h.Click("Command2");
    QCOMPARE(h.messages.ShownIds(), QList<int>{114});
    QCOMPARE(h.Results(), QStringLiteral("QUJD"));
    QVERIFY(h.Passphrase().isEmpty());
}

void FCryptTest::OnlineLinkTellsThenOpensTheAddress() {
    Harness h;
    h.Click("LblLink");
    QCOMPARE(h.messages.ShownIds(), QList<int>{191});
    QCOMPARE(h.messages.openedUrls, QStringList{FCrypt::kOnlineVersionUrl});
    QVERIFY(FCrypt::kOnlineVersionUrl.endsWith(QStringLiteral("/crypt/crypt.php")));
}

void FCryptTest::ControlBoxMinimisesOnItsLeftAndClosesElsewhere() {
    Harness h;
    auto* box = h.Find<QWidget>("IControlBx");
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(14, box->height() / 2));
    QVERIFY(h.window.windowState() & Qt::WindowMinimized);
    QVERIFY(h.window.isVisible());
    h.window.showNormal();
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(15, box->height() / 2));
    QVERIFY(!h.window.isVisible());
}

} // namespace kelvora

QTEST_MAIN(kelvora::FCryptTest)
#include "FCryptTest.moc"
