#include "app/WindowHarness.h"

#include <QTimer>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::BannerOf;
using testing::Catalogue;
using testing::Harness;
using testing::RunCli;

namespace {

const char* const kTextPage = "10 Frame_0 Command1 Command2 LblLink";

} // namespace

class FCryptTest : public QObject {
    Q_OBJECT

private slots:
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
        const JobScope working(h.window); // the working panel
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
